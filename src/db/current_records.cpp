#include "db/current_records.h"

namespace stelvan::db {

bool CurrentRecords::onRecord() const {
    return records != nullptr && records->state() == ObjectState::Open && records->onRecord();
}

void CurrentRecords::drop() {
    // Let go of first: whatever fails below, no old record set lives on under a new category.
    const std::shared_ptr<Recordset> old = std::move(records);
    records = nullptr;
    position = 0;
    if (old == nullptr || old->state() != ObjectState::Open) return;
    if (old->onRecord()) old->cancelBatch(Affect::All);
    old->close();
}

}  // namespace stelvan::db
