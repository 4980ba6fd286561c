# The shipped models, built from the texts of this folder by the program's own engine.
#
#   share/stelvan/gem-template.mdb    the standard items: what is installed, read-only, never edited in place
#   share/stelvan/demo-template.mdb   the same with an imaginary wet bench
#   gem.mdb, demo/gem.mdb             copies to try things out, beside the program; made once, then the user's
#
# The dialog opens only files called gem.mdb, so a template cannot be opened by mistake.
include(GNUInstallDirs)
set(STELVAN_SHARE_DIR "${CMAKE_INSTALL_FULL_DATADIR}/stelvan" CACHE PATH
    "Folder of the shipped files, as the settings of the shipped model name it")
set(STELVAN_STATE_DIR "${CMAKE_INSTALL_FULL_LOCALSTATEDIR}/lib/stelvan" CACHE PATH
    "Folder of model and log, as the settings of the shipped model name it")

file(GLOB model_sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/data/builder/*.cpp)
add_library(stelvan_model_text STATIC ${model_sources})
target_link_libraries(stelvan_model_text PUBLIC stelvan_options stelvan_jet stelvan_base)
add_executable(build_gem_database data/build_gem_database.cpp)
target_link_libraries(build_gem_database PRIVATE stelvan_model_text CLI11::CLI11)
set_target_properties(stelvan_model_text build_gem_database PROPERTIES AUTOMOC OFF)

set(STELVAN_TEMPLATE_DIR ${CMAKE_BINARY_DIR}/share/stelvan)
set(gem_schema ${CMAKE_SOURCE_DIR}/data/schema.txt)
set(gem_standard ${CMAKE_SOURCE_DIR}/data/standard)
set(gem_demo ${CMAKE_SOURCE_DIR}/data/demo)
file(GLOB gem_texts CONFIGURE_DEPENDS ${gem_schema} ${gem_standard}/*.tsv ${gem_demo}/*.tsv)

# The standard's rows once more as a source, for those who compare a model with them.
add_executable(embed_standard_items data/embed_standard_items.cpp)
target_link_libraries(embed_standard_items PRIVATE stelvan_model_text)
set_target_properties(embed_standard_items PROPERTIES AUTOMOC OFF)
set(standard_items ${CMAKE_BINARY_DIR}/generated/standard_items.cpp)
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/generated)
add_custom_command(OUTPUT ${standard_items}
    COMMAND embed_standard_items ${gem_standard} ${standard_items}
    DEPENDS embed_standard_items ${gem_texts}
    COMMENT "Embedding the standard's items" VERBATIM)
target_sources(stelvan_model PRIVATE ${standard_items})

# gem_template(FILE ROWS_FOLDER...)
function(gem_template file)
    set(rows)
    foreach(folder IN LISTS ARGN)
        list(APPEND rows --rows ${folder})
    endforeach()
    add_custom_command(OUTPUT ${STELVAN_TEMPLATE_DIR}/${file}
        COMMAND build_gem_database ${STELVAN_TEMPLATE_DIR}/${file} --replace --schema ${gem_schema} ${rows}
                --share-dir ${STELVAN_SHARE_DIR} --state-dir ${STELVAN_STATE_DIR}
        DEPENDS build_gem_database ${gem_texts}
        COMMENT "Building ${file}" VERBATIM)
endfunction()
gem_template(gem-template.mdb ${gem_standard})
gem_template(demo-template.mdb ${gem_standard} ${gem_demo})
configure_file(${CMAKE_SOURCE_DIR}/packaging/share/secs-dictionary.xml
               ${STELVAN_TEMPLATE_DIR}/secs-dictionary.xml COPYONLY)

add_custom_target(gem_database ALL
    COMMAND ${CMAKE_COMMAND} -DGEMDB=$<TARGET_FILE:gemdb> -DFOLDER=${CMAKE_BINARY_DIR}
            -P ${CMAKE_SOURCE_DIR}/data/copy_once.cmake
    COMMAND ${CMAKE_COMMAND} -DGEMDB=$<TARGET_FILE:gemdb> -DFOLDER=${CMAKE_BINARY_DIR}/demo -DOPTIONS=--demo
            -P ${CMAKE_SOURCE_DIR}/data/copy_once.cmake
    DEPENDS ${STELVAN_TEMPLATE_DIR}/gem-template.mdb ${STELVAN_TEMPLATE_DIR}/demo-template.mdb gemdb
    VERBATIM)
