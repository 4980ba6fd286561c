# Warnings are errors in our own code (not in what users build: their compiler may warn of more); a compiler
# cache and a fast linker are used where present. GCC 12 warns of overlapping copies that are none.
option(STELVAN_WERROR "Treat warnings as errors" ON)
add_library(stelvan_options INTERFACE)
target_compile_options(stelvan_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow $<$<BOOL:${STELVAN_WERROR}>:-Werror>
    $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>)
target_include_directories(stelvan_options INTERFACE ${CMAKE_SOURCE_DIR}/src ${CMAKE_SOURCE_DIR})
target_compile_definitions(stelvan_options INTERFACE
    STELVAN_VERSION_MAJOR=${PROJECT_VERSION_MAJOR}
    STELVAN_VERSION_MINOR=${PROJECT_VERSION_MINOR}
    STELVAN_VERSION_PATCH=${PROJECT_VERSION_PATCH})

if(STELVAN_SANITIZE)
    target_compile_options(stelvan_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(stelvan_options INTERFACE -fsanitize=address,undefined)
endif()

find_program(STELVAN_CCACHE ccache)
if(STELVAN_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=time_macros,include_file_mtime
        CCACHE_NOHASHDIR=1 CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} ${STELVAN_CCACHE})
endif()
find_program(STELVAN_LLD ld.lld)
if(STELVAN_LLD)
    add_link_options(-fuse-ld=lld)
endif()
