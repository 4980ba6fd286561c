#include "db/record_cursor.h"

#include <algorithm>

#include "db/error_map.h"

namespace stelvan::db {

RecordCursor::RecordCursor(std::shared_ptr<RecordStore> store) : store_(std::move(store)) {
    if (count() == 0) {
        place_.where = Where::After;
    } else {
        standOn(at(0));
    }
}

const std::vector<Bookmark>& RecordCursor::visible() const {
    if (!filtered_) return store_->bookmarks();
    if (generation_ != store_->generation()) {
        std::erase_if(*filtered_, [this](Bookmark bookmark) { return !store_->has(bookmark); });
        generation_ = store_->generation();
    }
    return *filtered_;
}

bool RecordCursor::bof() const {
    return place_.where == Where::Before || count() == 0;
}

bool RecordCursor::eof() const {
    return place_.where == Where::After || count() == 0;
}

bool RecordCursor::onRecord() const {
    return place_.where == Where::On && store_->has(place_.bookmark);
}

std::size_t RecordCursor::position() const {
    if (!onRecord()) return 0;
    const auto& records = visible();
    const auto found = std::lower_bound(records.begin(), records.end(), place_.bookmark);
    return static_cast<std::size_t>(found - records.begin()) + 1;
}

Bookmark RecordCursor::current() const {
    if (!onRecord()) throw noCurrentRecord();
    return place_.bookmark;
}

void RecordCursor::first() {
    if (count() == 0) throw noCurrentRecord();
    standOn(visible().front());
}

void RecordCursor::last() {
    if (count() == 0) throw noCurrentRecord();
    standOn(visible().back());
}

void RecordCursor::next() {
    if (place_.where == Where::After) throw noCurrentRecord();
    const auto& records = visible();
    const auto following = place_.where == Where::Before
                               ? records.begin()
                               : std::upper_bound(records.begin(), records.end(), place_.bookmark);
    if (following == records.end()) {
        place_ = {Where::After, 0};
    } else {
        standOn(*following);
    }
}

void RecordCursor::previous() {
    if (place_.where == Where::Before || (place_.where == Where::After && count() == 0))
        throw noCurrentRecord();
    const auto& records = visible();
    const auto following = place_.where == Where::After
                               ? records.end()
                               : std::lower_bound(records.begin(), records.end(), place_.bookmark);
    if (following == records.begin()) {
        place_ = {Where::Before, 0};
    } else {
        standOn(*(following - 1));
    }
}

void RecordCursor::moveTo(Bookmark bookmark) {
    const auto& records = visible();
    if (!std::binary_search(records.begin(), records.end(), bookmark)) throw noCurrentRecord();
    standOn(bookmark);
}

void RecordCursor::settle() {
    if (place_.where != Where::On || onRecord()) return;
    const auto& records = visible();
    if (records.empty() || records.back() < place_.bookmark) place_ = {Where::After, 0};
}

void RecordCursor::filter(std::size_t field, const RecordFilter& filter) {
    std::vector<Bookmark> matching;
    for (const Bookmark bookmark : store_->bookmarks()) {
        const std::optional<jet::Value> value = store_->value(bookmark, field);
        if (value && filter.matches(*value)) matching.push_back(bookmark);
    }
    filtered_ = std::move(matching);
    generation_ = store_->generation();
    place_ = {Where::Before, 0};
    next();
}

void RecordCursor::showAll() {
    filtered_.reset();
    place_ = {Where::Before, 0};
    next();
}

void RecordCursor::include(Bookmark bookmark) {
    if (filtered_) filtered_->push_back(bookmark);
    standOn(bookmark);
}

}  // namespace stelvan::db
