#include "jet/tables/database_writer.h"

#include "jet/tables/table_scan.h"

namespace stelvan::jet {

TableWriter& DatabaseWriter::writerOf(const Definition& table) {
    catalog_->follow();
    if (generation_ != catalog_->generation()) {
        writers_.clear();
        generation_ = catalog_->generation();
    }
    auto& writer = writers_[table->page];
    if (writer == nullptr) writer = std::make_unique<TableWriter>(*file_, table);
    return *writer;
}

RowId DatabaseWriter::insert(const Definition& table, std::span<const ColumnValue> values) {
    TableWriter& writer = writerOf(table);
    const RowId id = writer.insert(values);
    for (const RelationshipLink& link : writer.links()) {
        if (!link.parent) rules_.childWritten(*table, link, id);
    }
    return id;
}

void DatabaseWriter::update(const Definition& table, RowId id,
                            std::span<const ColumnValue> values) {
    follow(*table, id, writerOf(table).update(id, values));
}

void DatabaseWriter::erase(const Definition& table, RowId id) {
    follow(*table, id, writerOf(table).erase(id));
}

// A step of its own: where something that must follow is refused, the whole unit is undone.
void DatabaseWriter::follow(const TableDef& table, RowId id,
                            const std::vector<TouchedLink>& touched) {
    if (touched.empty()) return;
    WriteScope step(file_->shared_from_this());
    for (const TouchedLink& entry : touched) {
        if (entry.link.parent) {
            apply(rules_.parentTouched(table, entry));
        } else {
            rules_.childWritten(table, entry.link, id);
        }
    }
    step.commit();
}

void DatabaseWriter::apply(const Cascade& cascade) {
    for (const RowId row : cascade.rows) {
        if (cascade.mayBeGone && !locateRow(*file_, *cascade.table, row)) continue;
        if (cascade.erase) {
            erase(cascade.table, row);
        } else {
            update(cascade.table, row, cascade.values);
        }
    }
}

}  // namespace stelvan::jet
