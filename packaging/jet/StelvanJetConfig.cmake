# find_package(StelvanJet) gives Stelvan::Jet, the Access file engine.
include(CMakeFindDependencyMacro)
find_dependency(Threads)
include(${CMAKE_CURRENT_LIST_DIR}/StelvanJetTargets.cmake)
