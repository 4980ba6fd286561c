// What stands behind one handle.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "jet/database.h"
#include "jet/shared_database.h"
#include "jet/table.h"

namespace stelvan::jet {

struct Database::Impl {
    std::shared_ptr<SharedDatabase> file;
    Access access = Access::ReadOnly;
    std::map<std::string, std::unique_ptr<StoredTable>> tables;  // by folded name

    void requireWritable() const;
};

}  // namespace stelvan::jet
