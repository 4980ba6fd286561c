#include "jet/table.h"

#include "jet/cursor.h"
#include "jet/table_def.h"

namespace stelvan::jet {

void throwNoSuchTable(const std::string& name) {
    Error error(ErrorKind::NoSuchTable,
                "The Microsoft Jet database engine cannot find the input table or query '" + name +
                    "'.  Make sure it exists and that its name is spelled correctly.");
    throw error.about(name);
}

const std::shared_ptr<const TableDef>& StoredTable::definition() {
    Catalog& catalog = file_->catalog();
    if (generation_ != catalog.generation() || definition_ == nullptr) {
        const CatalogEntry* entry = catalog.findTable(name_);
        if (entry == nullptr) throwNoSuchTable(name_);
        definition_ = catalog.definition(*entry);
        generation_ = catalog.generation();
    }
    return definition_;
}

const TableInfo& StoredTable::info() {
    const ReadScope scope(file_->sharedPages());
    const TableDef& table = *definition();
    if (infoGeneration_ != generation_) {
        info_ = table.info;
        infoGeneration_ = generation_;
    }
    info_.rows = u32At(file_->pages().read(table.page), ::stelvan::jet::definition::kRows);
    return info_;
}

std::unique_ptr<Cursor> StoredTable::scan(ColumnSet wanted) {
    const ReadScope scope(file_->sharedPages());
    return makeScanCursor(file_, definition(), wanted);
}

std::unique_ptr<Cursor> StoredTable::row(RowId id, ColumnSet wanted) {
    const ReadScope scope(file_->sharedPages());
    return makeRowCursor(file_, definition(), id, wanted);
}

}  // namespace stelvan::jet
