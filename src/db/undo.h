// Units of work of this session that can be taken back, the last first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "db/connection.h"

namespace stelvan::db {

/// The record that a unit was about, in the terms of whoever noted it; nothing here looks into it.
struct UnitSubject {
    std::int16_t category = 0;  // 0: no single record
    std::string id;
};

/// What one unit did, and what its user calls it.
struct DoneUnit {
    std::string what;  // "Save of variable 101"
    jet::RowChanges changes;
    UnitSubject subject = {};
};

/// The last units on one file. Not more than kMost are kept, the oldest go first.
class UndoHistory {
public:
    static constexpr std::size_t kMost = 100;

    /// After the unit's commit. What changed nothing is not kept.
    void add(std::string what, jet::RowChanges changes, UnitSubject subject = {});
    [[nodiscard]] bool empty() const { return done_.empty(); }
    /// What undo() would take back; empty where there is nothing.
    [[nodiscard]] std::string next() const { return empty() ? std::string() : done_.back().what; }
    /// Another file is open now.
    void forget() { done_.clear(); }

    /// Takes the last unit back as one unit of work, and gives what it was. RunTimeError where
    /// something that it touched is no longer as it left it (nothing is changed, the history
    /// stays), and what Connection's functions throw.
    DoneUnit undo(const std::string& path);

private:
    std::vector<DoneUnit> done_;
};

}  // namespace stelvan::db
