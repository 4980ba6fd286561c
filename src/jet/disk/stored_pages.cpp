#include "jet/disk/stored_pages.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <string>
#include <utility>
#include <vector>

#include "jet/disk/bytes.h"
#include "jet/disk/commit_slots.h"
#include "jet/disk/user_entry.h"

namespace stelvan::jet {

namespace {

bool refusesWriting(ErrorKind kind) {
    return kind == ErrorKind::PermissionDenied || kind == ErrorKind::ReadOnly;
}

}  // namespace

StoredPages::StoredPages(FileSystem& files, std::filesystem::path path, const FileStatus& status,
                         Access wanted)
    : files_(files), path_(std::move(path)), wanted_(wanted == Access::ReadWrite) {
    // Even a reader opens for writing where it may: it then can roll back what a dead writer left.
    if (status.writeBits) {
        try {
            file_ = files_.open(path_, FileSystem::Mode::ReadWrite);
            writable_ = true;
        } catch (const Error& error) {
            if (!refusesWriting(error.kind())) throw;
        }
    }
    if (file_ == nullptr) file_ = files_.open(path_, FileSystem::Mode::Read);
    locks_.emplace(*file_, path_);
    commit_.emplace(files_, *file_, path_);
}

// Nobody is waited for: whoever has the turn removes the journal in the end.
StoredPages::~StoredPages() {
    if (!commit_->keepsJournal()) return;
    try {
        if (!locks_->tryReserve()) return;
        commit_->leave();
        locks_->unreserve();
    } catch (...) {
        // A finished journal that stays harms nobody.
    }
}

Access StoredPages::access() const {
    return wanted_ && writable_ && files_.canCreateIn(folderOf(path_)) ? Access::ReadWrite
                                                                       : Access::ReadOnly;
}

void StoredPages::want(Access access) {
    if (access == Access::ReadWrite) wanted_ = true;
}

PageCache::Frame& StoredPages::load(PageNumber page) {
    if (readers_ == 0 && !inUnit())
        throw Error(ErrorKind::Misuse,
                    "A page of '" + path_.string() + "' was read outside of a scope.");
    if (unsettled_)
        throw Error(ErrorKind::Io,
                    "'" + path_.string() + "' must be opened again after the failed change.");
    if (page >= pages_) throwBeyondEnd(page);
    const PageNumber wanted = readAhead_.pagesFrom(page);
    std::array<std::uint8_t*, ReadAhead::kMost> places{};
    std::size_t count = 0;
    const PageNumber stored = static_cast<PageNumber>(size_ / kPageSize);
    while (count < wanted && page + count < stored) {
        const PageNumber next = page + static_cast<PageNumber>(count);
        if (cache_.holds(next)) break;
        places[count++] = cache_.add(next, wanted > 1).bytes.data();
    }
    std::size_t got = 0;
    try {
        got = file_->readPages(page, std::span(places).first(count));
    } catch (...) {
        for (std::size_t i = 0; i < count; ++i) cache_.discard(page + static_cast<PageNumber>(i));
        throw;
    }
    for (std::size_t i = got; i < count; ++i) cache_.discard(page + static_cast<PageNumber>(i));
    if (got == 0) throwBeyondEnd(page);
    readAhead_.fetchedUpTo(page + static_cast<PageNumber>(got));
    PageCache::Frame& frame = *cache_.find(page);
    frame.asked = true;
    return frame;
}

void StoredPages::throwBeyondEnd(PageNumber page) const {
    throw Error(ErrorKind::Corrupt,
                "Page " + std::to_string(page) + " of '" + path_.string() +
                    "' is missing: the file ends after " + std::to_string(pages_) + " whole pages.",
                page);
}

WritablePageBytes StoredPages::edit(PageNumber page) {
    if (!inUnit())
        throw Error(ErrorKind::Misuse,
                    "A page of '" + path_.string() + "' was changed outside of a unit.");
    PageCache::Frame& frame = frameOf(page);
    cache_.keepBefore(frame);
    return WritablePageBytes(frame.bytes);
}

PageNumber StoredPages::append() {
    if (!inUnit())
        throw Error(ErrorKind::Misuse,
                    "A page was added to '" + path_.string() + "' outside of a unit.");
    if (pages_ >= kMaxPages)
        throw Error(ErrorKind::DiskFull,
                    "'" + path_.string() + "' has reached 2 GB, the most it can hold.");
    (void)cache_.append(pages_);
    return pages_++;
}

void StoredPages::beginRead() {
    if (readers_ == 0 && !inUnit()) enter(false);
    ++readers_;
}

void StoredPages::endRead() {
    if (--readers_ == 0 && !inUnit()) leave();
}

void StoredPages::beginUnit() {
    requireWritable();
    const bool reading = readers_ > 0;
    locks_->reserve(reading);
    try {
        UserEntry::requireNobody(files_, path_);
        if (!reading) enter(true);
        requireWhole();
    } catch (...) {
        locks_->unreserve();
        if (!reading) leave();
        throw;
    }
}

void StoredPages::requireWritable() {
    if (access() == Access::ReadWrite) return;
    const char* why = !wanted_     ? "was opened for reading only"
                      : !writable_ ? "may only be read"
                                   : "lies in a folder that may only be read";
    throw Error(ErrorKind::ReadOnly, "'" + path_.string() + "' " + why + "; nothing was changed.")
        .about(path_.string());
}

void StoredPages::requireWhole() const {
    if (size_ > 0 && size_ % kPageSize == 0) return;
    throw Error(ErrorKind::Corrupt,
                "'" + path_.string() + "' ends within page " + std::to_string(pages_) +
                    " and is not written to: it is damaged.",
                pages_);
}

void StoredPages::undoUnit() noexcept {
    if (!cache_.anyChanges()) return;
    cache_.undoChanges();
    pages_ = static_cast<PageNumber>(size_ / kPageSize);
    ++version_;
}

// What holds between units: nothing is changed in memory alone.
void StoredPages::endUnit() noexcept {
    assert(cache_.checkInvariants() == 0);
    assert(!cache_.anyChanges() && pages_ == size_ / kPageSize);
    locks_->unreserve();
    if (readers_ == 0) leave();
}

void StoredPages::writeUnit() {
    writeChanges();
    cache_.acceptChanges();
}

void StoredPages::writeChanges() {
    std::vector<PageCache::Frame*> changed = cache_.changedPages();
    std::erase_if(changed, [](const PageCache::Frame* frame) {
        return !frame->added && *frame->before == frame->bytes;
    });
    if (changed.empty()) return;
    const CommitSlots& slots = stamp_.commitSlots;
    const Journal::Facts facts{size_, slots, nextCommitSlot(ownSlot(slots))};
    if (changed.front()->page == 0) setCommitSlot(changed.front()->bytes, 0);

    locks_->exclude();
    try {
        const UserEntry entry(files_, path_);
        commit_->write(changed, facts);
    } catch (...) {
        // Putting the old pages back may have failed too: then what is on the medium must not be
        // shown before it has been seen to.
        unsettled_ = !commit_->settled();
        locks_->readmit();
        throw;
    }
    size_ = static_cast<std::uint64_t>(pages_) * kPageSize;
    if (PageCache::Frame* header = cache_.find(0)) setCommitSlot(header->bytes, facts.slotAfter);
    stamp_ = currentStamp();
    stamp_.young = false;  // ours alone: the others wait for their turn
    locks_->readmit();
}

void StoredPages::enter(bool withTurn) {
    locks_->share();
    try {
        lookAfresh(withTurn);
    } catch (...) {
        locks_->unshare();
        throw;
    }
}

void StoredPages::settle(bool withTurn) {
    if (!writable_)
        throw Error(
            ErrorKind::ReadOnly,
            "'" + path_.string() +
                "' was left in the middle of a change by a program that ended. Open it once with "
                "permission to write, so that it can be put right.")
            .about(path_.string());
    // Others may be about to do the same: nobody may wait for the turn as a reader.
    if (!withTurn) {
        locks_->unshare();
        locks_->reserve(false);
    }
    try {
        if (!withTurn) locks_->share();
        locks_->exclude();
        const UserEntry entry(files_, path_);
        commit_->settle();
    } catch (...) {
        if (!withTurn) locks_->unreserve();
        locks_->readmit();
        throw;
    }
    locks_->readmit();
    if (!withTurn) locks_->unreserve();
}

void StoredPages::leave() noexcept {
    cache_.release();
    locks_->unshare();
}

StoredPages::Stamp StoredPages::currentStamp() {
    const FileStatus status = file_->status();
    if (status.names == 0)
        throw Error(
            ErrorKind::FileNotFound,
            "'" + path_.string() + "' was removed or replaced by another file; open it again.")
            .about(path_.string());
    Stamp stamp;
    stamp.size = status.size;
    stamp.modified = status.modified;
    stamp.changed = status.changed;
    stamp.young = status.changed >= status.asked;
    (void)file_->readAt(commit_slots::kOffset, stamp.commitSlots);
    return stamp;
}

void StoredPages::lookAfresh(bool withTurn) {
    Stamp stamp = currentStamp();
    // Unchanged means that no writer has got as far as the file: a journal beside it could say
    // nothing.
    if (stamp == stamp_ && !stamp_.young && !unsettled_) return;
    if (commit_->leftOver() && commit_->mustSettle()) {
        settle(withTurn);
        stamp = currentStamp();
    }
    unsettled_ = false;
    cache_.clear();
    ++version_;
    noteChange();
    // One that is only too young to prove anything is read anew, but nobody is known to have
    // changed it.
    if (!(stamp == stamp_)) noteChangeByOthers();
    stamp_ = stamp;
    size_ = stamp.size;
    pages_ = static_cast<PageNumber>(size_ / kPageSize);
    readAhead_.forget();
}

}  // namespace stelvan::jet
