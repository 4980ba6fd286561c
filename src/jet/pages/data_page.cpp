#include "jet/pages/data_page.h"

#include <algorithm>
#include <cstring>

namespace stelvan::jet {

using namespace data_page;

DataPage::DataPage(PageNumber number, PageBytes bytes) : number_(number), bytes_(bytes), slots_(0) {
    if (bytes[0] != static_cast<std::uint8_t>(PageType::Data))
        throwCorrupt(number, "it is not a data page.");
    slots_ = u16At(bytes, kSlotCount);
    if (slots_ > kMaxSlots + 1 || tableEnd() > lowest()) {
        throwCorrupt(number, "it claims " + std::to_string(slots_) + " rows.");
    }
}

std::size_t DataPage::start(std::size_t index) const {
    return u16At(bytes_, kSlots + kSlotSize * index) & kOffsetMask;
}

std::size_t DataPage::lowest() const {
    // A slot table that is too long is found by the constructor before this reads behind the page.
    if (slots_ == 0) return kPageSize;
    return std::min(start(slots_ - 1), kPageSize);
}

bool DataPage::empty() const {
    for (std::size_t i = 0; i < slots_; ++i) {
        if (!slot(i).deleted()) return false;
    }
    return true;
}

Slot DataPage::slot(std::size_t index) const {
    if (index >= slots_) throwCorrupt(number_, "it has no row " + std::to_string(index) + ".");
    const std::uint16_t entry = u16At(bytes_, kSlots + kSlotSize * index);
    const std::size_t begin = entry & kOffsetMask;
    const std::size_t end = index == 0 ? kPageSize : start(index - 1);
    if (begin > end || end > kPageSize || begin < tableEnd()) {
        throwCorrupt(number_, "row " + std::to_string(index) + " does not lie within the page.");
    }
    return {static_cast<std::uint16_t>(begin), static_cast<std::uint16_t>(end - begin),
            static_cast<std::uint16_t>(entry & kFlagMask)};
}

void DataPageEditor::format(WritablePageBytes bytes, std::uint32_t owner) {
    std::ranges::fill(bytes, std::uint8_t{0});
    bytes[0] = static_cast<std::uint8_t>(PageType::Data);
    bytes[1] = kPageInUse;
    putU16(bytes, kFree, static_cast<std::uint16_t>(kEmptyFree));
    putU32(bytes, kOwner, owner);
}

void DataPageEditor::writeFree() {
    putU16(bytes_, kFree, static_cast<std::uint16_t>(page().freeBytes()));
}

std::uint8_t DataPageEditor::append(Bytes row, std::uint16_t flags) {
    const DataPage before = page();
    if (!before.fits(row.size()))
        throw Error(ErrorKind::Misuse, "The row does not fit its page.", number_);
    const std::size_t index = before.slotCount();
    const std::size_t end = index == 0 ? kPageSize : before.slot(index - 1).offset;
    const std::size_t begin = end - row.size();
    std::ranges::copy(row, bytes_.begin() + static_cast<std::ptrdiff_t>(begin));
    putU16(bytes_, kSlots + kSlotSize * index, static_cast<std::uint16_t>(begin | flags));
    putU16(bytes_, kSlotCount, static_cast<std::uint16_t>(index + 1));
    writeFree();
    return static_cast<std::uint8_t>(index);
}

WritableBytes DataPageEditor::resize(std::size_t index, std::size_t length) {
    const DataPage before = page();
    const Slot old = before.slot(index);
    if (length > old.length + before.freeBytes()) {
        throw Error(ErrorKind::Misuse, "The longer row does not fit its page.", number_);
    }
    const std::size_t end = static_cast<std::size_t>(old.offset) + old.length;
    const std::size_t begin = end - length;
    if (length != old.length) {
        const std::size_t lowest = before.slot(before.slotCount() - 1).offset;
        // Rows keep their first bytes, so the row's own bytes move together with those below it.
        const std::size_t kept = std::min<std::size_t>(length, old.length);
        const std::size_t moved = old.offset + kept - lowest;
        const std::size_t target = lowest + old.length - length;
        std::memmove(bytes_.data() + target, bytes_.data() + lowest, moved);
        for (std::size_t i = index; i < before.slotCount(); ++i) {
            const std::uint16_t entry = u16At(bytes_, kSlots + kSlotSize * i);
            const std::size_t offset = (entry & kOffsetMask) + old.length - length;
            putU16(bytes_, kSlots + kSlotSize * i,
                   static_cast<std::uint16_t>(offset | (entry & kFlagMask)));
        }
        if (length > kept) std::memset(bytes_.data() + begin + kept, 0, length - kept);
        if (target > lowest) std::memset(bytes_.data() + lowest, 0, target - lowest);
        writeFree();
    }
    return bytesAt(WritableBytes(bytes_), begin, length);
}

void DataPageEditor::replace(std::size_t index, Bytes row, std::uint16_t flags) {
    std::ranges::copy(row, resize(index, row.size()).begin());
    const std::uint16_t entry = u16At(bytes_, kSlots + kSlotSize * index);
    putU16(bytes_, kSlots + kSlotSize * index,
           static_cast<std::uint16_t>((entry & kOffsetMask) | flags));
}

void DataPageEditor::erase(std::size_t index) {
    resize(index, 0);
    const std::uint16_t entry = u16At(bytes_, kSlots + kSlotSize * index);
    putU16(bytes_, kSlots + kSlotSize * index, static_cast<std::uint16_t>(entry | kDeleted));
}

DataPage readOwnedPage(PageFile& file, PageNumber number, std::uint32_t owner) {
    const DataPage page(number, file.read(number));
    if (page.owner() != owner)
        throwCorrupt(number, "it does not belong to the table that lists it.");
    return page;
}

}  // namespace stelvan::jet
