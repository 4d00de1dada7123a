# Read by CPack for each kind of package: the Debian packages take the debug symbols out into packages of their own,
# the tarball goes without them.
if(CPACK_GENERATOR STREQUAL "TGZ")
    set(CPACK_STRIP_FILES ON)
endif()
