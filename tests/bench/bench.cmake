# The comparison of ./bench: one program from this folder, built on demand only.
find_package(benchmark QUIET)
if(benchmark_FOUND)
    file(GLOB bench_sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/bench/*.cpp)
    add_executable(stelvan_bench EXCLUDE_FROM_ALL ${bench_sources})
    target_link_libraries(stelvan_bench PRIVATE stelvan_options stelvan_model_text stelvan_db stelvan_sql
                          stelvan_jet SQLite::SQLite3 benchmark::benchmark)
    target_compile_definitions(stelvan_bench PRIVATE
        STELVAN_SOURCE_DIR="${CMAKE_SOURCE_DIR}" STELVAN_BINARY_DIR="${CMAKE_BINARY_DIR}")
    add_dependencies(stelvan_bench gemdb)
    set_target_properties(stelvan_bench PROPERTIES AUTOMOC OFF)
else()
    message(STATUS "Google Benchmark (package libbenchmark-dev) is absent: no target stelvan_bench")
endif()
