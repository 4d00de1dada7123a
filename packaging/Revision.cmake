# Which build of its version this is: BRENNOVAL_REVISION_NAME for names and About, and the day for notes. It is the time
# of the commit, so that a later build replaces an earlier one and the same sources give the same packages anywhere.
set(BRENNOVAL_PACKAGE_REVISION "" CACHE STRING "The package's revision, after the program's version; empty for the time of the commit")
if(DEFINED ENV{SOURCE_DATE_EPOCH})
    set(BRENNOVAL_EPOCH $ENV{SOURCE_DATE_EPOCH})
else()
    execute_process(COMMAND git -C ${CMAKE_SOURCE_DIR} log -1 --format=%ct OUTPUT_VARIABLE BRENNOVAL_EPOCH
                    OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    if(NOT BRENNOVAL_EPOCH) # sources without their history
        file(TIMESTAMP ${CMAKE_SOURCE_DIR}/CHANGELOG.md BRENNOVAL_EPOCH %s UTC)
    endif()
    set(ENV{SOURCE_DATE_EPOCH} ${BRENNOVAL_EPOCH}) # what string(TIMESTAMP) goes by
endif()
string(TIMESTAMP BRENNOVAL_REVISION_NAME %Y%m%d.%H%M%S UTC)
if(BRENNOVAL_PACKAGE_REVISION)
    set(BRENNOVAL_REVISION_NAME ${BRENNOVAL_PACKAGE_REVISION})
endif()
string(TIMESTAMP BRENNOVAL_BUILD_DAY %Y-%m-%d UTC)
string(TIMESTAMP BRENNOVAL_BUILD_TIME "%a, %d %b %Y %H:%M:%S +0000" UTC)
