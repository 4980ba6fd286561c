// What units of work did to rows, noted so that it can be taken back later by another.
#pragma once

#include <vector>

#include "jet/tables/row_change.h"

namespace stelvan::jet {

class Database;

/// Notes the changes of rows through any handle of this process on the file, while it lives. One at
/// a time for a file: a second one takes over until it ends.
class RowChangeRecorder {
public:
    explicit RowChangeRecorder(Database& database);
    ~RowChangeRecorder();
    RowChangeRecorder(const RowChangeRecorder&) = delete;
    RowChangeRecorder& operator=(const RowChangeRecorder&) = delete;

    /// What was noted; nothing is left. Of a unit that was rolled back nothing is true.
    [[nodiscard]] RowChanges take();

private:
    Database* database_;
    RowChanges changes_;
    RowChanges* outer_;
};

/// Takes changes back, the last first, within the open unit of work (which is to be rolled back
/// when this throws). A row that was erased comes back under another id: the changes in `earlier`
/// that speak of it are told. Throws RowChanged or RowGone where a row is not as the changes left
/// it, and what Table's functions throw.
void takeBack(Database& database, const RowChanges& changes, std::vector<RowChanges*> earlier = {});

}  // namespace stelvan::jet
