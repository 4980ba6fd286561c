#include "editing/record_position.h"

namespace stelvan::editing {

void renumber(db::CurrentRecords& current) {
    const db::Bookmark shown = current.records->bookmark();
    const std::shared_ptr<db::Recordset> walker = current.records->clone();
    current.position = 1;
    for (walker->moveFirst(); !walker->eof() && walker->bookmark() != shown; walker->moveNext())
        ++current.position;
}

void resynchronise(db::CurrentRecords& current) {
    const std::int32_t before = current.records->recordCount();
    current.records->resync();
    if (current.records->recordCount() != before && current.onRecord()) renumber(current);
}

void moveToFirst(db::CurrentRecords& current) {
    const bool any = current.records->recordCount() > 0;
    if (any) current.records->moveFirst();
    current.position = any ? 1 : 0;
}

}  // namespace stelvan::editing
