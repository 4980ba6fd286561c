#include "jet/disk/file_locks.h"

#include <algorithm>
#include <string>
#include <thread>

#include "jet/disk/error.h"

namespace stelvan::jet {

namespace {

// Behind 4 GB: a database ends at 2 GB, so nobody's data or page locks lie here. The order makes
// pairs of neighbours, which one call can take together.
constexpr std::uint64_t kBase = 0x1'0000'0000;
constexpr ByteRange kQueue{kBase, 1};
constexpr ByteRange kReserved{kBase + 1, 1};
constexpr ByteRange kPending{kBase + 2, 1};
constexpr ByteRange kShared{kBase + 3, 1};
constexpr ByteRange kQueueAndReserved{kBase, 2};
constexpr ByteRange kPendingAndShared{kBase + 2, 2};

}  // namespace

Use useOf(OpenFile& file) {
    if (file.lockedElsewhere(kQueueAndReserved, LockMode::Exclusive)) return Use::Writing;
    return file.lockedElsewhere(kPendingAndShared, LockMode::Exclusive) ? Use::Reading : Use::None;
}

bool FileLocks::tryForAWhile(const std::function<bool()>& attempt) const {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::microseconds kLongestPause{2000};
    if (attempt()) return true;
    const Clock::time_point end = Clock::now() + patience_;
    std::chrono::microseconds pause{100};
    while (Clock::now() < end) {
        std::this_thread::sleep_for(pause);
        if (attempt()) return true;
        pause = std::min(pause * 2, kLongestPause);
    }
    return false;
}

void FileLocks::throwLocked(const char* why) const {
    throw Error(ErrorKind::Locked, "'" + path_.string() + "' is in use: " + why + ". Try again.")
        .about(path_.string());
}

void FileLocks::share() {
    if (!tryForAWhile([&] { return file_->tryLock(kPendingAndShared, LockMode::Shared); }))
        throwLocked("another program is writing to it");
    file_->unlock(kPending);
}

void FileLocks::unshare() noexcept {
    file_->unlock(kShared);
}

void FileLocks::reserve(bool reading) {
    bool queued = false;
    bool hopeless = false;
    const bool ended = tryForAWhile([&] {
        if (!queued && file_->tryLock(kQueueAndReserved, LockMode::Exclusive)) return true;
        queued = queued || file_->tryLock(kQueue, LockMode::Exclusive);
        // The other one waits for the readers to leave, and this reader will not leave before it
        // writes.
        hopeless = reading && file_->lockedElsewhere(kPending, LockMode::Shared);
        return hopeless || (queued && file_->tryLock(kReserved, LockMode::Exclusive));
    });
    file_->unlock(kQueue);
    if (!ended || hopeless) throwLocked("another program is changing it");
}

bool FileLocks::tryReserve() {
    return file_->tryLock(kReserved, LockMode::Exclusive);
}

void FileLocks::unreserve() noexcept {
    file_->unlock(kReserved);
}

void FileLocks::exclude() {
    const auto attempt = [&] { return file_->tryLock(kPendingAndShared, LockMode::Exclusive); };
    if (attempt()) return;
    // Readers are inside: close the door first, then wait until they are gone.
    const bool closed = tryForAWhile([&] { return file_->tryLock(kPending, LockMode::Exclusive); });
    if (closed && tryForAWhile([&] { return file_->tryLock(kShared, LockMode::Exclusive); }))
        return;
    readmit();
    throwLocked("other programs keep reading it");
}

void FileLocks::readmit() noexcept {
    try {
        // From exclusive to shared nothing can be in the way.
        (void)file_->tryLock(kShared, LockMode::Shared);
    } catch (...) {
        // The medium is gone, and with it every lock.
    }
    file_->unlock(kPending);
}

}  // namespace stelvan::jet
