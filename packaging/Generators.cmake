# The packages of the same sources are the same bytes: their files carry the time of the sources.
set(ENV{SOURCE_DATE_EPOCH} ${CPACK_BRENNOVAL_EPOCH})

# CPack reads this for each kind of package. The Debian packages move the debug symbols into packages of their own; the
# tarball has none.
if(CPACK_GENERATOR STREQUAL "TGZ")
    set(CPACK_STRIP_FILES ON)
endif()
