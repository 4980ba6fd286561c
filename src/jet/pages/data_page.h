// A data page: rows in numbered slots, stored from the end of the page downwards.
//
// A row ends where its predecessor begins, so that every slot, even a deleted one, takes part in a
// chain of offsets that never rise with the row number. DataPage reads and checks; DataPageEditor
// changes, keeps every row at its slot, squeezes out what is erased, and keeps the free-space field
// exact.
//
//   OFFSET  SIZE  MEANING
//        0     2  01 01
//        2     2  free bytes between the slots and the lowest row
//        4     4  owner: a definition page, 0 for usage maps, "LVAL" for long values
//        8     4  stamp of a chain of long-value rows that begins here, else 0
//       12     2  number of slots n
//       14   2*n  slots: offset of the row in bits 0 to 12, 0x4000 and 0x8000 as below
//      ...        free, then row n-1, ..., row 0 up to the end of the page
//
//   FLAGS   THE SLOT IS
//   0x0000  a row
//   0x4000  a row that was moved: a record pointer to it stands here
//   0x8000  a moved row, reached through such a pointer only
//   0xC000  deleted
#pragma once

#include <cstddef>
#include <cstdint>

#include "jet/disk/bytes.h"
#include "jet/disk/page.h"
#include "jet/disk/page_file.h"

namespace stelvan::jet {

namespace data_page {
inline constexpr std::size_t kFree = 2;
inline constexpr std::size_t kOwner = 4;  // definition page; 0: usage maps; kLongValueOwner
inline constexpr std::size_t kStamp = 8;  // of a chain of long-value rows that begins here
inline constexpr std::size_t kSlotCount = 12;
inline constexpr std::size_t kSlots = 14;
inline constexpr std::size_t kSlotSize = 2;
inline constexpr std::size_t kMaxSlots = 255;
inline constexpr std::uint16_t kOffsetMask = 0x1FFF;
inline constexpr std::uint16_t kPointer =
    0x4000;  // the row is elsewhere, a record pointer stands here
inline constexpr std::uint16_t kHidden = 0x8000;  // reached through a pointer only
inline constexpr std::uint16_t kDeleted = 0xC000;
inline constexpr std::uint16_t kFlagMask = 0xC000;
inline constexpr std::uint32_t kLongValueOwner = 0x4C41564C;  // "LVAL"
inline constexpr std::size_t kEmptyFree = kPageSize - kSlots;
}  // namespace data_page

struct Slot {
    std::uint16_t offset = 0;
    std::uint16_t length = 0;
    std::uint16_t flags = 0;

    [[nodiscard]] bool deleted() const { return flags == data_page::kDeleted; }
    [[nodiscard]] bool pointer() const { return flags == data_page::kPointer; }
    [[nodiscard]] bool hidden() const { return (flags & data_page::kHidden) != 0; }
};

class DataPage {
public:
    /// Throws Corrupt unless `bytes` are a data page whose slot table fits.
    DataPage(PageNumber number, PageBytes bytes);

    [[nodiscard]] PageNumber number() const { return number_; }
    [[nodiscard]] std::uint32_t owner() const { return u32At(bytes_, data_page::kOwner); }
    [[nodiscard]] std::uint32_t stamp() const { return u32At(bytes_, data_page::kStamp); }
    [[nodiscard]] std::size_t slotCount() const { return slots_; }
    /// Bytes between the slot table and the lowest row, counted, not as the field says.
    [[nodiscard]] std::size_t freeBytes() const { return lowest() - tableEnd(); }
    /// Whether a row of `length` bytes can take a new slot.
    [[nodiscard]] bool fits(std::size_t length) const {
        return slots_ < data_page::kMaxSlots && freeBytes() >= length + data_page::kSlotSize;
    }
    /// Whether every slot is deleted.
    [[nodiscard]] bool empty() const;

    /// Throws Corrupt for a slot that does not exist or whose row leaves the row area.
    [[nodiscard]] Slot slot(std::size_t index) const;
    [[nodiscard]] Bytes row(const Slot& slot) const {
        return bytes_.subspan(slot.offset, slot.length);
    }
    [[nodiscard]] Bytes row(std::size_t index) const { return row(slot(index)); }

private:
    [[nodiscard]] std::size_t start(std::size_t index) const;
    [[nodiscard]] std::size_t tableEnd() const {
        return data_page::kSlots + data_page::kSlotSize * slots_;
    }
    [[nodiscard]] std::size_t lowest() const;

    PageNumber number_;
    PageBytes bytes_;
    std::size_t slots_;
};

/// A data page that must belong to its owner. Throws Corrupt.
[[nodiscard]] DataPage readOwnedPage(PageFile& file, PageNumber number, std::uint32_t owner);

class DataPageEditor {
public:
    DataPageEditor(PageNumber number, WritablePageBytes bytes) : number_(number), bytes_(bytes) {}

    /// Makes an empty data page of these bytes, whatever they held.
    static void format(WritablePageBytes bytes, std::uint32_t owner);

    [[nodiscard]] DataPage page() const { return {number_, bytes_}; }

    /// Adds a row in a new slot and gives the slot. The row must fit (Misuse).
    std::uint8_t append(Bytes row, std::uint16_t flags = 0);
    /// Gives a slot other content; the rows after it move, their slots stay. Must fit (Misuse).
    void replace(std::size_t index, Bytes row, std::uint16_t flags);
    /// Changes the length of a row, keeping the bytes that both lengths share. Must fit (Misuse).
    WritableBytes resize(std::size_t index, std::size_t length);
    /// Marks a slot deleted and squeezes its bytes out.
    void erase(std::size_t index);

private:
    void writeFree();

    PageNumber number_;
    WritablePageBytes bytes_;
};

}  // namespace stelvan::jet
