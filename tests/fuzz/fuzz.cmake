# One libFuzzer program from each tests/fuzz/*_fuzz.cpp (preset fuzz, clang). Try one for a minute:
#   build/fuzz/whole_file_fuzz -max_total_time=60 -max_len=65536 CORPUS_FOLDER
target_compile_options(stelvan_options INTERFACE -fsanitize=fuzzer-no-link,address,undefined)
# Programs that are no target of their own (they build the shipped models) want the same runtime.
target_link_options(stelvan_options INTERFACE -fsanitize=fuzzer-no-link,address,undefined)

file(GLOB fuzz_sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/fuzz/*_fuzz.cpp)
file(GLOB fuzz_support CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/fuzz/support/*.cpp)
foreach(source IN LISTS fuzz_sources)
    get_filename_component(name ${source} NAME_WE)
    add_executable(${name} ${source} ${fuzz_support})
    target_link_libraries(${name} PRIVATE stelvan_options stelvan_model_text stelvan_sql stelvan_jet)
    target_compile_definitions(${name} PRIVATE STELVAN_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
    target_link_options(${name} PRIVATE -fsanitize=fuzzer,address,undefined)
    set_target_properties(${name} PROPERTIES AUTOMOC OFF)
endforeach()
