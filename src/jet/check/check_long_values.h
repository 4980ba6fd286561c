// The long values of one column: each is whole, and each stored part of one has exactly one row it
// belongs to.
#pragma once

#include <set>
#include <string>

#include "jet/check/check_log.h"
#include "jet/check/check_pages.h"
#include "jet/disk/page.h"
#include "jet/disk/page_file.h"
#include "jet/pages/long_value.h"
#include "jet/pages/record_pointer.h"
#include "jet/rows/row_layout.h"
#include "jet/tables/table_def.h"

namespace stelvan::jet {

class LongValueCheck {
public:
    /// Claims the column's long-value pages and checks each page by itself.
    LongValueCheck(PageFile& file, const std::string& owner, const ColumnStorage& storage,
                   PageBook& pages, CheckLog& log);

    /// A row of the table refers to a long value.
    void use(Bytes stored, PageNumber rowPage);

    /// Reports what no row referred to.
    void finish();

private:
    void checkPage(PageNumber number);
    void take(RecordPointer part, PageNumber rowPage);
    void useSingle(const LongValueReference& reference, PageNumber rowPage);
    void useChain(const LongValueReference& reference, PageNumber rowPage);

    PageFile& file_;
    std::string owner_;
    CheckLog& log_;
    std::set<PageNumber> pages_;
    std::set<std::uint32_t> unused_;  // live parts that no row has referred to yet
};

}  // namespace stelvan::jet
