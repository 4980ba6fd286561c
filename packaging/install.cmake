# What an installed Stelvan consists of, in the usual places. Two components: `program` (what users need) and
# `development` (the file engine as a library). The templates are installed read-only; a model of one's own is
# started with "New model..." or `gemdb new FOLDER`.
include(GNUInstallDirs)
set(STELVAN_HOMEPAGE "https://stelvan.example" CACHE STRING
    "Where the program is at home, for software centres; set it to the site that has the pictures")

if(TARGET stelvan)
    install(TARGETS stelvan RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
    install(FILES packaging/desktop/stelvan.desktop
            DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT program)
    configure_file(packaging/desktop/stelvan.metainfo.xml.in
                   ${CMAKE_BINARY_DIR}/org.stelvan.Stelvan.metainfo.xml @ONLY)
    install(FILES ${CMAKE_BINARY_DIR}/org.stelvan.Stelvan.metainfo.xml
            DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT program)

    add_executable(make_icons packaging/icons/make_icons.cpp)
    target_link_libraries(make_icons PRIVATE Qt6::Gui Qt6::Svg)
    set_target_properties(make_icons PROPERTIES AUTOMOC OFF)
    set(stelvan_icon ${CMAKE_SOURCE_DIR}/src/form/icons/stelvan.svg)
    add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/icons/512x512/apps/stelvan.png
        COMMAND make_icons ${stelvan_icon} ${CMAKE_BINARY_DIR}/icons
        DEPENDS make_icons ${stelvan_icon} COMMENT "Drawing the icon" VERBATIM)
    add_custom_target(stelvan_icons ALL DEPENDS ${CMAKE_BINARY_DIR}/icons/512x512/apps/stelvan.png)
    install(FILES ${stelvan_icon} DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps
            COMPONENT program)
    install(DIRECTORY ${CMAKE_BINARY_DIR}/icons/ DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor
            COMPONENT program)
endif()
if(TARGET gemdb)
    install(TARGETS gemdb RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
    install(FILES ${STELVAN_TEXTS_DIR}/gemdb.1 ${STELVAN_TEXTS_DIR}/stelvan.1
            DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT program)
    install(FILES ${STELVAN_TEXTS_DIR}/gemdb.bash RENAME gemdb
            DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT program)
    install(FILES ${STELVAN_TEXTS_DIR}/_gemdb
            DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions COMPONENT program)
    install(FILES ${STELVAN_TEXTS_DIR}/gemdb.fish
            DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT program)
endif()
if(TARGET gem_database)
    install(FILES ${STELVAN_TEMPLATE_DIR}/gem-template.mdb ${STELVAN_TEMPLATE_DIR}/demo-template.mdb
            packaging/share/secs-dictionary.xml
            DESTINATION ${CMAKE_INSTALL_DATADIR}/stelvan COMPONENT program
            PERMISSIONS OWNER_READ GROUP_READ WORLD_READ)
endif()

# The file engine alone: one static library with its headers, for find_package(StelvanJet) and pkg-config.
add_library(stelvan_jet_library STATIC
    $<TARGET_OBJECTS:stelvan_base> $<TARGET_OBJECTS:stelvan_jet>)
set_target_properties(stelvan_jet_library PROPERTIES
    OUTPUT_NAME stelvanjet EXPORT_NAME Jet LINKER_LANGUAGE CXX AUTOMOC OFF)
target_compile_features(stelvan_jet_library INTERFACE cxx_std_20)
target_link_libraries(stelvan_jet_library INTERFACE Threads::Threads)
target_include_directories(stelvan_jet_library INTERFACE
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/stelvan-jet>)
install(TARGETS stelvan_jet_library EXPORT StelvanJet
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(DIRECTORY src/jet src/base DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/stelvan-jet
        COMPONENT development FILES_MATCHING PATTERN "*.h")
install(EXPORT StelvanJet NAMESPACE Stelvan:: FILE StelvanJetTargets.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/StelvanJet COMPONENT development)
include(CMakePackageConfigHelpers)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/StelvanJetConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES packaging/jet/StelvanJetConfig.cmake ${CMAKE_BINARY_DIR}/StelvanJetConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/StelvanJet COMPONENT development)
configure_file(packaging/jet/stelvanjet.pc.in ${CMAKE_BINARY_DIR}/stelvanjet.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/stelvanjet.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
