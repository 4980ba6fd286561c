#include "jet/index/index_page.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace stelvan::jet {

namespace {

constexpr std::size_t kWordBits = 64;

std::uint64_t loadWord(const std::uint8_t* at) {
    std::uint64_t word = 0;
    std::memcpy(&word, at, sizeof word);
    return word;
}

// How many bits are set in each 16 of a word, side by side: sums over a whole page still fit, and
// processors that have no instruction for it do several words at a time.
std::uint64_t onesInQuarters(std::uint64_t word) {
    word -= word >> 1 & 0x5555'5555'5555'5555;
    word = (word & 0x3333'3333'3333'3333) + (word >> 2 & 0x3333'3333'3333'3333);
    word = (word + (word >> 4)) & 0x0F0F'0F0F'0F0F'0F0F;
    return (word & 0x00FF'00FF'00FF'00FF) + (word >> 8 & 0x00FF'00FF'00FF'00FF);
}

std::uint64_t sumOfQuarters(std::uint64_t quarters) {
    return (quarters & 0xFFFF) + (quarters >> 16 & 0xFFFF) + (quarters >> 32 & 0xFFFF) +
           (quarters >> 48);
}

}  // namespace

void makeEntry(Bytes key, RowId row, EntryBytes& entry) {
    entry.resize(key.size() + index_page::kRowPointer);
    std::ranges::copy(key, entry.begin());
    putU32(entry, key.size(), __builtin_bswap32(row.page << 8 | row.slot));
}

RowId rowOfEntry(Bytes entry) {
    if (entry.size() < index_page::kRowPointer) throwBeyondEnd();
    const std::size_t at = entry.size() - index_page::kRowPointer;
    return {bigU24At(entry, at), entry[at + 3]};
}

std::size_t sharedSize(Bytes a, Bytes b) {
    return static_cast<std::size_t>(std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first -
                                    a.begin());
}

// Eight bytes at a time, the last eight perhaps a second time: most keys are short, and differ
// early or late.
int compareBytes(Bytes a, Bytes b) {
    constexpr std::size_t kStep = sizeof(std::uint64_t);
    const std::size_t shared = std::min(a.size(), b.size());
    const auto bigWord = [](const std::uint8_t* at) { return __builtin_bswap64(loadWord(at)); };
    if (shared >= kStep) {
        for (std::size_t at = 0; at < shared; at += kStep) {
            const std::size_t from = std::min(at, shared - kStep);
            const std::uint64_t wordA = bigWord(a.data() + from);
            const std::uint64_t wordB = bigWord(b.data() + from);
            if (wordA != wordB) return wordA < wordB ? -1 : 1;
        }
    } else {
        for (std::size_t at = 0; at < shared; ++at) {
            if (a[at] != b[at]) return a[at] < b[at] ? -1 : 1;
        }
    }
    return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
}

IndexPage::IndexPage(PageBytes bytes, PageNumber number, PageNumber definition)
    : bytes_(bytes), number_(number) {
    const auto type = static_cast<PageType>(u8At(bytes_, 0));
    leaf_ = type == PageType::IndexLeaf;
    if (!leaf_ && type != PageType::IndexNode) damaged("it should be a page of an index.");
    if (u32At(bytes_, index_page::kDefinition) != definition)
        damaged("it is an index page of another table.");
    const std::size_t free = u16At(bytes_, index_page::kFree);
    if (free > index_page::kEntriesSize) damaged("its free space is larger than the page.");
    end_ = index_page::kEntriesSize - free;
    prefix_ = u16At(bytes_, index_page::kPrefix);
    if (end_ == 0) {
        prefix_ = 0;
        return;
    }
    const bool marked = (maskWord(end_ / kWordBits) >> (end_ % kWordBits) & 1) != 0;
    if (!marked) damaged("its last entry does not end where its free space begins.");
    if (prefix_ != 0 && prefix_ > endOf(0))
        damaged("its entries share more bytes than the first one has.");
}

// Positions are below the size of the entry area, so that the word lies within the page.
inline std::uint64_t IndexPage::maskWord(std::size_t word) const {
    return loadWord(bytes_.data() + index_page::kMask + word * sizeof(std::uint64_t));
}

