#include "jet/index/index_page_editor.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace stelvan::jet {

namespace {

constexpr std::size_t kWordBits = 64;
constexpr std::size_t kWords = (index_page::kMaskSize * 8 + kWordBits - 1) / kWordBits;

// The bits of positions above `position` in the word that begins at bit `wordStart`.
std::uint64_t above(std::size_t position, std::size_t wordStart) {
    if (position < wordStart) return ~std::uint64_t{0};
    const std::size_t first = position + 1 - wordStart;
    return first >= kWordBits ? 0 : ~std::uint64_t{0} << first;
}

// The mask of a page taken out of it: bit b says that an entry ends at position b.
class EntryMask {
public:
    explicit EntryMask(WritablePageBytes page) : page_(page) {
        std::memcpy(words_.data(), page_.data() + index_page::kMask, index_page::kMaskSize);
    }
    ~EntryMask() {
        std::memcpy(page_.data() + index_page::kMask, words_.data(), index_page::kMaskSize);
    }
    EntryMask(const EntryMask&) = delete;
    EntryMask& operator=(const EntryMask&) = delete;

    void clear() { words_.fill(0); }
    void set(std::size_t position) {
        words_[position / kWordBits] |= std::uint64_t{1} << (position % kWordBits);
    }

    /// Ends behind `position` move up by `size`; none is behind `end`.
    void open(std::size_t position, std::size_t size, std::size_t end) {
        const std::size_t first = position / kWordBits;
        const std::size_t whole = size / kWordBits;
        const std::size_t rest = size % kWordBits;
        const std::uint64_t before = words_[first] & ~above(position, first * kWordBits);
        words_[first] ^= before;
        for (std::size_t word = (end + size) / kWordBits + 1; word-- > first;) {
            const std::uint64_t high = word >= first + whole ? words_[word - whole] : 0;
            const std::uint64_t low = word > first + whole ? words_[word - whole - 1] : 0;
            words_[word] = rest == 0 ? high : high << rest | low >> (kWordBits - rest);
        }
        words_[first] |= before;
    }

    /// Ends behind `position` and up to `size` bytes further vanish; those behind
    /// move down by `size`. None is behind `end`.
    void close(std::size_t position, std::size_t size, std::size_t end) {
        for (std::size_t word = position / kWordBits; word <= end / kWordBits; ++word) {
            const std::size_t start = word * kWordBits;
            const std::uint64_t behind = above(position, start);
            words_[word] = (words_[word] & ~behind) | (bitsFrom(start + size) & behind);
        }
    }

private:
    // 64 bits from bit `start` on.
    [[nodiscard]] std::uint64_t bitsFrom(std::size_t start) const {
        const std::size_t word = start / kWordBits;
        const std::size_t shift = start % kWordBits;
        if (word >= kWords) return 0;
        std::uint64_t bits = words_[word] >> shift;
        if (shift != 0 && word + 1 < kWords) bits |= words_[word + 1] << (kWordBits - shift);
        return bits;
    }

    WritablePageBytes page_;
    std::array<std::uint64_t, kWords> words_{};
};

}  // namespace

EntryList::EntryList(const IndexPage& page) {
    constexpr std::size_t kUsualEntries = 128;
    bytes_.reserve(2 * index_page::kEntriesSize);
    starts_.reserve(kUsualEntries);
    positions_.reserve(kUsualEntries);
    for (std::size_t start = 0; start < page.end(); start = page.endOf(start))
        positions_.push_back(start);
    positions_.push_back(page.end());
    append(page);
}

void EntryList::append(const IndexPage& page) {
    for (std::size_t start = 0; start < page.end(); start = page.endOf(start)) {
        page.appendEntry(start, bytes_);
        starts_.push_back(bytes_.size());
    }
}

std::size_t EntryList::indexOf(std::size_t position) const {
    return static_cast<std::size_t>(
        std::lower_bound(positions_.begin(), positions_.end(), position) - positions_.begin());
}

void EntryList::insert(std::size_t index, Bytes entry) {
    bytes_.insert(bytes_.begin() + static_cast<std::ptrdiff_t>(starts_[index]), entry.begin(),
                  entry.end());
    starts_.insert(starts_.begin() + static_cast<std::ptrdiff_t>(index), starts_[index]);
    for (std::size_t i = index + 1; i < starts_.size(); ++i) starts_[i] += entry.size();
}

