# Installs the file engine into an empty folder, builds the example from what is there alone, once found by
# CMake and once by pkg-config, and runs it. -DBUILD=... -DSOURCE=... -DFOLDER=... -DCONFIG=...
file(REMOVE_RECURSE ${FOLDER})
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "${ARGN}\n${out}${err}")
    endif()
    set(out "${out}" PARENT_SCOPE)
endfunction()
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${FOLDER}/installed --component development)
run(${CMAKE_COMMAND} -E copy_directory ${SOURCE}/packaging/jet ${FOLDER}/example)
run(${CMAKE_COMMAND} -S ${FOLDER}/example -B ${FOLDER}/build -DCMAKE_PREFIX_PATH=${FOLDER}/installed
    -DCMAKE_CXX_FLAGS=${FLAGS})
run(${CMAKE_COMMAND} --build ${FOLDER}/build)
run(${FOLDER}/build/example ${FOLDER}/new.mdb)
if(NOT out STREQUAL "1 Dry etcher\n2 Coater\n")
    message(FATAL_ERROR "The example printed:\n${out}")
endif()
