#include "db/record_store.h"

#include <algorithm>
#include <utility>

#include "jet/disk/error.h"

namespace stelvan::db {

namespace {

constexpr std::size_t kReadAhead = 256;

}  // namespace

RecordStore::RecordStore(std::unique_ptr<RowSource> source, const PlacesNow& chosen,
                         std::vector<Row> rows)
    : source_(std::move(source)) {
    bookmarks_.reserve(chosen.places.size());
    entries_.reserve(chosen.places.size());
    for (const jet::RowId place : chosen.places) {
        bookmarks_.push_back(next_++);
        entries_.push_back({place, nullptr, chosen.moment});
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

RowsNow RecordStore::lookFrom(std::size_t position, std::size_t most) {
    const Entry& first = entries_[position];
    if (first.own) return source_->read({&first.place, 1}, std::nullopt);
    std::vector<jet::RowId> places;
    for (std::size_t at = position; at < entries_.size() && places.size() < most; ++at) {
        const Entry& entry = entries_[at];
        if (entry.own || entry.chosen != first.chosen || pending(bookmarks_[at])) break;
        places.push_back(entry.place);
    }
    return source_->read(places, first.chosen);
}

void RecordStore::readFrom(std::size_t position) {
    std::size_t wanted = 1;
    if (position == nextInTurn_) {
        while (wanted < kReadAhead && position + wanted < entries_.size() &&
               entries_[position + wanted].values == nullptr)
            ++wanted;
    }
    RowsNow now = lookFrom(position, wanted);
    for (std::size_t at = 0; at < now.rows.size(); ++at) {
        if (!now.rows[at]) continue;
        entries_[position + at].values = std::make_unique<Row>(*std::move(now.rows[at]));
        entries_[position + at].chosen = now.moment;
    }
    nextInTurn_ = position + now.rows.size();
}

void RecordStore::look(std::span<const Bookmark> bookmarks,
                       const std::function<void(std::size_t at, const Row* values)>& show) {
    for (std::size_t begin = 0; begin < bookmarks.size();) {
        const Entry& first = entryOf(bookmarks[begin]);
        if (first.values != nullptr) {
            show(begin++, first.values.get());
            continue;
        }
        // Those that are known since the same moment are read together.
        std::vector<jet::RowId> places{first.place};
        while (!first.own && places.size() < kReadAhead &&
               begin + places.size() < bookmarks.size()) {
            const Entry& next = entryOf(bookmarks[begin + places.size()]);
            if (next.values != nullptr || next.own || next.chosen != first.chosen) break;
            places.push_back(next.place);
        }
        const RowsNow now =
            source_->read(places, first.own ? std::nullopt : std::optional(first.chosen));
        for (const std::optional<Row>& row : now.rows) show(begin++, row ? &*row : nullptr);
    }
}

void RecordStore::reach(Bookmark bookmark) {
    if (pending(bookmark)) return;
    const std::size_t position = positionOf(bookmark);
    RowsNow now = lookFrom(position, 1);
    if (!now.rows.front()) {
        removeRun(position);
        throw jet::Error::of(jet::ErrorKind::RowChanged, "the record");
    }
    Entry& entry = entries_[position];
    if (!entry.reached || entry.values == nullptr)
        entry.values = std::make_unique<Row>(*std::move(now.rows.front()));
    entry.reached = true;
    entry.chosen = now.moment;
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
    entry.own = true;
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
    writer().update(known(entry), changes);
    *entry.values = pending_->values;
    entry.own = true;
}

void RecordStore::cancel() {
    if (pending_ && pending_->adding) remove(pending_->bookmark);
    pending_.reset();
}

KnownRow RecordStore::known(const Entry& entry) const {
    return {entry.place, entry.values ? std::optional<Row>(*entry.values) : std::nullopt,
            entry.own};
}

void RecordStore::remove(Bookmark bookmark) {
    const std::size_t position = positionOf(bookmark);
    remove(position, position + 1);
}

void RecordStore::remove(std::size_t begin, std::size_t end) {
    const auto first = static_cast<std::ptrdiff_t>(begin);
    const auto last = static_cast<std::ptrdiff_t>(end);
    bookmarks_.erase(bookmarks_.begin() + first, bookmarks_.begin() + last);
    entries_.erase(entries_.begin() + first, entries_.begin() + last);
    nextInTurn_ = kNone;
    ++generation_;
}

void RecordStore::removeRun(std::size_t position) {
    std::size_t end = position + 1;
    while (end < entries_.size() && !pending(bookmarks_[end])) {
        const RowsNow now = lookFrom(end, kReadAhead);
        const auto there = std::ranges::find_if(
            now.rows, [](const std::optional<Row>& row) { return row.has_value(); });
        end += static_cast<std::size_t>(there - now.rows.begin());
        if (there != now.rows.end()) break;
    }
    remove(position, end);
}

void RecordStore::erase(Bookmark bookmark) {
    try {
        writer().erase(known(entryOf(bookmark)));
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
    return [store = weak_from_this(), bookmark, place = entry.place, chosen = entry.chosen,
            own = entry.own, values, pending = pending_] {
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
        restored.chosen = chosen;
        restored.own = own;
        restored.reached = values != nullptr;
        restored.values = values ? std::make_unique<Row>(*values) : nullptr;
        self->pending_ = pending;
    };
}

void RecordStore::refresh() {
    const PlacesNow now = source_->chosenNow();
    const auto stays = [&](std::size_t at) {
        Entry& entry = entries_[at];
        if (pending(bookmarks_[at])) return true;
        const bool found = std::binary_search(now.places.begin(), now.places.end(), entry.place);
        entry.own = entry.own && !found;  // from now on the query judges it again
        return found || (entry.own && lookFrom(at, 1).rows.front());
    };
    std::size_t kept = 0;
    for (std::size_t at = 0; at < entries_.size(); ++at) {
        if (!stays(at)) continue;
        // The values that a pending change was begun on are what it is judged against.
        if (!pending(bookmarks_[at])) {
            entries_[at].values.reset();
            entries_[at].chosen = now.moment;
        }
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
    const std::size_t position = positionOf(bookmark);
    RowsNow now = lookFrom(position, 1);
    if (!now.rows.front()) return remove(bookmark);
    entries_[position].values = std::make_unique<Row>(*std::move(now.rows.front()));
    entries_[position].chosen = now.moment;
}

}  // namespace stelvan::db
