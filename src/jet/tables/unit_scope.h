// One unit of work on a shared database, or a step within the one that is open.
#pragma once

#include <optional>
#include <type_traits>

#include "jet/disk/page_file.h"
#include "jet/tables/shared_database.h"

namespace stelvan::jet {

class UnitScope {
public:
    explicit UnitScope(SharedDatabase& file) : file_(&file), scope_(file.sharedPages()) {
        file_->enterUnit();
    }
    ~UnitScope() { file_->leaveUnit(); }
    UnitScope(const UnitScope&) = delete;
    UnitScope& operator=(const UnitScope&) = delete;

    /// Of the outermost scope: judges the relationships and writes.
    void commit() {
        if (file_->unitDepth() == 1) file_->rules().judge();
        scope_.commit();
    }

private:
    SharedDatabase* file_;
    WriteScope scope_;
};

/// Runs a change in the open unit of work, or in one of its own. No scope is opened within a unit:
/// what `apply` refuses before it changes something must leave the unit as it is.
template <typename Apply>
auto runInUnit(SharedDatabase& file, Apply&& apply) {
    std::optional<UnitScope> own;
    if (file.unitDepth() == 0) own.emplace(file);
    if constexpr (std::is_void_v<decltype(apply())>) {
        apply();
        if (own) own->commit();
    } else {
        const auto result = apply();
        if (own) own->commit();
        return result;
    }
}

}  // namespace stelvan::jet
