# The second independent reader: the npm package mdb-reader, fetched once at configuration where Node and
# npm are there. Without it the tests that use it report themselves as skipped.
find_program(STELVAN_NODE node)
find_program(STELVAN_NPM npm)
set(STELVAN_NODE_READER_DIR ${CMAKE_BINARY_DIR}/node_reader)
configure_file(${CMAKE_SOURCE_DIR}/tests/readers/dump.mjs ${STELVAN_NODE_READER_DIR}/dump.mjs COPYONLY)
if(STELVAN_NODE AND STELVAN_NPM AND NOT EXISTS ${STELVAN_NODE_READER_DIR}/node_modules/mdb-reader)
    execute_process(COMMAND ${STELVAN_NPM} install --silent --no-audit --no-fund
                            --prefix ${STELVAN_NODE_READER_DIR} mdb-reader@3.2.0
                    TIMEOUT 120 RESULT_VARIABLE status OUTPUT_QUIET ERROR_QUIET)
    if(NOT status EQUAL 0)
        message(STATUS "mdb-reader could not be installed; its tests will be skipped")
    endif()
endif()
