# gemdb, the command-line companion. Its commands are a library, so that tests can ask them directly.
stelvan_floor(gemdb EXCLUDE gemdb.cpp LINKS stelvan_model stelvan_db stelvan_sql stelvan_jet
              CLI11::CLI11)
add_executable(gemdb src/gemdb/gemdb.cpp)
target_link_libraries(gemdb PRIVATE stelvan_gemdb)
set_target_properties(gemdb PROPERTIES AUTOMOC OFF)
