#include "jet/check/check_pages.h"

#include <optional>

#include "jet/pages/fixed_pages.h"
#include "jet/pages/usage_map.h"

namespace stelvan::jet {

void checkDataPage(const DataPage& page, PageBytes bytes, std::uint32_t owner, CheckLog& log) {
    const PageNumber number = page.number();
    if (bytes[1] != kPageInUse) log.fault(number, "the second byte of a data page is not 1.");
    if (page.owner() != owner)
        log.fault(number, "a data page names another owner than the map that lists it.");
    if (page.slotCount() > data_page::kMaxSlots)
        log.fault(number, "a data page has more than 255 rows.");
    for (std::size_t i = 0; i < page.slotCount(); ++i) {
        const std::uint16_t entry = u16At(bytes, data_page::kSlots + data_page::kSlotSize * i);
        if ((entry & ~(data_page::kFlagMask | data_page::kOffsetMask)) != 0) {
            log.fault(number, "a row's slot has an unknown flag.");
        }
        static_cast<void>(page.slot(i));
    }
    if (u16At(bytes, data_page::kFree) != page.freeBytes()) {
        log.fault(number, "the free space of a data page is given as " +
                              std::to_string(u16At(bytes, data_page::kFree)) + " but is " +
                              std::to_string(page.freeBytes()) + ".");
    }
}

void PageBook::claim(PageNumber page, const std::string& owner) {
    if (page >= file_.pageCount()) {
        log_.fault(page, owner + " lies beyond the end of the file.");
        return;
    }
    const auto [known, isNew] = owners_.try_emplace(page, owner);
    if (!isNew)
        log_.fault(page, "the page belongs to two: " + known->second + " and " + owner + ".");
}

void PageBook::claimMapRow(RecordPointer map, const std::string& owner) {
    if (!mapRows_.insert(map.packed()).second) {
        log_.fault(map.page, "a usage map is used twice, once for " + owner + ".");
    }
    if (mapPages_.insert(map.page).second) claim(map.page, "a page of usage maps");
}

void PageBook::claimBitmaps(RecordPointer map, const std::string& owner) {
    const DataPage page(map.page, file_.read(map.page));
    const Bytes row = page.row(map.slot);
    if (row.empty() || row[usage_map::kForm] != usage_map::kReference) return;
    for (std::size_t at = usage_map::kReferences; at + 4 <= row.size(); at += 4) {
        const PageNumber bitmap = u32At(row, at);
        if (bitmap != 0) claim(bitmap, "a bitmap for " + owner);
    }
}

std::vector<PageNumber> PageBook::readMap(RecordPointer map, const std::string& owner) {
    std::vector<PageNumber> members;
    claimMapRow(map, owner);
    log_.attempt(map.page, [&] {
        claimBitmaps(map, owner);
        const UsageMap pages(file_, map);
        for (auto page = pages.next(0); page; page = pages.next(*page + 1)) {
            if (*page >= file_.pageCount()) {
                log_.fault(map.page, "the map of " + owner + " lists page " +
                                         std::to_string(*page) + " beyond the end of the file.");
                return;
            }
            members.push_back(*page);
        }
    });
    return members;
}

void PageBook::checkMapPages() {
    for (const PageNumber number : mapPages_) {
        log_.attempt(number, [&] {
            const PageBytes bytes = file_.read(number);
            const DataPage page(number, bytes);
            checkDataPage(page, bytes, number == kGlobalMapPage ? 1 : 0, log_);
            for (std::size_t i = 0; i < page.slotCount(); ++i) {
                const RecordPointer row{number, static_cast<std::uint8_t>(i)};
                if (!page.slot(i).deleted() && !mapRows_.contains(row.packed())) {
                    log_.note(number, "usage map " + std::to_string(i) + " belongs to nobody.");
                }
            }
        });
    }
}

// Pages that are marked used without an owner stay behind when a program ends abnormally.
void PageBook::checkFreePages(RecordPointer globalMap) {
    const UsageMap free(file_, globalMap);
    PageNumber leaked = 0;
    PageNumber firstLeaked = 0;
    std::optional<PageNumber> nextFree = free.next(0);
    for (PageNumber page = 0; page < file_.pageCount(); ++page) {
        while (nextFree && *nextFree < page) nextFree = free.next(*nextFree + 1);
        const bool isFree = nextFree == page;
        const auto owner = owners_.find(page);
        if (isFree && owner != owners_.end()) {
            log_.fault(page, "the page is marked free but belongs to " + owner->second + ".");
        } else if (!isFree && owner == owners_.end() && leaked++ == 0) {
            firstLeaked = page;
        }
    }
    if (leaked > 0) {
        log_.note(firstLeaked, std::to_string(leaked) +
                                   " pages, from this one on, are in use but belong to nobody.");
    }
}

void PageBook::finish(RecordPointer globalMap, RecordPointer secondMap) {
    claim(0, "the header");
    claimMapRow(globalMap, "the free pages");
    log_.attempt(globalMap.page, [&] { claimBitmaps(globalMap, "the free pages"); });
    if (!readMap(secondMap, "the second global map").empty()) {
        log_.fault(secondMap.page, "the second global map is not empty.");
    }
    checkMapPages();
    log_.attempt(globalMap.page, [&] { checkFreePages(globalMap); });
}

}  // namespace stelvan::jet
