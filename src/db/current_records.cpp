#include "db/current_records.h"

#include "db/connection.h"

namespace stelvan::db {

std::shared_ptr<Recordset> DataSource::refresh() const {
    Connection connection;
    connection.setConnectionText(connectionText);
    connection.open();
    auto opened = std::make_shared<Recordset>();
    opened->open(recordSource, connection, cursorType, lockType, Reading::AsReached);
    return opened;
}

bool CurrentRecords::onRecord() const {
    return records != nullptr && records->state() == ObjectState::Open && records->onRecord();
}

std::int32_t CurrentRecords::count() const {
    return records == nullptr ? 0 : records->recordCount();
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
