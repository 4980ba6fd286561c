#include "db/record_store.h"

#include <algorithm>
#include <utility>

#include "jet/disk/error.h"

namespace stelvan::db {

namespace {

constexpr std::size_t kReadAhead = 256;

}  // namespace

RecordStore::RecordStore(std::unique_ptr<RowSource> source, const std::vector<jet::RowId>& places,
                         std::vector<Row> rows)
    : source_(std::move(source)) {
    bookmarks_.reserve(places.size());
    entries_.reserve(places.size());
    for (const jet::RowId place : places) {
        bookmarks_.push_back(next_++);
        entries_.push_back({place, nullptr});
    }
    for (std::size_t at = 0; at < rows.size(); ++at)
        entries_[at].values = std::make_unique<Row>(std::move(rows[at]));
}

bool RecordStore::has(Bookmark bookmark) const {
    return std::binary_search(bookmarks_.begin(), bookmarks_.end(), bookmark);
}

std::size_t RecordStore::positionOf(Bookmark bookmark) const {
    const auto found = std::lower_bound(bookmarks_.begin(), bookmarks_.end(), bookmark);
    return static_cast<std::size_t>(found - bookmarks_.begin());
}

void RecordStore::readFrom(std::size_t position) {
    const std::size_t wanted = position == nextInTurn_ ? kReadAhead : 1;
    std::vector<jet::RowId> places;
    for (std::size_t at = position; at < entries_.size() && places.size() < wanted; ++at) {
        if (entries_[at].values != nullptr || adding(bookmarks_[at])) break;
        places.push_back(entries_[at].place);
    }
    std::vector<std::optional<Row>> rows = source_->read(places);
    for (std::size_t at = 0; at < rows.size(); ++at) {
        if (rows[at]) entries_[position + at].values = std::make_unique<Row>(*std::move(rows[at]));
    }
    nextInTurn_ = position + rows.size();
}

const Row* RecordStore::stored(Bookmark bookmark) {
    const std::size_t position = positionOf(bookmark);
    if (entries_[position].values == nullptr) readFrom(position);
    return entries_[position].values.get();
}

std::optional<jet::Value> RecordStore::value(Bookmark bookmark, std::size_t field) {
    if (pending(bookmark)) return pending_->values[field];
    const Row* row = stored(bookmark);
    return row == nullptr ? std::nullopt : std::optional<jet::Value>((*row)[field]);
}

Bookmark RecordStore::add() {
    Pending pending{next_, true, writer().newRow(), {}};
    bookmarks_.push_back(next_);
    entries_.emplace_back();
    pending_ = std::move(pending);
    return next_++;
}

void RecordStore::change(Bookmark bookmark, std::size_t field, jet::Value value) {
    value = writer().converted(field, std::move(value));
    if (!pending_) {
        const Row* row = stored(bookmark);
        if (row == nullptr) throw jet::Error::of(jet::ErrorKind::RowGone, "the record");
        pending_ = Pending{bookmark, false, *row, {}};
    }
    pending_->values[field] = std::move(value);
    pending_->changed.push_back(field);
}

void RecordStore::write() {
    if (!pending_) return;
    std::function<void()> undo = undoTo(pending_->bookmark);
    if (pending_->adding) {
        writeNew();
    } else {
        writeChanges();
    }
    writer().onRollback(std::move(undo));
    pending_.reset();
}

void RecordStore::writeNew() {
    const jet::RowId place = writer().insert(pending_->values);
    Entry& entry = entryOf(pending_->bookmark);
    entry.place = place;
    entry.values.reset();  // read again when looked at: the file may have given values of its own
}

void RecordStore::writeChanges() {
    Entry& entry = entryOf(pending_->bookmark);
    std::vector<FieldChange> changes;
    for (std::size_t field = 0; field < pending_->values.size(); ++field) {
        const auto& changed = pending_->changed;
        if (std::find(changed.begin(), changed.end(), field) == changed.end()) continue;
        if (pending_->values[field] == (*entry.values)[field]) continue;
        changes.emplace_back(field, pending_->values[field]);
    }
    writer().update(entry.place, *entry.values, changes);
    *entry.values = pending_->values;
}

void RecordStore::cancel() {
    if (pending_ && pending_->adding) remove(pending_->bookmark);
    pending_.reset();
}

void RecordStore::remove(Bookmark bookmark) {
    const auto position = static_cast<std::ptrdiff_t>(positionOf(bookmark));
    bookmarks_.erase(bookmarks_.begin() + position);
    entries_.erase(entries_.begin() + position);
    ++generation_;
}

void RecordStore::erase(Bookmark bookmark) {
    Entry& entry = entryOf(bookmark);
    const std::optional<Row> asRead =
        entry.values ? std::optional<Row>(*entry.values) : std::nullopt;
    try {
        writer().erase(entry.place, asRead);
    } catch (const jet::Error& error) {
        if (error.kind() == jet::ErrorKind::RowGone) remove(bookmark);
        throw;
    }
    writer().onRollback(undoTo(bookmark));
    if (pending(bookmark)) pending_.reset();
    remove(bookmark);
}

std::function<void()> RecordStore::undoTo(Bookmark bookmark) {
    const Entry& entry = entryOf(bookmark);
    auto values = entry.values ? std::make_shared<Row>(*entry.values) : nullptr;
    return [store = weak_from_this(), bookmark, place = entry.place, values, pending = pending_] {
        const std::shared_ptr<RecordStore> self = store.lock();
        if (self == nullptr) return;
        const std::size_t position = self->positionOf(bookmark);
        if (!self->has(bookmark)) {
            const auto at = static_cast<std::ptrdiff_t>(position);
            self->bookmarks_.insert(self->bookmarks_.begin() + at, bookmark);
            self->entries_.emplace(self->entries_.begin() + at);
        }
        Entry& restored = self->entries_[position];
        restored.place = place;
        restored.values = values ? std::make_unique<Row>(*values) : nullptr;
        self->pending_ = pending;
    };
}

void RecordStore::refresh() {
    std::vector<jet::RowId> places;
    places.reserve(entries_.size());
    for (const Entry& entry : entries_) places.push_back(entry.place);
    const std::vector<jet::RowId> there = source_->stillThere(std::move(places));
    std::size_t kept = 0;
    for (std::size_t at = 0; at < entries_.size(); ++at) {
        const bool found = std::binary_search(there.begin(), there.end(), entries_[at].place);
        if (!found && !pending(bookmarks_[at])) continue;
        // The values that a pending change was begun on are what it is judged against.
        if (!pending(bookmarks_[at])) entries_[at].values.reset();
        bookmarks_[kept] = bookmarks_[at];
        if (kept != at) entries_[kept] = std::move(entries_[at]);
        ++kept;
    }
    if (kept != entries_.size()) ++generation_;
    bookmarks_.resize(kept);
    entries_.resize(kept);
}

void RecordStore::refresh(Bookmark bookmark) {
    if (pending(bookmark)) return;
    Entry& entry = entryOf(bookmark);
    std::optional<Row> row = source_->read({&entry.place, 1}).front();
    if (!row) return remove(bookmark);
    entry.values = std::make_unique<Row>(*std::move(row));
}

}  // namespace stelvan::db
