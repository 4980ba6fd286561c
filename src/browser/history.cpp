#include "browser/history.h"

namespace stelvan::browser {
namespace {

constexpr std::size_t kMost = 500;

}  // namespace

void History::visit() {
    if (going_) return;
    const auto shown = jump_.shown();
    if (!shown || (!seen_.empty() && seen_[at_] == *shown)) return;
    if (!seen_.empty()) seen_.resize(at_ + 1);
    if (seen_.size() == kMost) seen_.erase(seen_.begin());
    seen_.push_back(*shown);
    at_ = seen_.size() - 1;
}

void History::clear() {
    seen_.clear();
    at_ = 0;
}

void History::goBack() {
    go(true);
}

void History::goForward() {
    go(false);
}

void History::go(bool back) {
    going_ = true;
    while (back ? canGoBack() : canGoForward()) {
        const std::size_t next = back ? at_ - 1 : at_ + 1;
        if (jump_.show(seen_[next])) {
            at_ = next;
            break;
        }
        seen_.erase(seen_.begin() + static_cast<std::ptrdiff_t>(next));
        if (back) --at_;
    }
    going_ = false;
    visit();  // what is on screen now, where nothing was left to go to
}

}  // namespace stelvan::browser
