# The independent readers for Node, fetched once at configuration where Node and npm are there: mdb-reader
# for Access files, secs4js for SML. Without one of them the tests that use it report themselves as skipped.
find_program(STELVAN_NODE node)
find_program(STELVAN_NPM npm)
set(STELVAN_NODE_READER_DIR ${CMAKE_BINARY_DIR}/node_reader)

# stelvan_node_reader(PACKAGE VERSION SCRIPT): the package, and the script of this folder that uses it
function(stelvan_node_reader package version script)
    configure_file(${CMAKE_SOURCE_DIR}/tests/readers/${script} ${STELVAN_NODE_READER_DIR}/${script} COPYONLY)
    if(NOT STELVAN_NODE OR NOT STELVAN_NPM OR EXISTS ${STELVAN_NODE_READER_DIR}/node_modules/${package})
        return()
    endif()
    execute_process(COMMAND ${STELVAN_NPM} install --silent --no-audit --no-fund --ignore-scripts
                            --prefix ${STELVAN_NODE_READER_DIR} ${package}@${version}
                    TIMEOUT 120 RESULT_VARIABLE status OUTPUT_QUIET ERROR_QUIET)
    if(NOT status EQUAL 0)
        message(STATUS "${package} could not be installed; its tests will be skipped")
    endif()
endfunction()

stelvan_node_reader(mdb-reader 3.2.0 dump.mjs)
stelvan_node_reader(secs4js 0.4.7 sml.mjs)
