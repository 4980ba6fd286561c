# What an installed Stelvan consists of. The templates are installed read-only; a model of one's own is
# started with `gemdb new FOLDER`.
include(GNUInstallDirs)

if(TARGET stelvan)
    install(TARGETS stelvan RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    install(FILES packaging/stelvan.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
    install(FILES src/form/icons/stelvan.svg
            DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
endif()
if(TARGET gemdb)
    install(TARGETS gemdb RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
if(TARGET gem_database)
    install(FILES ${STELVAN_TEMPLATE_DIR}/gem-template.mdb ${STELVAN_TEMPLATE_DIR}/demo-template.mdb
            packaging/share/secs-dictionary.xml
            DESTINATION ${CMAKE_INSTALL_DATADIR}/stelvan
            PERMISSIONS OWNER_READ GROUP_READ WORLD_READ)
    # The folder of log and model that the settings of the template name.
    install(DIRECTORY DESTINATION ${STELVAN_STATE_DIR}/log)
    file(TOUCH ${CMAKE_BINARY_DIR}/secs.log)
    install(FILES ${CMAKE_BINARY_DIR}/secs.log DESTINATION ${STELVAN_STATE_DIR}/log)
endif()

# The folders that the template's settings name belong to the prefix: configure with
# -DCMAKE_INSTALL_PREFIX=/usr for a package that goes there.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_PACKAGE_CONTACT "The Stelvan developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Editor for the SECS/GEM model of one piece of equipment")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS qt6-qpa-plugins)
include(CPack)
