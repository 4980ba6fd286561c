#include "jet/disk/page_cache.h"

#include <algorithm>
#include <utility>

namespace stelvan::jet {

void PageCache::pin(Frame& frame) {
    frame.round = round_;
    frame.used = frame.asked;
    frame.asked = true;
    ++pinned_;
}

void PageCache::place(PageNumber page, std::uint32_t index) {
    if (page >= places_.size())
        places_.resize(std::max<std::size_t>(page + 1, places_.size() * 2), kNone);
    places_[page] = index;
}

PageCache::Frame& PageCache::add(PageNumber page, bool passing) {
    Frame* frame = passedBy();
    if (frame == nullptr && frames_.size() >= limit_) frame = reusable();
    if (frame != nullptr) {
        place(page, places_[frame->page]);
        places_[frame->page] = kNone;
    } else {
        frames_.push_back(
            std::unique_ptr<Frame>(new Frame));  // bytes left as they come: they are read next
        frame = frames_.back().get();
        place(page, static_cast<std::uint32_t>(frames_.size() - 1));
    }
    frame->page = page;
    frame->round = round_;
    frame->asked = !passing;
    frame->used = false;
    frame->passing = passing;
    if (passing) passing_.push_back(page);
    ++pinned_;
    return *frame;
}

/// The oldest page of a run that nobody has looked at again, once there are enough of them.
PageCache::Frame* PageCache::passedBy() {
    while (passing_.size() > kPassingLimit) {
        const PageNumber page = passing_.front();
        Frame* frame = holds(page) ? frames_[places_[page]].get() : nullptr;
        const bool passed = frame != nullptr && frame->passing && !frame->used && !frame->changed();
        if (passed && frame->round == round_) return nullptr;  // and so are those behind it
        passing_.pop_front();
        if (passed) return frame;
        if (frame != nullptr) frame->passing = false;
    }
    return nullptr;
}

void PageCache::discard(PageNumber page) {
    if (!holds(page)) return;
    if (frames_[places_[page]]->round == round_) --pinned_;
    take(places_[page]);
}

PageCache::Frame* PageCache::reusable() {
    if (pinned_ + changed_.size() >= frames_.size()) return nullptr;
    // Twice around: the first time takes away the privilege of pages that were used again and
    // again.
    for (std::size_t step = 0; step < 2 * frames_.size(); ++step) {
        hand_ = hand_ + 1 < frames_.size() ? hand_ + 1 : 0;
        Frame& frame = *frames_[hand_];
        if (frame.round == round_ || frame.changed()) continue;
        if (!frame.used) return &frame;
        frame.used = false;
    }
    return nullptr;
}

void PageCache::keepBefore(Frame& frame) {
    if (frame.changed()) return;
    frame.before = std::make_unique<Buffer>(frame.bytes);
    changed_.push_back(frame.page);
}

PageCache::Frame& PageCache::append(PageNumber page) {
    Frame& frame = add(page);
    frame.bytes.fill(0);
    frame.added = true;
    changed_.push_back(page);
    return frame;
}

std::vector<PageCache::Frame*> PageCache::changedPages() {
    std::sort(changed_.begin(), changed_.end());
    std::vector<Frame*> pages;
    pages.reserve(changed_.size());
    for (PageNumber page : changed_) pages.push_back(frames_[places_[page]].get());
    return pages;
}

void PageCache::acceptChanges() {
    for (PageNumber page : changed_) {
        Frame& frame = *frames_[places_[page]];
        frame.before.reset();
        frame.added = false;
    }
    changed_.clear();
}

void PageCache::undoChanges() {
    for (PageNumber page : changed_) {
        const std::uint32_t index = places_[page];
        Frame& frame = *frames_[index];
        if (frame.added) {
            frame.added = false;
            if (frame.round == round_) --pinned_;
            retired_.push_back(take(index));
        } else {
            frame.bytes = *frame.before;
            frame.before.reset();
        }
    }
    changed_.clear();
}

std::unique_ptr<PageCache::Frame> PageCache::take(std::uint32_t index) {
    places_[frames_[index]->page] = kNone;
    std::swap(frames_[index], frames_.back());
    std::unique_ptr<Frame> taken = std::move(frames_.back());
    frames_.pop_back();
    if (index < frames_.size()) places_[frames_[index]->page] = index;
    return taken;
}

void PageCache::release() {
    ++round_;
    pinned_ = 0;
    retired_.clear();
    for (std::size_t i = frames_.size(); i-- > 0 && frames_.size() > limit_;)
        if (!frames_[i]->changed()) take(static_cast<std::uint32_t>(i));
}

void PageCache::clear() {
    frames_.clear();
    places_.clear();
    retired_.clear();
    passing_.clear();
    pinned_ = 0;
    hand_ = 0;
}

int PageCache::checkInvariants() const {
    std::size_t placed = 0;
    for (const std::uint32_t index : places_) placed += index != kNone ? 1 : 0;
    std::vector<PageNumber> changed;
    std::size_t pinned = 0;
    for (std::size_t at = 0; at < frames_.size(); ++at) {
        const Frame& frame = *frames_[at];
        if (frame.page >= places_.size() || places_[frame.page] != at) return 1;
        if (frame.changed()) changed.push_back(frame.page);
        if (frame.round == round_) ++pinned;
        if (frame.passing && std::ranges::count(passing_, frame.page) == 0) return 4;
    }
    if (placed != frames_.size()) return 1;
    if (!std::ranges::is_permutation(changed, changed_)) return 2;
    return pinned == pinned_ ? 0 : 3;
}

}  // namespace stelvan::jet
