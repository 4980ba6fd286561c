#include "jet/usage_map.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "jet/data_page.h"
#include "jet/format.h"

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

PageNumber UsageMap::rangeEnd() const {
    const Bytes map = row();
    if (map[kForm] == kInline) return inlineStart(map) + static_cast<PageNumber>((map.size() - kBits) * 8);
    return static_cast<PageNumber>((map.size() - kReferences) / 4) * kPagesPerBitmap;
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

}  // namespace stelvan::jet
