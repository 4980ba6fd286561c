// The records seen, for the ways back and forward. Only while browsing; a record that is there no
// longer is passed by.
#pragma once

#include <vector>

#include "browser/record_jump.h"

namespace stelvan::browser {

class History {
public:
    /// `jump` must outlive the object.
    explicit History(RecordJump& jump) : jump_(jump) {}

    /// The record on screen has been seen. What lay ahead is forgotten, unless it is the way there
    /// that is being gone.
    void visit();
    void clear();

    [[nodiscard]] bool canGoBack() const { return at_ > 0; }
    [[nodiscard]] bool canGoForward() const { return at_ + 1 < seen_.size(); }
    void goBack();
    void goForward();

private:
    void go(bool back);

    RecordJump& jump_;
    std::vector<RecordAddress> seen_;
    std::size_t at_ = 0;  // which of them is on screen
    bool going_ = false;
};

}  // namespace stelvan::browser
