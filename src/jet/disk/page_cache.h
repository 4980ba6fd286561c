// Pages in memory: a bounded set of clean pages, and the changed ones of the open unit of work.
//
// A page handed out is pinned until release(): its memory is neither moved nor reused. Clean pages
// beyond the limit are given up, oldest use first; changed ones stay until the unit of work ends,
// with the bytes they had before, which rolling back and the journal need. Reading from the medium
// is the caller's business. Pages that a scan passes by are given up first: a scan of any length
// runs through the same megabyte, which stays in the processor's cache, and leaves alone what
// lookups keep using.
//
// Invariants (checkInvariants()):
//   1. A page stands in one frame at most; frames_ and places_ name each other.
//   2. changed_ names each changed page once and no other; a changed page that the file has keeps
//      the bytes it had before.
//   3. pinned_ is the number of frames handed out since the last release().
//   4. passing_ names every frame that is part of a run.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

#include "jet/disk/page.h"

namespace stelvan::jet {

class PageCache {
public:
    /// `limit`: clean pages kept once nobody needs them.
    explicit PageCache(std::size_t limit = kDefaultLimit) : limit_(limit) {}

    static constexpr std::size_t kDefaultLimit = 4096;  // 16 MB
    static constexpr std::size_t kPassingLimit = 256;   // 1 MB
    using Buffer = std::array<std::uint8_t, kPageSize>;

    /// A page in memory.
    struct Frame {
        PageNumber page = 0;
        std::uint32_t round = 0;         // last release() round in which the page was handed out
        bool asked = false;              // handed out at all (not only read ahead)
        bool used = false;               // handed out in more than one round: kept longer
        bool passing = false;            // part of a run, in passing_
        bool added = false;              // appended by the open unit of work
        std::unique_ptr<Buffer> before;  // a changed page: its bytes as they are in the file
        alignas(8) Buffer bytes;

        [[nodiscard]] bool changed() const { return added || before != nullptr; }
    };

    /// The page if it is here; pins it.
    [[nodiscard]] Frame* find(PageNumber page) {
        if (page >= places_.size() || places_[page] == kNone) return nullptr;
        Frame& frame = *frames_[places_[page]];
        if (frame.round != round_) pin(frame);
        return &frame;
    }
    [[nodiscard]] bool holds(PageNumber page) const {
        return page < places_.size() && places_[page] != kNone;
    }

    /// A frame for a page that is not here yet, pinned; its bytes are undefined. `passing`: read as
    /// part of a run, probably not needed again.
    [[nodiscard]] Frame& add(PageNumber page, bool passing = false);
    /// Takes back what add() gave, when loading it failed.
    void discard(PageNumber page);

    /// Notes that a page changes: keeps its present bytes unless they are kept already.
    void keepBefore(Frame& frame);
    /// A zeroed page that the file does not have yet.
    [[nodiscard]] Frame& append(PageNumber page);

    [[nodiscard]] bool anyChanges() const { return !changed_.empty(); }
    /// The changed pages by ascending number; the list lives until the next call on the cache.
    [[nodiscard]] std::vector<Frame*> changedPages();
    /// The changed pages are in the file now.
    void acceptChanges();
    /// The changed pages are as before again, appended ones gone (their memory lives until
    /// release()).
    void undoChanges();

    /// Ends the validity of everything handed out; gives up what is over the limit.
    void release();
    /// Gives up all pages. Only when nothing is changed.
    void clear();

    [[nodiscard]] std::size_t size() const { return frames_.size(); }

    /// Which invariant is broken, 0 where none is: for tests and debug builds.
    [[nodiscard]] int checkInvariants() const;

private:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    void pin(Frame& frame);
    [[nodiscard]] Frame* reusable();
    [[nodiscard]] Frame* passedBy();
    void place(PageNumber page, std::uint32_t index);
    std::unique_ptr<Frame> take(std::uint32_t index);

    std::size_t limit_;
    std::uint32_t round_ = 1;
    std::size_t pinned_ = 0;  // frames of the present round, changed ones included
    std::size_t hand_ = 0;    // where the search for a reusable frame goes on
    std::vector<std::unique_ptr<Frame>> frames_;
    std::vector<std::uint32_t> places_;  // page -> position in frames_
    std::vector<PageNumber> changed_;
    std::deque<PageNumber> passing_;  // pages of runs, oldest first; may name some twice
    std::vector<std::unique_ptr<Frame>> retired_;  // appended pages of an undone unit
};

}  // namespace stelvan::jet
