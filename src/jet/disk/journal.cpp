#include "jet/disk/journal.h"

#include <algorithm>
#include <array>
#include <random>
#include <utility>

#include "jet/disk/bytes.h"

namespace stelvan::jet {

namespace {

// Layout: a head of whole pages (the fields below, the page numbers, zeros), then the images.
constexpr std::size_t kStageAt = 0;
constexpr std::size_t kChecksumAt = 8;
constexpr std::size_t kSaltAt = 16;
constexpr std::size_t kSizeBeforeAt = 24;
constexpr std::size_t kCountAt = 32;
constexpr std::size_t kSlotAfterAt = 36;
constexpr std::size_t kEvidenceAt = 38;
constexpr std::size_t kSlotsBeforeAt = 40;
constexpr std::size_t kPagesAt = kSlotsBeforeAt + sizeof(CommitSlots);
constexpr std::size_t kCheckedFrom = kSaltAt;

// In the order of Journal::Stage.
constexpr std::array<std::uint64_t, 3> kStages{0x314C4E524A565453,   // "STVJRNL1"
                                               0x574C4E524A565453,   // "STVJRNLW"
                                               0x464C4E524A565453};  // "STVJRNLF"

// Enough to tell one file, and one state of it, from others.
constexpr std::size_t kMostEvidence = 8;
// Room for the commit of a record with its links, so that the next one needs no more.
constexpr std::uint64_t kLeastSize = 64 * 1024;
constexpr std::uint64_t kMostKept = 1024 * 1024;
constexpr ByteRange kKeepers{0, 1};

std::optional<Journal::Stage> stageOf(Bytes front) {
    const auto at = std::ranges::find(kStages, loadAt<std::uint64_t>(front, kStageAt));
    if (at == kStages.end()) return std::nullopt;
    return static_cast<Journal::Stage>(at - kStages.begin());
}

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

constexpr std::size_t evidenceOf(std::size_t pages) {
    return std::min(pages, kMostEvidence);
}

/// What follows the head.
std::vector<const std::uint8_t*> pagesOf(std::span<const Journal::Image> images) {
    std::vector<const std::uint8_t*> pages;
    pages.reserve(images.size() + kMostEvidence);
    for (const Journal::Image& image : images) pages.push_back(image.bytes);
    for (const Journal::Image& image : images.first(evidenceOf(images.size())))
        pages.push_back(image.after);
    return pages;
}

std::vector<std::uint8_t> makeHead(const Journal::Facts& facts,
                                   std::span<const Journal::Image> images) {
    std::vector<std::uint8_t> head(headSize(images.size()));
    storeAt<std::uint64_t>(head, kStageAt, kStages.front());
    std::random_device random;
    storeAt<std::uint64_t>(head, kSaltAt, static_cast<std::uint64_t>(random()) << 32 | random());
    storeAt<std::uint64_t>(head, kSizeBeforeAt, facts.sizeBefore);
    std::ranges::copy(facts.slotsBefore, head.begin() + kSlotsBeforeAt);
    putU16(head, kSlotAfterAt, facts.slotAfter);
    putU16(head, kEvidenceAt, static_cast<std::uint16_t>(evidenceOf(images.size())));
    putU32(head, kCountAt, static_cast<std::uint32_t>(images.size()));
    for (std::size_t i = 0; i < images.size(); ++i)
        putU32(head, kPagesAt + i * sizeof(PageNumber), images[i].page);
    Checksum sum;
    sum.add(Bytes(head).subspan(kCheckedFrom));
    for (const std::uint8_t* page : pagesOf(images)) sum.add({page, kPageSize});
    storeAt<std::uint64_t>(head, kChecksumAt, sum.value());
    return head;
}

}  // namespace

Journal::Journal(FileSystem& files, const std::filesystem::path& database)
    : files_(files), path_(database.string() + "-journal") {}

// Others may have removed the journal that this process keeps, or made a new one.
bool Journal::isTheOneBeside() const {
    const FileStatus mine = file_->status();
    const std::optional<FileStatus> beside = files_.status(path_);
    return mine.names > 0 && beside && beside->inode == mine.inode && beside->device == mine.device;
}

// Whoever made the file may have died before its name was safe: the folder is synced by everybody
// who comes to it.
void Journal::ensureOpen(std::uint32_t permissions) {
    if (file_ != nullptr && isTheOneBeside()) return;
    try {
        file_ = files_.open(path_, FileSystem::Mode::Create, permissions);
    } catch (const Error& error) {
        // Somebody else keeps one that we may not write to.
        if (error.kind() != ErrorKind::PermissionDenied || !finished()) throw;
        files_.remove(path_);
        file_ = files_.open(path_, FileSystem::Mode::Create, permissions);
    }
    folderSynced_ = false;
    (void)file_->tryLock(kKeepers, LockMode::Shared);
}

void Journal::write(const Facts& facts, std::span<const Image> images, std::uint32_t permissions) {
    const std::vector<std::uint8_t> head = makeHead(facts, images);
    const std::vector<const std::uint8_t*> pages = pagesOf(images);
    const std::uint64_t end = head.size() + pages.size() * kPageSize;

    ensureOpen(permissions);
    const std::uint64_t size = file_->status().size;
    file_->writeAt(0, head);
    file_->writePages(static_cast<PageNumber>(head.size() / kPageSize), pages);
    if (std::max(size, end) < kLeastSize)
        file_->writeAt(end, std::vector<std::uint8_t>(kLeastSize - end));
    file_->sync();
    if (!folderSynced_) files_.syncFolder(folderOf(path_));
    folderSynced_ = true;
}

void Journal::note(Stage stage) {
    std::array<std::uint8_t, sizeof(std::uint64_t)> bytes{};
    storeAt<std::uint64_t>(bytes, 0, kStages[static_cast<std::size_t>(stage)]);
    file_->writeAt(kStageAt, bytes);
}

void Journal::noteForSure(Stage stage) {
    note(stage);
    file_->sync();
}

bool Journal::mayBeKept(const FileStatus& database) const {
    const FileStatus mine = file_->status();
    const std::uint32_t ofGroup = mine.permissions >> 3 & 7;
    const bool readable = mine.group == database.group || ofGroup == (mine.permissions & 7);
    return readable && mine.permissions == database.permissions && mine.size <= kMostKept;
}

void Journal::leave() {
    if (file_ == nullptr) return;
    const std::unique_ptr<OpenFile> mine = std::move(file_);
    std::array<std::uint8_t, sizeof(std::uint64_t)> front{};
    (void)mine->readAt(kStageAt, front);
    // What a dead writer has left pending is for whoever opens the database next.
    if (stageOf(front) != Stage::Finished) return;
    if (!mine->lockedElsewhere(kKeepers, LockMode::Exclusive)) files_.remove(path_);
}

void Journal::remove() {
    file_.reset();
    files_.remove(path_);
}

namespace {

/// Nothing where there is no such file: others may remove it at any time.
std::unique_ptr<OpenFile> openToRead(FileSystem& files, const std::filesystem::path& path) {
    try {
        return files.open(path, FileSystem::Mode::Read);
    } catch (const Error& error) {
        if (error.kind() == ErrorKind::FileNotFound) return nullptr;
        throw;
    }
}

}  // namespace

bool Journal::finished() const {
    const std::unique_ptr<OpenFile> file = openToRead(files_, path_);
    std::array<std::uint8_t, sizeof(std::uint64_t)> front{};
    return file != nullptr && file->readAt(kStageAt, front) == front.size() &&
           stageOf(front) == Stage::Finished;
}

bool Journal::kept() const {
    const std::unique_ptr<OpenFile> file = openToRead(files_, path_);
    return file != nullptr && file->lockedElsewhere(kKeepers, LockMode::Exclusive);
}

std::optional<Journal::Saved> Journal::read() const {
    Saved saved;
    saved.file_ = openToRead(files_, path_);
    if (saved.file_ == nullptr) return std::nullopt;
    std::array<std::uint8_t, kPagesAt> front{};
    if (saved.file_->readAt(0, front) < front.size()) return std::nullopt;
    const std::size_t count = u32At(front, kCountAt);
    saved.evidence_ = u16At(front, kEvidenceAt);
    const std::uint64_t size = saved.file_->status().size;
    const auto stage = stageOf(front);
    if (!stage) return std::nullopt;
    if (count > size / kPageSize || saved.evidence_ > count ||
        size < headSize(count) + (count + saved.evidence_) * kPageSize)
        return std::nullopt;

    std::vector<std::uint8_t> head(headSize(count));
    if (saved.file_->readAt(0, head) < head.size()) return std::nullopt;
    saved.stage_ = *stage;
    saved.firstImage_ = head.size() / kPageSize;
    for (std::size_t i = 0; i < count; ++i)
        saved.pages_.push_back(u32At(head, kPagesAt + i * sizeof(PageNumber)));
    if (!saved.sumIsRight(loadAt<std::uint64_t>(head, kChecksumAt), head)) return std::nullopt;
    saved.facts_.sizeBefore = loadAt<std::uint64_t>(head, kSizeBeforeAt);
    std::ranges::copy(bytesAt(Bytes(head), kSlotsBeforeAt, sizeof(CommitSlots)),
                      saved.facts_.slotsBefore.begin());
    saved.facts_.slotAfter = u16At(head, kSlotAfterAt);
    return saved;
}

bool Journal::Saved::sumIsRight(std::uint64_t expected, Bytes head) const {
    Checksum sum;
    sum.add(head.subspan(kCheckedFrom));
    std::array<std::uint8_t, kPageSize> page{};
    for (std::size_t i = 0; i < pages_.size() + evidence_; ++i) {
        load(i, page);
        sum.add(page);
    }
    return sum.value() == expected;
}

void Journal::Saved::load(std::size_t place, WritablePageBytes into) const {
    if (file_->readAt((firstImage_ + place) * kPageSize, into) < kPageSize)
        throw Error(ErrorKind::Io, "The rollback journal ends before its last page.");
}

void Journal::Saved::image(std::size_t position, WritablePageBytes into) const {
    load(position, into);
}

void Journal::Saved::after(std::size_t position, WritablePageBytes into) const {
    load(pages_.size() + position, into);
}

}  // namespace stelvan::jet
