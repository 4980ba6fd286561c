// What a connection holds while it is open.
#pragma once

#include <memory>
#include <string>

#include "db/connection.h"
#include "db/open_database.h"

namespace stelvan::db {

struct Connection::Impl {
    std::string text;
    std::shared_ptr<OpenDatabase> open;  // null while closed

    /// Throws 3709 when closed.
    [[nodiscard]] const std::shared_ptr<OpenDatabase>& usable() const;
};

}  // namespace stelvan::db
