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

file(GLOB model_sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/data/model/*.cpp)
add_library(stelvan_model_text STATIC ${model_sources})
target_link_libraries(stelvan_model_text PUBLIC stelvan_options stelvan_jet)
add_executable(build_gem_database data/build_gem_database.cpp)
target_link_libraries(build_gem_database PRIVATE stelvan_model_text CLI11::CLI11)
set_target_properties(stelvan_model_text build_gem_database PROPERTIES AUTOMOC OFF)

