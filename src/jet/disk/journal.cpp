#include "jet/disk/journal.h"

#include <algorithm>
#include <array>
#include <random>

#include "jet/disk/bytes.h"

namespace stelvan::jet {

namespace {

// Layout: a head of whole pages (the fields below, the page numbers, zeros), then the images.
constexpr std::uint64_t kMagic = 0x314C4E524A565453;  // "STVJRNL1"
constexpr std::size_t kMagicAt = 0;
constexpr std::size_t kChecksumAt = 8;
constexpr std::size_t kSaltAt = 16;
constexpr std::size_t kSizeBeforeAt = 24;
constexpr std::size_t kCountAt = 32;
constexpr std::size_t kSlotAfterAt = 36;
constexpr std::size_t kSlotsBeforeAt = 40;
constexpr std::size_t kPagesAt = kSlotsBeforeAt + sizeof(CommitSlots);
constexpr std::size_t kCheckedFrom = kSaltAt;

/// A running checksum over whole 8-byte words; every single changed word changes it.
class Checksum {
public:
    void add(Bytes bytes) {
        for (std::size_t i = 0; i + sizeof(std::uint64_t) <= bytes.size();
             i += sizeof(std::uint64_t)) {
            std::uint64_t word = 0;
            std::memcpy(&word, bytes.data() + i, sizeof word);
            value_ = (value_ ^ word) * 0x9E3779B97F4A7C15;
            value_ ^= value_ >> 29;
        }
    }
    [[nodiscard]] std::uint64_t value() const { return value_; }

private:
    std::uint64_t value_ = 0x6A09E667F3BCC908;
};

constexpr std::size_t headSize(std::size_t pages) {
    return (kPagesAt + pages * sizeof(PageNumber) + kPageSize - 1) / kPageSize * kPageSize;
}

std::vector<std::uint8_t> makeHead(const Journal::Facts& facts,
                                   std::span<const Journal::Image> images) {
    std::vector<std::uint8_t> head(headSize(images.size()));
    storeAt<std::uint64_t>(head, kMagicAt, kMagic);
    std::random_device random;
    storeAt<std::uint64_t>(head, kSaltAt, static_cast<std::uint64_t>(random()) << 32 | random());
    storeAt<std::uint64_t>(head, kSizeBeforeAt, facts.sizeBefore);
    std::ranges::copy(facts.slotsBefore, head.begin() + kSlotsBeforeAt);
    putU16(head, kSlotAfterAt, facts.slotAfter);
    putU32(head, kCountAt, static_cast<std::uint32_t>(images.size()));
    for (std::size_t i = 0; i < images.size(); ++i)
        putU32(head, kPagesAt + i * sizeof(PageNumber), images[i].page);
    Checksum sum;
    sum.add(Bytes(head).subspan(kCheckedFrom));
    for (const Journal::Image& image : images) sum.add({image.bytes, kPageSize});
    storeAt<std::uint64_t>(head, kChecksumAt, sum.value());
    return head;
}

}  // namespace

Journal::Journal(FileSystem& files, const std::filesystem::path& database)
    : files_(files), path_(database.string() + "-journal") {}

void Journal::write(const Facts& facts, std::span<const Image> images, std::uint32_t permissions) {
    const std::vector<std::uint8_t> head = makeHead(facts, images);
    std::vector<const std::uint8_t*> pages;
    pages.reserve(images.size());
    for (const Image& image : images) pages.push_back(image.bytes);

    const std::unique_ptr<OpenFile> file =
        files_.open(path_, FileSystem::Mode::Create, permissions);
    if (file->status().size != 0) file->resize(0);
    file->writeAt(0, head);
    file->writePages(static_cast<PageNumber>(head.size() / kPageSize), pages);
    file->sync();
    files_.syncFolder(folderOf(path_));
}

std::optional<Journal::Saved> Journal::read() const {
    if (!present()) return std::nullopt;
    Saved saved;
    saved.file_ = files_.open(path_, FileSystem::Mode::Read);
    std::array<std::uint8_t, kPagesAt> front{};
    if (saved.file_->readAt(0, front) < front.size()) return std::nullopt;
    const std::size_t count = u32At(front, kCountAt);
    const std::uint64_t size = saved.file_->status().size;
    if (loadAt<std::uint64_t>(front, kMagicAt) != kMagic) return std::nullopt;
    if (count > size / kPageSize || size != headSize(count) + count * kPageSize)
        return std::nullopt;

    std::vector<std::uint8_t> head(headSize(count));
    if (saved.file_->readAt(0, head) < head.size()) return std::nullopt;
    saved.firstImage_ = static_cast<PageNumber>(head.size() / kPageSize);
    for (std::size_t i = 0; i < count; ++i)
        saved.pages_.push_back(u32At(head, kPagesAt + i * sizeof(PageNumber)));
    Checksum sum;
    sum.add(Bytes(head).subspan(kCheckedFrom));
    std::array<std::uint8_t, kPageSize> page{};
    for (std::size_t i = 0; i < count; ++i) {
        saved.image(i, page);
        sum.add(page);
    }
    if (sum.value() != loadAt<std::uint64_t>(head, kChecksumAt)) return std::nullopt;
    saved.facts_.sizeBefore = loadAt<std::uint64_t>(head, kSizeBeforeAt);
    std::ranges::copy(bytesAt(Bytes(head), kSlotsBeforeAt, sizeof(CommitSlots)),
                      saved.facts_.slotsBefore.begin());
    saved.facts_.slotAfter = u16At(head, kSlotAfterAt);
    return saved;
}

void Journal::Saved::image(std::size_t position, WritablePageBytes into) const {
    const std::uint64_t offset = (static_cast<std::uint64_t>(firstImage_) + position) * kPageSize;
    if (file_->readAt(offset, into) < kPageSize)
        throw Error(ErrorKind::Io, "The rollback journal ends before its last page.");
}

}  // namespace stelvan::jet
