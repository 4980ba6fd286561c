# The models of the tests, built from the texts of this folder by the program's own engine, and what they hold as
# JSON lines, written from the same texts without the engine. Suites that open one depend on test_models.
set(STELVAN_MODELS_DIR ${CMAKE_BINARY_DIR}/tests/models)
file(GLOB model_builders CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/models/*.cpp)
file(GLOB_RECURSE model_texts CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/models/*.txt
     ${CMAKE_SOURCE_DIR}/tests/models/*.tsv)

add_executable(build_test_models ${model_builders})
target_link_libraries(build_test_models PRIVATE stelvan_model_text nlohmann_json::nlohmann_json)
set_target_properties(build_test_models PROPERTIES AUTOMOC OFF)

add_custom_command(OUTPUT ${STELVAN_MODELS_DIR}/built
    COMMAND build_test_models ${CMAKE_SOURCE_DIR}/tests/models ${STELVAN_MODELS_DIR}
    COMMAND ${CMAKE_COMMAND} -E touch ${STELVAN_MODELS_DIR}/built
    DEPENDS build_test_models ${model_texts}
    COMMENT "Building the models of the tests" VERBATIM)
add_custom_target(test_models DEPENDS ${STELVAN_MODELS_DIR}/built)
