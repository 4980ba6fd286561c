// One table: its pages, rows, long values, counters and indexes.
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "jet/check/check_index.h"
#include "jet/check/check_long_values.h"
#include "jet/disk/page.h"
#include "jet/disk/page_file.h"
#include "jet/index/index_keys.h"
#include "jet/rows/column_facts.h"
#include "jet/rows/row_reader.h"

namespace stelvan::jet {

class TableCheck {
public:
    /// `system`: a table whose counters the Access engine does not keep up.
    TableCheck(PageFile& file, std::shared_ptr<const TableDef> table, bool system, PageBook& pages,
               CheckLog& log);

    void run();

private:
    struct Expected {
        EntryBytes key;
        EntryBytes
            variant;  // the other form in which the entry may stand, empty where there is none
        RowId row;
        bool anyNull = false;
    };
    // What the rows say about one index tree.
    struct TreeRows {
        std::optional<KeyEncoder> encoder;  // none where the order cannot be computed
        std::vector<Expected> entries;
    };

    void claimPages();
    void checkPage(PageNumber number);
    void checkSlot(const DataPage& page, std::size_t index);
    void checkMovedRow(RowId id, Bytes pointerRow);
    void checkRow(RowId id, Bytes row, PageNumber page);
    void checkColumn(std::size_t column, PageNumber page);
    void addKeys(RowId id);
    void checkCounters();
    void checkTreePages(const RealIndexDef& tree, const CheckedTree& checked);
    void checkEntries(const RealIndexDef& tree, TreeRows& rows, const CheckedTree& checked);
    void useVariants(const RealIndexDef& tree, TreeRows& rows, const CheckedTree& checked);
    void checkKeys(const RealIndexDef& tree, const TreeRows& rows);
    void checkDistinct(std::size_t tree, const CheckedTree& checked);
    void checkTrees();

    [[nodiscard]] std::string nameOf(const RealIndexDef& tree) const;

    PageFile& file_;
    std::shared_ptr<const TableDef> table_;
    std::string name_;
    bool system_;
    PageBook& pages_;
    CheckLog& log_;
    RowReader reader_;
    std::set<PageNumber> owned_;
    std::set<std::uint32_t> hidden_;   // rows that only a pointer leads to
    std::set<std::uint32_t> targets_;  // rows that a pointer leads to
    std::deque<std::optional<LongValueCheck>> longValues_;
    std::vector<TreeRows> trees_;
    std::uint32_t rows_ = 0;
    std::int32_t highestNumber_ = 0;
};

}  // namespace stelvan::jet
