#include "editing/record_position.h"

namespace stelvan::editing {

void resynchronise(db::CurrentRecords& current) {
    current.records->resync();
    if (current.onRecord()) current.position = current.records->position();
}

void moveToFirst(db::CurrentRecords& current) {
    const bool any = current.records->recordCount() > 0;
    if (any) current.records->moveFirst();
    current.position = any ? 1 : 0;
}

}  // namespace stelvan::editing
