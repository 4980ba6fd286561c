#include "jet/pages/usage_map.h"

#include <algorithm>
#include <bit>
#include <vector>

#include "jet/pages/data_page.h"

namespace stelvan::jet {

using namespace usage_map;

namespace {

// The first set bit at or after `from`, least significant bit of each byte first.
std::optional<std::size_t> nextBit(Bytes bits, std::size_t from) {
    for (std::size_t at = from; at < bits.size() * 8;) {
        const std::size_t byte = at / 8;
        if (at % 8 == 0 && bits.size() - byte >= sizeof(std::uint64_t)) {
            const auto word = loadAt<std::uint64_t>(bits, byte);
            if (word != 0) return at + static_cast<std::size_t>(std::countr_zero(word));
            at += 64;
            continue;
        }
        const unsigned rest = static_cast<unsigned>(bits[byte]) >> (at % 8);
        if (rest != 0) return at + static_cast<std::size_t>(std::countr_zero(rest));
        at = (byte + 1) * 8;
    }
    return std::nullopt;
}

PageNumber inlineStart(Bytes map) {
    return u32At(map, kStart);
}

}  // namespace

Bytes readBitmapPage(PageFile& file, PageNumber page) {
    const PageBytes bytes = file.read(page);
    if (bytes[0] != static_cast<std::uint8_t>(PageType::UsageBitmap)) {
        throwCorrupt(page, "it is not a bitmap of used pages.");
    }
    return bytes.subspan(kBitmapHeader);
}

Bytes UsageMap::row() const {
    const DataPage page(where_.page, file_->read(where_.page));
    const Slot slot = page.slot(where_.slot);
    if (slot.flags != 0) throwCorrupt(where_.page, "a usage map was deleted.");
    const Bytes map = page.row(slot);
    if (map.size() < kBits) throwCorrupt(where_.page, "a usage map is too short.");
    if (map[kForm] != kInline && map[kForm] != kReference)
        throwCorrupt(where_.page, "a usage map of unknown form.");
    if (map[kForm] == kInline && inlineStart(map) > kMaxPages) {
        throwCorrupt(where_.page, "a usage map begins beyond any file.");
    }
    return map;
}

bool UsageMap::contains(PageNumber page) const {
    return next(page) == page;
}

bool UsageMap::isReference() const {
    return row()[kForm] == kReference;
}

PageNumber UsageMap::rangeEnd() const {
    const Bytes map = row();
    if (map[kForm] == kInline)
        return inlineStart(map) + static_cast<PageNumber>((map.size() - kBits) * 8);
    for (std::size_t i = (map.size() - kReferences) / 4; i > 0; --i) {
        if (u32At(map, kReferences + 4 * (i - 1)) != 0)
            return static_cast<PageNumber>(i) * kPagesPerBitmap;
    }
    return 0;
}

std::vector<PageNumber> UsageMap::bitmapPages() const {
    std::vector<PageNumber> pages;
    const Bytes map = row();
    if (map[kForm] == kInline) return pages;
    for (std::size_t i = 0; i < (map.size() - kReferences) / 4; ++i) {
        const PageNumber page = u32At(map, kReferences + 4 * i);
        if (page != 0) pages.push_back(page);
    }
    return pages;
}

std::string UsageMap::checkInvariants() const {
    const Bytes map = row();
    if (map[kForm] == kInline)
        return inlineStart(map) % 8 == 0 ? "" : "its bits do not begin at a multiple of 8";
    std::vector<PageNumber> pages = bitmapPages();
    std::ranges::sort(pages);
    for (const PageNumber page : pages) {
        if (page >= file_->pageCount() ||
            file_->read(page)[0] != static_cast<std::uint8_t>(PageType::UsageBitmap))
            return "page " + std::to_string(page) + " holds no bits";
    }
    const bool twice = std::ranges::adjacent_find(pages) != pages.end();
    return twice ? "a page of bits is referred to twice" : "";
}

std::optional<PageNumber> UsageMap::next(PageNumber from) const {
    const Bytes map = row();
    if (map[kForm] == kReference) return nextReferenced(map, from);
    const PageNumber start = inlineStart(map);
    const auto bit = nextBit(map.subspan(kBits), from > start ? from - start : 0);
    if (!bit) return std::nullopt;
    return start + static_cast<PageNumber>(*bit);
}

std::optional<PageNumber> UsageMap::nextReferenced(Bytes map, PageNumber from) const {
    const std::size_t count = (map.size() - kReferences) / 4;
    for (std::size_t i = from / kPagesPerBitmap; i < count; ++i) {
        const PageNumber page = u32At(map, kReferences + 4 * i);
        if (page == 0) continue;
        const PageNumber start = static_cast<PageNumber>(i) * kPagesPerBitmap;
        const auto bit = nextBit(readBitmapPage(*file_, page), from > start ? from - start : 0);
        if (bit) return start + static_cast<PageNumber>(*bit);
    }
    return std::nullopt;
}

namespace {

void setBit(WritableBytes bits, std::size_t bit, bool value) {
    const auto mask = static_cast<std::uint8_t>(1u << (bit % 8));
    std::uint8_t& byte = bits[bit / 8];
    byte = static_cast<std::uint8_t>(value ? byte | mask : byte & ~mask);
}

WritableBytes editBitmapPage(PageFile& file, PageNumber page) {
    static_cast<void>(readBitmapPage(file, page));
    return WritableBytes(file.edit(page)).subspan(kBitmapHeader);
}

void formatBitmapPage(WritablePageBytes bytes) {
    std::ranges::fill(bytes, std::uint8_t{0});
    bytes[0] = static_cast<std::uint8_t>(PageType::UsageBitmap);
    bytes[1] = kPageInUse;
}

}  // namespace

WritableBytes UsageMapEditor::editRow() {
    const Bytes map = row();
    const PageBytes page = file().read(where().page);
    const auto offset = static_cast<std::size_t>(map.data() - page.data());
    return WritableBytes(file().edit(where().page)).subspan(offset, map.size());
}

bool UsageMapEditor::covers(PageNumber page) const {
    const Bytes map = row();
    if (map[kForm] == kReference) {
        const std::size_t entry = page / kPagesPerBitmap;
        return entry < (map.size() - kReferences) / 4 && u32At(map, kReferences + 4 * entry) != 0;
    }
    return page >= inlineStart(map) && page - inlineStart(map) < (map.size() - kBits) * 8;
}

void UsageMapEditor::add(PageNumber page, BitmapPageSource& source) {
    if (row()[kForm] == kReference) return addReferenced(page, source);
    if (!covers(page) && !moveWindow(page)) {
        makeReference(source);
        return addReferenced(page, source);
    }
    const WritableBytes map = editRow();
    setBit(map.subspan(kBits), page - inlineStart(map), true);
}

void UsageMapEditor::addReferenced(PageNumber page, BitmapPageSource& source) {
    const std::size_t entry = page / kPagesPerBitmap;
    if (entry >= (row().size() - kReferences) / 4) {
        const std::size_t missing = kReferences + 4 * (entry + 1) - row().size();
        if (!lengthen(missing, 0))
            throw Error(ErrorKind::DiskFull, "A map of used pages cannot grow.", where().page);
    }
    PageNumber bitmap = u32At(row(), kReferences + 4 * entry);
    if (bitmap == 0) {
        bitmap = source.takeBitmapPage();
        formatBitmapPage(file().edit(bitmap));
        putU32(editRow(), kReferences + 4 * entry, bitmap);
    }
    setBit(editBitmapPage(file(), bitmap), page % kPagesPerBitmap, true);
}

void UsageMapEditor::remove(PageNumber page) {
    if (!contains(page)) return;
    const Bytes map = row();
    if (map[kForm] == kReference) {
        const PageNumber bitmap = u32At(map, kReferences + 4 * (page / kPagesPerBitmap));
        setBit(editBitmapPage(file(), bitmap), page % kPagesPerBitmap, false);
        return;
    }
    const WritableBytes changed = editRow();
    setBit(changed.subspan(kBits), page - inlineStart(changed), false);
}

bool UsageMapEditor::moveWindow(PageNumber page) {
    const auto width = static_cast<PageNumber>((row().size() - kBits) * 8);
    PageNumber low = page;
    PageNumber high = page;
    std::vector<PageNumber> members;
    for (auto member = next(0); member; member = next(*member + 1)) {
        members.push_back(*member);
        low = std::min(low, *member);
        high = std::max(high, *member);
    }
    const PageNumber start = low & ~PageNumber{7};
    if (high - start >= width) return false;
    const WritableBytes map = editRow();
    std::ranges::fill(map.subspan(kBits), std::uint8_t{0});
    putU32(map, kStart, start);
    for (const PageNumber member : members) setBit(map.subspan(kBits), member - start, true);
    return true;
}

void UsageMapEditor::makeReference(BitmapPageSource& source) {
    if (row()[kForm] == kReference) return;
    std::vector<PageNumber> members;
    for (auto member = next(0); member; member = next(*member + 1)) members.push_back(*member);
    const WritableBytes map = editRow();
    std::ranges::fill(map, std::uint8_t{0});
    map[kForm] = kReference;
    for (const PageNumber member : members) addReferenced(member, source);
}

bool UsageMapEditor::lengthen(std::size_t bytes, std::uint8_t fill) {
    const DataPage page(where().page, file().read(where().page));
    if (page.freeBytes() < bytes) return false;
    const std::size_t before = page.slot(where().slot).length;
    const WritableBytes map = DataPageEditor(where().page, file().edit(where().page))
                                  .resize(where().slot, before + bytes);
    std::ranges::fill(map.subspan(before), fill);
    return true;
}

}  // namespace stelvan::jet
