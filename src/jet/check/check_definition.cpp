#include "jet/check/check_definition.h"

#include <algorithm>
#include <set>

#include "jet/disk/page.h"
#include "jet/rows/column_facts.h"
#include "jet/rows/row_layout.h"
#include "jet/rows/text.h"
#include "jet/tables/definition_format.h"

namespace stelvan::jet {

namespace {

class DefinitionCheck {
public:
    DefinitionCheck(PageFile& file, const std::string& name, const TableDef& table, CheckLog& log)
        : file_(file),
          where_("the definition of " + name),
          table_(table),
          log_(log),
          joined_(readDefinitionBytes(file, table.page)) {}

    void run(PageBook& pages) {
        for (const PageNumber page : joined_.pages) pages.claim(page, where_);
        checkHeader();
        checkBlocks();
        checkFreeFields();
        checkColumns();
        checkIndexes();
    }

private:
    void fault(const std::string& what) { log_.fault(table_.page, where_ + " " + what); }
    [[nodiscard]] Bytes bytes() const { return joined_.bytes; }

    void checkHeader() {
        if (u32At(bytes(), definition::kMark) != kDefinitionMark) fault("has no mark.");
        if (u32At(bytes(), definition::kAutoNumberStep) == 0)
            fault("numbers its rows in steps of 0.");
        const std::uint8_t kind = u8At(bytes(), definition::kKind);
        if (kind != definition::kUserTable && kind != definition::kSystemTable)
            fault("is of unknown kind.");
        for (const PageNumber page : joined_.pages) {
            if (file_.read(page)[1] != kPageInUse) fault("has a page whose second byte is not 1.");
        }
    }

    // Walks over all blocks once more, to see that they end where the length says.
    void checkBlocks() {
        const std::size_t columns = u16At(bytes(), definition::kColumns);
        std::size_t at = definition::kStatistics + table_.trees.size() * statistics::kSize;
        for (std::size_t i = 0; i < columns; ++i, at += column_block::kSize) {
            if (u32At(bytes(), at + column_block::kMark) != kDefinitionMark)
                fault("has a column without mark.");
        }
        for (std::size_t i = 0; i < columns; ++i) at = skipName(at);
        for (std::size_t i = 0; i < table_.trees.size(); ++i, at += real_index::kSize) {
            if (u32At(bytes(), at + real_index::kMark) != kRealIndexMark)
                fault("has an index without mark.");
        }
        for (std::size_t i = 0; i < table_.logical.size(); ++i, at += logical_index::kSize) {
            if (u32At(bytes(), at + logical_index::kMark) != kDefinitionMark)
                fault("has an index without mark.");
        }
        for (std::size_t i = 0; i < table_.logical.size(); ++i) at = skipName(at);
        std::size_t longValues = 0;
        for (; u16At(bytes(), at) != definition::kEnd; at += definition::kTailEntrySize)
            ++longValues;
        const auto expected = std::ranges::count_if(
            table_.info.columns, [](const ColumnInfo& column) { return isLongValue(column.type); });
        if (longValues != static_cast<std::size_t>(expected))
            fault("lists other long-value columns than it has.");
        if (at + 2 != length()) fault("does not end where its length says.");
    }

    [[nodiscard]] std::size_t skipName(std::size_t at) const { return at + 2 + u16At(bytes(), at); }
    [[nodiscard]] std::size_t length() const { return u32At(bytes(), definition::kLength); }

    void checkFreeFields() {
        constexpr std::size_t kNotCounted = 8;
        if (length() > joined_.bytes.size()) {
            fault("is longer than its pages.");
            return;
        }
        const std::size_t unused = joined_.bytes.size() - length();
        const std::size_t free = unused > kNotCounted ? unused - kNotCounted : 0;
        for (std::size_t i = 0; i < joined_.pages.size(); ++i) {
            const std::size_t expected = i + 1 == joined_.pages.size() ? free : 0;
            if (u16At(file_.read(joined_.pages[i]), definition::kFree) != expected) {
                log_.fault(joined_.pages[i], where_ + " gives a wrong free space.");
            }
        }
    }

    void checkColumns() {
        std::set<std::string> names;
        std::set<std::uint16_t> variables;
        for (std::size_t i = 0; i < table_.info.columns.size(); ++i) {
            const ColumnInfo& column = table_.info.columns[i];
            if (column.name.empty() || !names.insert(foldName(column.name)).second) {
                fault("has two columns of one name, or one without: '" + column.name + "'.");
            }
            if (!table_.isFixed(i) && !variables.insert(table_.storage[i].variableIndex).second) {
                fault("keeps two columns in one place: '" + column.name + "'.");
            }
            if (isLongValue(column.type) && table_.storage[i].ownedMap.none()) {
                fault("has no map for the long values of '" + column.name + "'.");
            }
        }
        checkFixedPart();
    }

    void checkFixedPart() {
        std::vector<std::pair<std::size_t, std::size_t>> parts;
        for (std::size_t i = 0; i < table_.info.columns.size(); ++i) {
            const ColumnStorage& storage = table_.storage[i];
            if (table_.isFixed(i) && storage.size > 0)
                parts.emplace_back(storage.fixedOffset, storage.size);
        }
        std::ranges::sort(parts);
        for (std::size_t i = 1; i < parts.size(); ++i) {
            if (parts[i - 1].first + parts[i - 1].second > parts[i].first)
                fault("has fixed columns that overlap.");
        }
    }

    void checkIndexes() {
        std::set<std::uint32_t> numbers;
        std::set<std::uint32_t> used;
        for (std::size_t i = 0; i < table_.logical.size(); ++i) {
            const LogicalIndexDef& index = table_.logical[i];
            const std::string& name = table_.info.indexes[i].name;
            used.insert(index.real);
            if (!numbers.insert(index.number).second)
                fault("has two indexes of one number: '" + name + "'.");
            const bool foreign = index.kind == logical_index::kForeign;
            if (index.kind > logical_index::kForeign || index.side > logical_index::kChildSide ||
                foreign != (index.side != logical_index::kNoSide)) {
                fault("has an index of unknown kind: '" + name + "'.");
            }
        }
        if (used.size() != table_.trees.size()) fault("has an index tree without an index.");
        for (const RealIndexDef& tree : table_.trees) {
            if ((tree.flags & real_index::kAlways) == 0)
                fault("has an index without its standing flag.");
        }
    }

    PageFile& file_;
    std::string where_;
    const TableDef& table_;
    CheckLog& log_;
    DefinitionBytes joined_;
};

}  // namespace

void checkDefinition(PageFile& file, const std::string& name, const TableDef& table,
                     PageBook& pages, CheckLog& log) {
    log.attempt(table.page, [&] { DefinitionCheck(file, name, table, log).run(pages); });
}

}  // namespace stelvan::jet
