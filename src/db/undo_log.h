// What record sets take back in memory when the open unit of work does not reach the file.
//
// A record set that writes inside a unit of work already counts the record as stored; if the unit
// is rolled back later, the record must be pending again as if update() had never been called.
#pragma once

#include <filesystem>
#include <functional>

namespace stelvan::db {

class UndoLog {
public:
    /// Keeps `undo` for the unit of work that is open on `file`; forgets it where there is none.
    static void add(const std::filesystem::path& file, std::function<void()> undo);
};

}  // namespace stelvan::db
