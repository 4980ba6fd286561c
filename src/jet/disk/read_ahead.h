// Recognises pages that are read one after the other, so that they can be fetched several at a
// time.
//
// A scan reads the pages of a table upwards, and those of its long values too, with gaps where
// others own the pages between: so several runs are followed at once, and small gaps do not end
// one.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

#include "jet/disk/page.h"

namespace stelvan::jet {

class ReadAhead {
public:
    static constexpr PageNumber kMost = 16;

    /// How many pages to fetch for this one; 1 where it belongs to no run.
    [[nodiscard]] PageNumber pagesFrom(PageNumber page) {
        for (std::size_t i = 0; i < runs_.size(); ++i) {
            if (page < runs_[i].next || page - runs_[i].next > kGap) continue;
            current_ = i;
            runs_[i].ahead = std::min(runs_[i].ahead * 2, kMost);
            return runs_[i].ahead;
        }
        current_ = oldest_ = (oldest_ + 1) % runs_.size();
        runs_[current_].ahead = 1;
        return 1;
    }

    /// The pages before `next` have been fetched.
    void fetchedUpTo(PageNumber next) { runs_[current_].next = next; }

    void forget() { *this = ReadAhead(); }

private:
    static constexpr PageNumber kGap = 16;

    struct Run {
        PageNumber next = 0;
        PageNumber ahead = 1;
    };
    std::array<Run, 4> runs_;
    std::size_t current_ = 0;
    std::size_t oldest_ = 0;
};

}  // namespace stelvan::jet
