# The comparison of ./bench: one program from benchmarks/*_bench.cpp. Built on demand only.
find_package(benchmark QUIET)
file(GLOB bench_sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/benchmarks/*.cpp)
if(benchmark_FOUND AND bench_sources)
    add_executable(stelvan_bench EXCLUDE_FROM_ALL ${bench_sources})
    target_link_libraries(stelvan_bench PRIVATE stelvan_options stelvan_model_text stelvan_db stelvan_sql
                          stelvan_jet SQLite::SQLite3 benchmark::benchmark)
    set_target_properties(stelvan_bench PROPERTIES AUTOMOC OFF)
elseif(bench_sources)
    message(STATUS "Google Benchmark is absent: no target stelvan_bench")
endif()
