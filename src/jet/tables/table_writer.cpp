#include "jet/tables/table_writer.h"

#include <algorithm>

#include "jet/disk/page.h"
#include "jet/tables/definition_format.h"

namespace stelvan::jet {

using namespace definition;

TableWriter::TableWriter(PageFile& file, std::shared_ptr<const TableDef> table)
    : file_(&file),
      table_(std::move(table)),
      rows_(file, *table_),
      trees_(file, *table_),
      longValues_(table_->info.columns.size()),
      links_(linksOf(*table_)),
      draft_(*table_),
      old_(file, table_, allColumns(table_->info)) {
    for (std::size_t i = 0; i < longValues_.size(); ++i) {
        if (isLongValue(table_->info.columns[i].type))
            longValues_[i].emplace(file, table_->storage[i]);
        if (table_->info.columns[i].autoNumber) autoNumbers_.push_back(i);
    }
}

void TableWriter::standOn(RowId id) {
    const auto row = locateRow(*file_, *table_, id);
    if (!row) {
        throw Error::of(ErrorKind::RowGone, table_->info.name);
    }
    old_.set(row->bytes, row->target.page);
}

void TableWriter::giveAutoNumbers() {
    const PageBytes page = file_->read(table_->page);
    const std::int32_t last = i32At(page, kAutoNumber);
    const std::int32_t step = std::max(i32At(page, kAutoNumberStep), 1);
    for (const std::size_t column : autoNumbers_) {
        if (!isNull(draft_.value(column))) continue;
        std::int32_t next = 0;
        if (__builtin_add_overflow(last, step, &next)) {
            const std::string& name = table_->info.columns[column].name;
            throw Error(ErrorKind::NumericOverflow,
                        "There is no next number for the column '" + name + "'.")
                .about(name);
        }
        draft_.give(column, Value(next));
    }
}

RowId TableWriter::insert(std::span<const ColumnValue> values) {
    draft_.clear();
    draft_.give(values);
    giveAutoNumbers();
    draft_.checkProperties(true);
    trees_.choose([](std::size_t) { return true; });
    trees_.makeNewKeys([this](std::size_t column) { return draft_.value(column); });
    trees_.check(std::nullopt);
    draft_.encode(nullptr);

    WriteScope step(file_->shared_from_this());
    draft_.storeLongValues(longValues_);
    const RowId id = rows_.add(draft_.bytes());
    trees_.addNewEntries(id);
    countRows(true);
    countAutoNumbers();
    step.commit();
    return id;
}

std::vector<TouchedLink> TableWriter::update(RowId id, std::span<const ColumnValue> values) {
    standOn(id);
    draft_.clear();
    draft_.give(values);
    draft_.checkProperties(false);
    trees_.choose([this](std::size_t column) { return draft_.given(column); });
    trees_.makeOldKeys([this](std::size_t column) { return old_.value(column); });
    trees_.makeNewKeys([this](std::size_t column) { return newValue(column); });
    trees_.skipUnchanged();
    trees_.check(id);
    const auto freed = oldLongValues([this](std::size_t column) { return draft_.given(column); });
    auto touched = touchedLinks(false);
    draft_.encode(&old_.view());

    WriteScope step(file_->shared_from_this());
    draft_.storeLongValues(longValues_);
    trees_.removeOldEntries(id);
    rows_.replace(id, draft_.bytes());
    trees_.addNewEntries(id);
    free(freed);
    step.commit();
    return touched;
}

std::vector<TouchedLink> TableWriter::erase(RowId id) {
    standOn(id);
    draft_.clear();
    trees_.choose([](std::size_t) { return true; });
    trees_.makeOldKeys([this](std::size_t column) { return old_.value(column); });
    const auto freed = oldLongValues([](std::size_t) { return true; });
    auto touched = touchedLinks(true);

    WriteScope step(file_->shared_from_this());
    trees_.removeOldEntries(id);
    rows_.remove(id);
    free(freed);
    countRows(false);
    step.commit();
    return touched;
}

template <typename Wanted>
std::vector<TableWriter::OldLongValue> TableWriter::oldLongValues(Wanted&& wanted) {
    std::vector<OldLongValue> found;
    for (std::size_t i = 0; i < longValues_.size(); ++i) {
        if (!longValues_[i] || !wanted(i)) continue;
        const auto reference = old_.view().stored(i);
        if (!reference) continue;
        auto rows = atPage(old_.view().page(), [&] { return longValues_[i]->rowsOf(*reference); });
        if (!rows.empty()) found.push_back({i, std::move(rows)});
    }
    return found;
}

void TableWriter::free(const std::vector<OldLongValue>& values) {
    for (const OldLongValue& value : values) longValues_[value.column]->remove(value.rows);
}

// Copies of the keys: the rows may change before they are looked at.
std::vector<TouchedLink> TableWriter::touchedLinks(bool erased) {
    std::vector<TouchedLink> touched;
    for (const RelationshipLink& link : links_) {
        if (erased && !link.parent) continue;
        if (!erased &&
            std::ranges::none_of(link.columns, [this](std::size_t c) { return draft_.given(c); }))
            continue;
        TouchedLink entry{link, {}, {}};
        for (const std::size_t column : link.columns) {
            entry.oldKey.push_back(toValue(old_.value(column)));
            if (!erased) entry.newKey.push_back(toValue(newValue(column)));
        }
        if (erased || entry.oldKey != entry.newKey) touched.push_back(std::move(entry));
    }
    return touched;
}

void TableWriter::countRows(bool more) {
    const WritablePageBytes page = file_->edit(table_->page);
    const std::uint32_t rows = u32At(page, kRows);
    // A count that was wrong before must not run below zero.
    putU32(page, kRows, more ? rows + 1 : rows - (rows > 0 ? 1 : 0));
}

void TableWriter::countAutoNumbers() {
    for (const std::size_t column : autoNumbers_) {
        const ValueView given = draft_.value(column);
        const auto* number = std::get_if<std::int32_t>(&given);
        const WritablePageBytes page = file_->edit(table_->page);
        if (number != nullptr && *number > i32At(page, kAutoNumber)) {
            storeAt<std::int32_t>(page, kAutoNumber, *number);
        }
    }
}

}  // namespace stelvan::jet
