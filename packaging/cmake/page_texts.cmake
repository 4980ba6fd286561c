# Style sheets and scripts of the pages become texts of the program, so that it needs no file beside it.
set(STELVAN_PAGE_DIR ${CMAKE_SOURCE_DIR}/src/model/publish/page)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
             ${STELVAN_PAGE_DIR}/manual.css ${STELVAN_PAGE_DIR}/manual.js ${STELVAN_PAGE_DIR}/changes.css)
file(READ ${STELVAN_PAGE_DIR}/manual.css STELVAN_MANUAL_STYLE)
file(READ ${STELVAN_PAGE_DIR}/manual.js STELVAN_MANUAL_SCRIPT)
file(READ ${STELVAN_PAGE_DIR}/changes.css STELVAN_CHANGES_STYLE)
configure_file(${STELVAN_PAGE_DIR}/page_texts.cpp.in ${CMAKE_BINARY_DIR}/page_texts.cpp @ONLY)
target_sources(stelvan_model PRIVATE ${CMAKE_BINARY_DIR}/page_texts.cpp)
