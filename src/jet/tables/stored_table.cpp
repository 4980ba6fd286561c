#include "jet/tables/stored_table.h"

#include "jet/disk/page_file.h"
#include "jet/rows/conversion.h"
#include "jet/tables/definition_format.h"
#include "jet/tables/row_cursors.h"
#include "jet/tables/table_def.h"
#include "jet/tables/table_summary.h"

namespace stelvan::jet {

const std::shared_ptr<const TableDef>& StoredTable::definition() {
    Catalog& catalog = file_->catalog();
    if (generation_ != catalog.generation() || definition_ == nullptr) {
        const CatalogEntry* entry = catalog.findTable(name_);
        if (entry == nullptr) throw Error::of(ErrorKind::NoSuchTable, name_);
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

const IndexInfo& StoredTable::indexAt(std::size_t index) {
    const TableInfo& table = definition()->info;
    if (index >= table.indexes.size()) {
        throw Error(ErrorKind::NoSuchIndex, "The table '" + name_ + "' has no such index.")
            .about(name_);
    }
    return table.indexes[index];
}

std::vector<IndexKey> StoredTable::keysOf(const IndexInfo& index, std::span<const Value> values) {
    const KeyEncoder encoder(definition_->info.columns, index.columns);
    std::vector<Value> converted;
    try {
        for (std::size_t i = 0; i < values.size() && i < index.columns.size(); ++i) {
            converted.push_back(
                convertTo(definition_->info.columns[index.columns[i].column], values[i]));
        }
    } catch (const Error& error) {
        const bool unlike = error.kind() == ErrorKind::TypeMismatch ||
                            error.kind() == ErrorKind::TextTooLong ||
                            error.kind() == ErrorKind::NumericOverflow;
        if (!unlike) throw;
        return {};
    }
    std::vector<ValueView> views;
    for (const Value& value : converted) views.push_back(toView(value));
    std::vector<IndexKey> keys(2);
    encoder.encode(views, keys[0]);
    if (!encoder.encodeVariant(views, keys[1])) keys.pop_back();
    return keys;
}

std::unique_ptr<Cursor> StoredTable::find(std::size_t index, std::span<const Value> key,
                                          ColumnSet wanted) {
    const ReadScope scope(file_->sharedPages());
    const IndexInfo& info = indexAt(index);
    const IndexTree tree(file_->pages(), definition_->trees[info.tree].root, definition_->page);
    std::vector<TreeCursor> entries;
    for (const IndexKey& prefix : keysOf(info, key))
        entries.push_back(tree.withPrefix(prefix.bytes));
    if (entries.empty()) return makeEmptyCursor();
    return makeIndexCursor(file_, definition_, std::move(entries), wanted);
}

std::unique_ptr<Cursor> StoredTable::inOrder(std::size_t index, ColumnSet wanted) {
    const ReadScope scope(file_->sharedPages());
    const IndexInfo& info = indexAt(index);
    const IndexTree tree(file_->pages(), definition_->trees[info.tree].root, definition_->page);
    return makeIndexCursor(file_, definition_, {tree.all()}, wanted);
}

std::uint64_t StoredTable::count() {
    const ReadScope scope(file_->sharedPages());
    const TableSummary summary(file_->pages(), definition());
    return summary.rows([this] {
        if (file_->cursors == 0) file_->pages().release();
    });
}

std::optional<Value> StoredTable::extreme(std::size_t index, Extreme which) {
    const ReadScope scope(file_->sharedPages());
    const IndexInfo& info = indexAt(index);
    return TableSummary(file_->pages(), definition()).extreme(info, which);
}

template <typename Change>
auto StoredTable::change(Change&& apply) {
    requireWritable(access_, *file_);
    return runInUnit(file_, [&] { return apply(file_->writer(), definition()); });
}

RowId StoredTable::insert(std::span<const ColumnValue> values) {
    return change(
        [&](DatabaseWriter& writer, const auto& table) { return writer.insert(table, values); });
}

void StoredTable::update(RowId id, std::span<const ColumnValue> values) {
    change([&](DatabaseWriter& writer, const auto& table) { writer.update(table, id, values); });
}

void StoredTable::erase(RowId id) {
    change([&](DatabaseWriter& writer, const auto& table) { writer.erase(table, id); });
}

}  // namespace stelvan::jet
