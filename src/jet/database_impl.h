// What stands behind one handle.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "jet/database.h"
#include "jet/tables/shared_database.h"
#include "jet/tables/stored_table.h"

namespace stelvan::jet {

struct Database::Impl {
    std::shared_ptr<SharedDatabase> file;
    Access access = Access::ReadOnly;
    std::map<std::string, std::unique_ptr<StoredTable>> tables;  // by folded name
    std::optional<DateTime> created;  // of a database that this handle has made: all its dates

    [[nodiscard]] DateTime now() const;

    template <typename Change>
    void change(Change&& apply) {
        requireWritable(access, *file);
        runInUnit(file, [&] { apply(*file); });
    }
};

}  // namespace stelvan::jet
