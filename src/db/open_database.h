// One opening of a database file: the file engine's handle and SQL over it.
//
// A connection opens one; record sets made on it keep it alive after the connection is closed.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "jet/database.h"
#include "sql/engine.h"

namespace stelvan::db {

class OpenDatabase {
public:
    /// Throws jet::Error.
    OpenDatabase(const std::filesystem::path& path, jet::Access access)
        : path_(path), database_(jet::Database::open(path, access)), engine_(database_) {}

    /// As it was asked for: opening it again finds what stands under that name then.
    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] jet::Database& database() { return database_; }
    [[nodiscard]] sql::Engine& engine() { return engine_; }

private:
    std::filesystem::path path_;
    jet::Database database_;
    sql::Engine engine_;
};

}  // namespace stelvan::db
