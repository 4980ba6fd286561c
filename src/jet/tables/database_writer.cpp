#include "jet/tables/database_writer.h"

#include "jet/rows/row_reader.h"
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
    note(table, id, std::nullopt, noteOf(table, id));
    for (const RelationshipLink& link : writer.links()) {
        if (!link.parent) rules_.childWritten(*table, link, id);
    }
    return id;
}

void DatabaseWriter::update(const Definition& table, RowId id,
                            std::span<const ColumnValue> values) {
    auto before = noteOf(table, id);
    const std::vector<TouchedLink> touched = writerOf(table).update(id, values);
    note(table, id, std::move(before), noteOf(table, id));
    follow(*table, id, touched);
}

void DatabaseWriter::erase(const Definition& table, RowId id) {
    auto before = noteOf(table, id);
    const std::vector<TouchedLink> touched = writerOf(table).erase(id);
    note(table, id, std::move(before), std::nullopt);
    follow(*table, id, touched);
}

std::optional<std::vector<Value>> DatabaseWriter::noteOf(const Definition& table, RowId id) {
    if (noted_ == nullptr) return std::nullopt;
    const std::optional<LocatedRow> row = locateRow(*file_, *table, id);
    if (!row) return std::nullopt;
    const ColumnSet all = allColumns(table->info);
    RowReader reader(*file_, table, all);
    reader.set(row->bytes, row->target.page);
    std::vector<Value> values;
    for (const std::size_t column : all) values.push_back(toValue(reader.value(column)));
    return values;
}

void DatabaseWriter::note(const Definition& table, RowId id,
                          std::optional<std::vector<Value>> before,
                          std::optional<std::vector<Value>> after) {
    if (noted_ != nullptr)
        noted_->push_back({table->info.name, id, std::move(before), std::move(after)});
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
