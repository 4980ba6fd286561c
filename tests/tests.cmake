# One test program for each floor, from tests/<folder>/*_test.cpp; every test is its own ctest entry.
find_package(GTest REQUIRED)
include(GoogleTest)
include(${CMAKE_SOURCE_DIR}/tests/models/models.cmake)

# stelvan_tests(NAME [QT] [LINKS target...]): the tests of tests/NAME
function(stelvan_tests name)
    cmake_parse_arguments(SUITE "QT" "" "LINKS" ${ARGN})
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${name}/*.cpp)
    file(GLOB support CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/support/*.cpp)
    list(REMOVE_ITEM support ${CMAKE_SOURCE_DIR}/tests/support/qt_main.cpp)
    add_executable(${name}_tests ${sources} ${support})
    target_link_libraries(${name}_tests PRIVATE stelvan_options ${SUITE_LINKS} GTest::gtest GTest::gmock
                          nlohmann_json::nlohmann_json)
    target_compile_definitions(${name}_tests PRIVATE
        STELVAN_SAMPLES_DIR="${STELVAN_SAMPLES_DIR}"
        STELVAN_SOURCE_DIR="${CMAKE_SOURCE_DIR}" STELVAN_BINARY_DIR="${CMAKE_BINARY_DIR}")
    if(SUITE_QT)
        find_package(Qt6 REQUIRED COMPONENTS Test)
        target_sources(${name}_tests PRIVATE tests/support/qt_main.cpp)
        target_link_libraries(${name}_tests PRIVATE Qt6::Widgets Qt6::Test)
        set_target_properties(${name}_tests PROPERTIES AUTOMOC ON)
    else()
        target_link_libraries(${name}_tests PRIVATE GTest::gtest_main)
        set_target_properties(${name}_tests PROPERTIES AUTOMOC OFF)
    endif()
    add_dependencies(${name}_tests test_models)
    gtest_discover_tests(${name}_tests DISCOVERY_MODE PRE_TEST TEST_PREFIX "${name}." PROPERTIES TIMEOUT 600)
endfunction()

stelvan_tests(base LINKS stelvan_base)
stelvan_tests(jet LINKS stelvan_jet)
stelvan_tests(sql LINKS stelvan_sql stelvan_jet)
stelvan_tests(db LINKS stelvan_db)
stelvan_tests(gem LINKS stelvan_gem)
stelvan_tests(model LINKS stelvan_model tomlplusplus::tomlplusplus)
stelvan_tests(gemdb LINKS stelvan_gemdb stelvan_db pugixml::pugixml)
stelvan_tests(data LINKS stelvan_gemdb stelvan_model_text stelvan_db stelvan_gem)
stelvan_tests(crash LINKS stelvan_model stelvan_db stelvan_jet)
include(${CMAKE_SOURCE_DIR}/tests/readers/node_reader.cmake)
stelvan_tests(readers LINKS stelvan_gemdb stelvan_db stelvan_jet)
if(TARGET readers_tests)
    target_compile_definitions(readers_tests PRIVATE STELVAN_NODE_READER_DIR="${STELVAN_NODE_READER_DIR}")
endif()
if(STELVAN_WINDOW)
    stelvan_tests(form QT LINKS stelvan_form)
    stelvan_tests(checks QT LINKS stelvan_checks)
    stelvan_tests(links QT LINKS stelvan_links)
    stelvan_tests(settings QT LINKS stelvan_settings)
    stelvan_tests(browser QT LINKS stelvan_browser)
    stelvan_tests(editing QT LINKS stelvan_editing)
    stelvan_tests(tools QT LINKS stelvan_app)
    stelvan_tests(app QT LINKS stelvan_app)
    stelvan_tests(gui QT LINKS stelvan_app)
    if(TARGET gui_tests)
        target_sources(gui_tests PRIVATE tests/crash/faulty_file_system.cpp)
    endif()
endif()

# These look at the shipped models, or run gemdb.
foreach(suite data_tests model_tests gemdb_tests readers_tests tools_tests app_tests gui_tests)
    if(TARGET ${suite})
        add_dependencies(${suite} gem_database)
    endif()
endforeach()
if(TARGET tools_tests)
    add_dependencies(tools_tests gemdb)
endif()

if(TARGET app_tests)
    add_dependencies(app_tests stelvan stelvan_texts)  # whose help is compared
endif()

# The first dialog under a desktop's own theme, where one and a display to draw on are installed: themes
# take keys that the toolkit's own style leaves alone.
find_program(STELVAN_XVFB_RUN xvfb-run)
find_file(STELVAN_GTK3_THEME libqgtk3.so PATHS ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_PLUGINS}/platformthemes
          NO_DEFAULT_PATH)
if(TARGET app_tests AND STELVAN_XVFB_RUN AND STELVAN_GTK3_THEME)
    add_test(NAME app.the_first_dialog_under_the_gtk3_theme
             COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=xcb QT_QPA_PLATFORMTHEME=gtk3
                     ${STELVAN_XVFB_RUN} -a $<TARGET_FILE:app_tests> --gtest_filter=FrmGemDatabase*)
    set_tests_properties(app.the_first_dialog_under_the_gtk3_theme PROPERTIES TIMEOUT 120)
endif()

find_package(Python3 COMPONENTS Interpreter)
if(Python3_FOUND AND EXISTS ${CMAKE_SOURCE_DIR}/tests/architecture/check_layers.py)
    add_test(NAME architecture.floors_include_only_downwards
             COMMAND ${Python3_EXECUTABLE} ${CMAKE_SOURCE_DIR}/tests/architecture/check_layers.py
                     ${CMAKE_SOURCE_DIR})
    add_test(NAME architecture.every_rule_is_where_its_index_says
             COMMAND ${Python3_EXECUTABLE} ${CMAKE_SOURCE_DIR}/tests/architecture/check_rules.py
                     ${CMAKE_SOURCE_DIR})
    add_test(NAME architecture.no_link_of_the_documents_is_dead
             COMMAND ${Python3_EXECUTABLE} ${CMAKE_SOURCE_DIR}/tests/architecture/check_links.py
                     ${CMAKE_SOURCE_DIR})
endif()

# What is installed is enough to build with.
add_test(NAME packaging.the_installed_library_builds_its_example
         COMMAND ${CMAKE_COMMAND} -DBUILD=${CMAKE_BINARY_DIR} -DSOURCE=${CMAKE_SOURCE_DIR}
                 -DFOLDER=${CMAKE_BINARY_DIR}/tests/installed_library
                 -DFLAGS=$<$<BOOL:${STELVAN_SANITIZE}>:-fsanitize=address,undefined>
                 -P ${CMAKE_SOURCE_DIR}/tests/packaging/installed_library.cmake)
foreach(what desktop_entry metadata manual_pages bash zsh fish)
    add_test(NAME packaging.${what} COMMAND ${CMAKE_SOURCE_DIR}/tests/packaging/checks.sh
             ${what} ${CMAKE_SOURCE_DIR} ${CMAKE_BINARY_DIR})
    set_tests_properties(packaging.${what} PROPERTIES SKIP_RETURN_CODE 77)
endforeach()
foreach(shell bash fish)
    add_test(NAME packaging.${shell}_completes COMMAND ${CMAKE_SOURCE_DIR}/tests/packaging/complete.sh
             ${shell} ${CMAKE_BINARY_DIR} ${CMAKE_BINARY_DIR}/tests/models/gem.mdb)
    set_tests_properties(packaging.${shell}_completes PROPERTIES SKIP_RETURN_CODE 77)
endforeach()
if(TARGET stelvan)
    add_test(NAME packaging.the_pictures_are_drawn_by_their_script
             COMMAND ${CMAKE_SOURCE_DIR}/tests/packaging/guide_pictures.sh ${CMAKE_SOURCE_DIR} ${CMAKE_BINARY_DIR})
    add_test(NAME packaging.the_window_belongs_to_its_desktop_entry
             COMMAND ${CMAKE_SOURCE_DIR}/tests/packaging/window_class.sh ${CMAKE_SOURCE_DIR} ${CMAKE_BINARY_DIR})
    set_tests_properties(packaging.the_window_belongs_to_its_desktop_entry PROPERTIES SKIP_RETURN_CODE 77)
endif()