// Entries ascend, so that what the first and the last share is shared by all between them.
std::size_t EntryList::sharedKey(std::size_t first, std::size_t last, std::size_t behind) const {
    if (last - first < 2) return 0;
    const Bytes low = (*this)[first];
    const Bytes high = (*this)[last - 1];
    return sharedSize(low.first(low.size() - behind), high.first(high.size() - behind));
}

std::size_t EntryList::sizeWith(std::size_t prefix, std::size_t first, std::size_t last) const {
    if (first == last) return 0;
    return starts_[last] - starts_[first] - prefix * (last - first - 1);
}

void IndexPageEditor::format(WritablePageBytes bytes, PageNumber definition, std::uint8_t level) {
    std::fill(bytes.begin(), bytes.end(), std::uint8_t{0});
    putU8(bytes, 0,
          static_cast<std::uint8_t>(level == 0 ? PageType::IndexLeaf : PageType::IndexNode));
    putU8(bytes, 1, kPageInUse);
    putU16(bytes, index_page::kFree, index_page::kEntriesSize);
    putU32(bytes, index_page::kDefinition, definition);
    putU8(bytes, index_page::kLevel, level);
}

std::size_t IndexPageEditor::bytesBehindKey() const {
    return index_page::kRowPointer + (page().isLeaf() ? 0 : index_page::kChild);
}

void IndexPageEditor::setEnd(std::size_t end) {
    putU16(bytes_, index_page::kFree, static_cast<std::uint16_t>(index_page::kEntriesSize - end));
}

bool IndexPageEditor::insert(std::size_t start, Bytes entry) {
    const IndexPage now = page();
    const std::size_t end = now.end();
    const std::size_t prefix = now.prefixSize();
    const WritableBytes area = entryArea();
    if (entry.size() < prefix + bytesBehindKey()) return false;
    if (!std::equal(entry.begin(), entry.begin() + static_cast<std::ptrdiff_t>(prefix),
                    area.begin())) {
        return false;
    }
    const Bytes rest = entry.subspan(prefix);
    if (end + rest.size() > index_page::kEntriesSize) return false;
    // The first entry keeps the prefix in front: a new first one takes it over from its successor.
    const std::size_t at = start == 0 ? prefix : start;
    if (end == 0) setPrefix(0);
    std::memmove(area.data() + at + rest.size(), area.data() + at, end - at);
    std::memcpy(area.data() + at, rest.data(), rest.size());
    EntryMask mask(bytes_);
    mask.open(at, rest.size(), end);
    mask.set(at + rest.size());
    setEnd(end + rest.size());
    return true;
}

void IndexPageEditor::erase(std::size_t start) {
    const IndexPage now = page();
    const std::size_t end = now.end();
    const std::size_t entryEnd = now.endOf(start);
    EntryMask mask(bytes_);
    if (start == 0 && entryEnd == end) {
        mask.clear();
        setPrefix(0);
        setEnd(0);
        return;
    }
    // The prefix stays: the successor of the first entry needs it in front.
    const std::size_t at = start == 0 ? now.prefixSize() : start;
    const WritableBytes area = entryArea();
    std::memmove(area.data() + at, area.data() + entryEnd, end - entryEnd);
    mask.close(at, entryEnd - at, end);
    setEnd(end - (entryEnd - at));
}

bool IndexPageEditor::rebuild(const EntryList& entries, std::size_t first, std::size_t last) {
    std::size_t prefix = 0;
    if (entries.sizeWith(0, first, last) > index_page::kEntriesSize) {
        prefix = entries.sharedKey(first, last, bytesBehindKey());
        if (entries.sizeWith(prefix, first, last) > index_page::kEntriesSize) return false;
    }
    EntryMask mask(bytes_);
    mask.clear();
    const WritableBytes area = entryArea();
    std::size_t end = 0;
    for (std::size_t i = first; i < last; ++i) {
        const Bytes rest = entries[i].subspan(i == first ? 0 : prefix);
        std::copy(rest.begin(), rest.end(), area.begin() + static_cast<std::ptrdiff_t>(end));
        end += rest.size();
        mask.set(end);
    }
    setPrefix(prefix);
    setEnd(end);
    return true;
}

}  // namespace stelvan::jet
