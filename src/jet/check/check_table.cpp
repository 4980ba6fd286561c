#include "jet/check/check_table.h"

#include <algorithm>
#include <tuple>

#include "jet/pages/data_page.h"
#include "jet/pages/record_pointer.h"
#include "jet/tables/definition_format.h"

namespace stelvan::jet {

namespace {

std::string rowName(RowId id) {
    return "row " + std::to_string(id.slot) + " of page " + std::to_string(id.page);
}

}  // namespace

TableCheck::TableCheck(PageFile& file, std::shared_ptr<const TableDef> table, bool system,
                       PageBook& pages, CheckLog& log)
    : file_(file),
      table_(std::move(table)),
      name_("table " + table_->info.name),
      system_(system),
      pages_(pages),
      log_(log),
      reader_(file, table_, allColumns(table_->info)) {}

void TableCheck::run() {
    claimPages();
    for (std::size_t i = 0; i < table_->info.columns.size(); ++i) {
        longValues_.emplace_back();
        if (!isLongValue(table_->info.columns[i].type)) continue;
        longValues_.back().emplace(
            file_, "the long values of " + name_ + "." + table_->info.columns[i].name,
            table_->storage[i], pages_, log_);
    }
    for (const RealIndexDef& tree : table_->trees) {
        trees_.emplace_back();
        if (KeyEncoder::canEncode(table_->info.columns, tree.columns)) {
            trees_.back().encoder.emplace(table_->info.columns, tree.columns);
        }
    }
    for (const PageNumber page : owned_) log_.attempt(page, [&] { checkPage(page); });
    for (const std::uint32_t row : hidden_) {
        if (!targets_.contains(row)) {
            log_.fault(RecordPointer::unpack(row).page,
                       "a moved row of " + name_ + " has lost its pointer.");
        }
    }
    for (auto& longValues : longValues_) {
        if (longValues) longValues->finish();
    }
    checkCounters();
    checkTrees();
}

void TableCheck::claimPages() {
    for (const PageNumber page : pages_.readMap(table_->ownedMap, name_)) {
        pages_.claim(page, name_);
        owned_.insert(page);
    }
    for (const PageNumber page : pages_.readMap(table_->freeMap, name_ + " (with room)")) {
        if (!owned_.contains(page))
            log_.fault(page, "the page has room for " + name_ + " but is none of its own.");
    }
}

void TableCheck::checkPage(PageNumber number) {
    const PageBytes bytes = file_.read(number);
    const DataPage page(number, bytes);
    checkDataPage(page, bytes, table_->page, log_);
    for (std::size_t i = 0; i < page.slotCount(); ++i)
        log_.attempt(number, [&] { checkSlot(page, i); });
}

void TableCheck::checkSlot(const DataPage& page, std::size_t index) {
    const Slot slot = page.slot(index);
    const RowId id{page.number(), static_cast<std::uint8_t>(index)};
    if (slot.deleted()) return;
    if (slot.hidden()) {
        hidden_.insert(RecordPointer{id.page, id.slot}.packed());
    } else if (slot.pointer()) {
        checkMovedRow(id, page.row(slot));
    } else {
        checkRow(id, page.row(slot), page.number());
    }
}

void TableCheck::checkMovedRow(RowId id, Bytes pointerRow) {
    const RecordPointer target = pointerAt(pointerRow, 0);
    if (!owned_.contains(target.page))
        throwCorrupt(id.page, "a moved row's pointer leads out of its table.");
    if (!targets_.insert(target.packed()).second)
        log_.fault(target.page, "two pointers lead to one moved row.");
    const DataPage page(target.page, file_.read(target.page));
    const Slot slot = page.slot(target.slot);
    if (slot.flags != data_page::kHidden) {
        throwCorrupt(target.page,
                     "a moved row is not marked as one that only its pointer leads to.");
    }
    checkRow(id, page.row(slot), target.page);
}

void TableCheck::checkRow(RowId id, Bytes row, PageNumber page) {
    ++rows_;
    reader_.set(row, page);
    for (std::size_t i = 0; i < table_->info.columns.size(); ++i) {
        log_.attempt(page, [&] { checkColumn(i, page); });
    }
    log_.attempt(page, [&] { addKeys(id); });
}

void TableCheck::checkColumn(std::size_t column, PageNumber page) {
    const ColumnInfo& info = table_->info.columns[column];
    const ValueView value = reader_.value(column);
    if (longValues_[column]) {
        if (const auto stored = reader_.view().stored(column))
            longValues_[column]->use(*stored, page);
    }
    if (isNull(value) && info.required)
        log_.note(page, "a row of " + name_ + " lacks " + info.name + ".");
    const auto* text = std::get_if<std::string_view>(&value);
    if (text != nullptr && text->empty() && !info.allowZeroLength) {
        log_.note(page, "a row of " + name_ + " has an empty " + info.name + ".");
    }
    const auto* number = std::get_if<std::int32_t>(&value);
    if (info.autoNumber && number != nullptr) highestNumber_ = std::max(highestNumber_, *number);
}

void TableCheck::addKeys(RowId id) {
    std::vector<ValueView> values;
    for (std::size_t i = 0; i < trees_.size(); ++i) {
        if (!trees_[i].encoder) continue;
        const KeyEncoder& encoder = *trees_[i].encoder;
        values.clear();
        for (std::size_t part = 0; part < encoder.partCount(); ++part) {
            values.push_back(reader_.value(encoder.column(part)));
        }
        IndexKey key;
        IndexKey variant;
        encoder.encode(values, key);
        if (key.allNull && table_->trees[i].ignoreNulls()) continue;
        if (!encoder.encodeVariant(values, variant)) variant.bytes.clear();
        trees_[i].entries.push_back(
            {std::move(key.bytes), std::move(variant.bytes), id, key.anyNull});
    }
}

void TableCheck::checkCounters() {
    const PageBytes bytes = file_.read(table_->page);
    const std::uint32_t counted = u32At(bytes, definition::kRows);
    if (counted != rows_) {
        const std::string text = name_ + " counts " + std::to_string(counted) + " rows but has " +
                                 std::to_string(rows_) + ".";
        if (system_) {
            log_.note(table_->page, text);
        } else {
            log_.fault(table_->page, text);
        }
    }
    if (i32At(bytes, definition::kAutoNumber) < highestNumber_) {
        log_.fault(table_->page, name_ + " has given out number " + std::to_string(highestNumber_) +
                                     " but remembers only " +
                                     std::to_string(i32At(bytes, definition::kAutoNumber)) + ".");
    }
}

std::string TableCheck::nameOf(const RealIndexDef& tree) const {
    const std::size_t position = static_cast<std::size_t>(&tree - table_->trees.data());
    for (const IndexInfo& index : table_->info.indexes) {
        if (index.tree == position) return "index " + index.name + " of " + name_;
    }
    return "an index of " + name_;
}

void TableCheck::checkTrees() {
    for (std::size_t i = 0; i < trees_.size(); ++i) {
        const RealIndexDef& tree = table_->trees[i];
        const CheckedTree checked = checkTree(file_, tree.root, table_->page, log_);
        checkTreePages(tree, checked);
        if (trees_[i].encoder) {
            checkEntries(tree, trees_[i], checked);
            checkKeys(tree, trees_[i]);
        } else if (checked.entries.size() > rows_) {
            log_.fault(tree.root, nameOf(tree) + " has more entries than there are rows.");
        }
        checkDistinct(i, checked);
    }
}

void TableCheck::checkTreePages(const RealIndexDef& tree, const CheckedTree& checked) {
    const std::string owner = nameOf(tree);
    for (const PageNumber page : checked.pages) pages_.claim(page, owner);
    std::vector<PageNumber> listed = pages_.readMap(tree.map, owner);
    std::vector<PageNumber> reached = checked.pages;
    std::ranges::sort(reached);
    std::vector<PageNumber> different;
    std::ranges::set_symmetric_difference(listed, reached, std::back_inserter(different));
    for (const PageNumber page : different) {
        const bool isListed = std::ranges::binary_search(listed, page);
        log_.fault(page, isListed
                             ? "the page is listed for " + owner + " but not reached from its root."
                             : "the page is part of " + owner + " but not listed for it.");
    }
}

// Some entries may stand in the form that later engines write.
void TableCheck::useVariants(const RealIndexDef& tree, TreeRows& rows, const CheckedTree& checked) {
    const auto held = [&](const EntryBytes& key, RowId row) {
        const auto found = std::ranges::lower_bound(
            checked.entries, std::tie(key, row), {},
            [](const CheckedTree::Entry& entry) { return std::tie(entry.key, entry.row); });
        return found != checked.entries.end() && found->key == key && found->row == row;
    };
    for (Expected& entry : rows.entries) {
        if (entry.variant.empty() || held(entry.key, entry.row) || !held(entry.variant, entry.row))
            continue;
        log_.note(tree.root,
                  nameOf(tree) + " has the key of a later engine for " + rowName(entry.row) + ".");
        entry.key = std::move(entry.variant);
    }
}

void TableCheck::checkEntries(const RealIndexDef& tree, TreeRows& rows,
                              const CheckedTree& checked) {
    useVariants(tree, rows, checked);
    const auto place = [](const auto& entry) { return std::tie(entry.key, entry.row); };
    std::ranges::sort(rows.entries, {}, place);
    auto expected = rows.entries.begin();
    auto found = checked.entries.begin();
    while (expected != rows.entries.end() || found != checked.entries.end()) {
        const bool missing = found == checked.entries.end() ||
                             (expected != rows.entries.end() && place(*expected) < place(*found));
        const bool excess =
            !missing && (expected == rows.entries.end() || place(*found) < place(*expected));
        if (missing) {
            log_.fault(tree.root,
                       nameOf(tree) + " lacks the entry of " + rowName(expected->row) + ".");
        } else if (excess) {
            log_.fault(tree.root, nameOf(tree) + " has an entry that " + rowName(found->row) +
                                      " does not give.");
        }
        if (!excess) ++expected;
        if (!missing) ++found;
    }
}

void TableCheck::checkKeys(const RealIndexDef& tree, const TreeRows& rows) {
    const bool required = tree.required();
    const Expected* before = nullptr;
    for (const Expected& entry : rows.entries) {
        if (required && entry.anyNull) {
            log_.fault(tree.root,
                       nameOf(tree) + " forbids nulls, but " + rowName(entry.row) + " has one.");
        }
        if (tree.unique() && before != nullptr && before->key == entry.key && !entry.anyNull) {
            log_.fault(tree.root, nameOf(tree) + " is unique, but " + rowName(before->row) +
                                      " and " + rowName(entry.row) + " are equal in it.");
        }
        before = &entry;
    }
}

// Never counted down, so that it may be too large; the engine lets it fall behind at times.
void TableCheck::checkDistinct(std::size_t tree, const CheckedTree& checked) {
    std::uint32_t distinct = 0;
    for (std::size_t i = 0; i < checked.entries.size(); ++i) {
        if (i == 0 || checked.entries[i].key != checked.entries[i - 1].key) ++distinct;
    }
    const std::size_t at =
        definition::kStatistics + tree * statistics::kSize + statistics::kDistinct;
    const std::uint32_t counted = u32At(file_.read(table_->page), at);
    if (counted < distinct) {
        log_.note(table_->page, nameOf(table_->trees[tree]) + " counts " + std::to_string(counted) +
                                    " different keys but has " + std::to_string(distinct) + ".");
    }
}

}  // namespace stelvan::jet
