#include "editing/record_position.h"

namespace stelvan::editing {
namespace {

std::int32_t positionOf(const db::Recordset& records) {
    const db::Bookmark shown = records.bookmark();
    const std::shared_ptr<db::Recordset> walker = records.clone();
    std::int32_t position = 1;
    for (walker->moveFirst(); !walker->eof() && walker->bookmark() != shown; walker->moveNext()) ++position;
    return position;
}

}  // namespace

void resynchronise(db::CurrentRecords& current) {
    const std::int32_t before = current.records->recordCount();
    current.records->resync();
    if (current.records->recordCount() != before && current.onRecord())
        current.position = positionOf(*current.records);
}

void moveToFirst(db::CurrentRecords& current) {
    const bool any = current.records->recordCount() > 0;
    if (any) current.records->moveFirst();
    current.position = any ? 1 : 0;
}

}  // namespace stelvan::editing
