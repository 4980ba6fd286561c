// Which page belongs to whom: every structure of a file claims its pages, and in the end every page
// must have exactly one owner or be free.
#pragma once

#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "jet/check/check_log.h"
#include "jet/disk/bytes.h"
#include "jet/disk/page.h"
#include "jet/disk/page_file.h"
#include "jet/pages/data_page.h"
#include "jet/pages/record_pointer.h"

namespace stelvan::jet {

class PageBook {
public:
    PageBook(PageFile& file, CheckLog& log) : file_(file), log_(log) {}

    /// `owner` says in words whose page it is.
    void claim(PageNumber page, const std::string& owner);

    /// The pages that a usage map lists; claims the map itself for `owner`, not its members.
    [[nodiscard]] std::vector<PageNumber> readMap(RecordPointer map, const std::string& owner);

    /// Compares what was claimed with the global map of free pages.
    void finish(RecordPointer globalMap, RecordPointer secondMap);

private:
    void claimMapRow(RecordPointer map, const std::string& owner);
    void claimBitmaps(RecordPointer map, const std::string& owner);
    void checkMapPages();
    void checkFreePages(RecordPointer globalMap);

    PageFile& file_;
    CheckLog& log_;
    std::unordered_map<PageNumber, std::string> owners_;
    std::set<std::uint32_t> mapRows_;
    std::set<PageNumber> mapPages_;
};

/// What holds for every page of rows: header, slot table, free space. `owner` is what stands at
/// offset 4.
void checkDataPage(const DataPage& page, PageBytes bytes, std::uint32_t owner, CheckLog& log);

}  // namespace stelvan::jet
