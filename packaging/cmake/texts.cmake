# Manual pages and completions, made of the texts that the programs' --help shows. Their date is that of the
# newest entry of CHANGELOG.md, so that two builds of one version give the same bytes.
add_executable(make_texts packaging/texts/make_texts.cpp)
target_link_libraries(make_texts PRIVATE stelvan_gemdb)
set_target_properties(make_texts PROPERTIES AUTOMOC OFF)

file(STRINGS CHANGELOG.md newest_release REGEX "^## [0-9]+\\.[0-9]+\\.[0-9]+, [0-9-]+$" LIMIT_COUNT 1)
if(NOT newest_release MATCHES "^## ${PROJECT_VERSION}, ([0-9-]+)$")
    message(FATAL_ERROR "CHANGELOG.md does not begin with the project's version, ${PROJECT_VERSION}")
endif()
set(STELVAN_RELEASE_DATE ${CMAKE_MATCH_1})

set(STELVAN_TEXTS_DIR ${CMAKE_BINARY_DIR}/texts)
set(stelvan_texts gemdb.1 stelvan.1 gemdb.bash _gemdb gemdb.fish)
list(TRANSFORM stelvan_texts PREPEND ${STELVAN_TEXTS_DIR}/)
add_custom_command(OUTPUT ${stelvan_texts}
    COMMAND make_texts ${STELVAN_TEXTS_DIR} ${STELVAN_RELEASE_DATE}
    DEPENDS make_texts COMMENT "Writing manual pages and completions" VERBATIM)
add_custom_target(stelvan_texts ALL DEPENDS ${stelvan_texts})