std::size_t IndexPage::endOf(std::size_t start) const {
    const std::size_t from = start + 1;
    std::size_t word = from / kWordBits;
    std::uint64_t bits = maskWord(word) >> (from % kWordBits) << (from % kWordBits);
    while (bits == 0 && (word + 1) * kWordBits <= end_) bits = maskWord(++word);
    const std::size_t end = word * kWordBits + static_cast<std::size_t>(std::countr_zero(bits));
    if (bits == 0 || end > end_) damaged("an entry of its index has no end.");
    return end;
}

std::size_t IndexPage::startOf(std::size_t within) const {
    std::size_t word = within / kWordBits;
    const std::size_t above = kWordBits - 1 - within % kWordBits;
    std::uint64_t bits = maskWord(word) << above >> above;
    while (bits == 0 && word > 0) bits = maskWord(--word);
    if (bits == 0) return 0;
    return word * kWordBits + kWordBits - 1 - static_cast<std::size_t>(std::countl_zero(bits));
}

std::size_t IndexPage::entryCount() const {
    if (empty()) return 0;
    std::uint64_t quarters = 0;
    for (std::size_t word = 0; word < end_ / kWordBits; ++word)
        quarters += onesInQuarters(maskWord(word));
    const std::uint64_t upToEnd = maskWord(end_ / kWordBits) << (kWordBits - 1 - end_ % kWordBits);
    return static_cast<std::size_t>(sumOfQuarters(quarters + onesInQuarters(upToEnd)));
}

Bytes IndexPage::stored(std::size_t start) const {
    return entryArea().subspan(start, endOf(start) - start);
}

void IndexPage::appendEntry(std::size_t start, EntryBytes& entries) const {
    const Bytes bytes = stored(start);
    const Bytes shared = start == 0 ? Bytes() : sharedPrefix();
    const std::size_t least = index_page::kRowPointer + (leaf_ ? 0 : index_page::kChild);
    if (shared.size() + bytes.size() < least) damaged("an entry of its index is too short.");
    entries.insert(entries.end(), shared.begin(), shared.end());
    entries.insert(entries.end(), bytes.begin(), bytes.end());
}

PageNumber IndexPage::child(std::size_t start) const {
    if (start == end_) return tail();
    const Bytes bytes = stored(start);
    if (bytes.size() < index_page::kChild) damaged("an entry of its index is too short.");
    return bigU32At(bytes, bytes.size() - index_page::kChild);
}

// Key and row pointer of an entry from behind the prefix on.
Bytes IndexPage::storedKey(std::size_t start, std::size_t end) const {
    const std::size_t from = start == 0 ? prefix_ : start;
    const std::size_t behind = leaf_ ? 0 : index_page::kChild;
    if (end - from < behind) damaged("an entry of its index is too short.");
    return entryArea().subspan(from, end - from - behind);
}

bool IndexPage::hasKey(std::size_t start, Bytes key) const {
    const Bytes bytes = stored(start);
    const std::size_t apart = start == 0 ? 0 : prefix_;
    if (apart + bytes.size() != key.size() + index_page::kRowPointer || apart > key.size())
        return false;
    return std::equal(key.begin(), key.begin() + static_cast<std::ptrdiff_t>(apart),
                      entryArea().begin()) &&
           std::equal(key.begin() + static_cast<std::ptrdiff_t>(apart), key.end(), bytes.begin());
}

int IndexPage::compareWith(Bytes wanted, std::size_t start) const {
    const Bytes shared = sharedPrefix();
    const int order = compareBytes(wanted.first(std::min(wanted.size(), prefix_)), shared);
    if (order != 0) return order;
    return compareBytes(wanted.subspan(prefix_), storedKey(start, endOf(start)));
}

std::size_t IndexPage::lowerBound(Bytes wanted) const {
    const int order = compareBytes(wanted.first(std::min(wanted.size(), prefix_)), sharedPrefix());
    if (order != 0) return order < 0 ? 0 : end_;
    if (empty()) return 0;
    const Bytes rest = wanted.subspan(prefix_);
    // Numbers that are given out one after the other always go behind the last.
    const std::size_t last = lastStart();
    if (compareBytes(storedKey(last, end_), rest) < 0) return end_;
    std::size_t low = 0;
    std::size_t high = last;
    while (low < high) {
        const std::size_t start = startOf(low + (high - low) / 2);
        const std::size_t end = endOf(start);
        if (compareBytes(storedKey(start, end), rest) < 0) {
            low = end;
        } else {
            high = start;
        }
    }
    return low;
}

}  // namespace stelvan::jet
