// The records that a record set and its clones share: which rows, their values as they were looked
// at, and the one record that is being changed or added.
//
// Bookmarks ascend in the order of the records and are never given twice. Failures are jet::Error.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "db/record_set.h"
#include "db/row_source.h"

namespace stelvan::db {

class RecordStore : public std::enable_shared_from_this<RecordStore> {
public:
    /// `rows` are the values at the places, or nothing where they are read when looked at.
    RecordStore(std::unique_ptr<RowSource> source, const PlacesNow& chosen,
                std::vector<Row> rows = {});

    [[nodiscard]] RowSource& source() { return *source_; }
    [[nodiscard]] const std::vector<Bookmark>& bookmarks() const { return bookmarks_; }
    [[nodiscard]] bool has(Bookmark bookmark) const;
    /// Changes whenever records leave.
    [[nodiscard]] std::uint64_t generation() const { return generation_; }

    /// The stored values, read at the first call and kept; a walk from record to record reads some
    /// ahead, since opening the file for each row costs far more than the row. Null when the row is
    /// gone. Not for a record that is being added.
    [[nodiscard]] const Row* stored(Bookmark bookmark);
    /// Where the file keeps a record that is not being added.
    [[nodiscard]] jet::RowId placeOf(Bookmark bookmark) const {
        return entries_[positionOf(bookmark)].place;
    }
    /// Shows the stored values of many records, in the order given, each with its place in
    /// `bookmarks`; null for a row that is gone. Keeps none that was not looked at before.
    void look(std::span<const Bookmark> bookmarks,
              const std::function<void(std::size_t at, const Row* values)>& show);
    /// Called when a cursor has come to a record: if the file is not as it was when the row was
    /// last seen, looks whether the row is still one of the query's. Values that were never reached
    /// before become the present ones; others stay, since a save is judged by what was shown.
    /// Throws RowChanged for a row that is not; it has left then, with those that follow it and are
    /// gone like it.
    void reach(Bookmark bookmark);
    /// The values with pending changes.
    [[nodiscard]] std::optional<jet::Value> value(Bookmark bookmark, std::size_t field);

    [[nodiscard]] bool pending() const { return pending_.has_value(); }
    [[nodiscard]] bool pending(Bookmark bookmark) const {
        return pending_ && pending_->bookmark == bookmark;
    }
    [[nodiscard]] bool adding(Bookmark bookmark) const {
        return pending(bookmark) && pending_->adding;
    }

    /// Begins a record of default values, the last of all.
    Bookmark add();
    /// Begins or continues the change of a record.
    void change(Bookmark bookmark, std::size_t field, jet::Value value);
    /// Writes the pending record.
    void write();
    /// Drops the pending changes; a record being added leaves.
    void cancel();
    /// Removes a record from the file; one that is gone already leaves all the same, before the
    /// failure.
    void erase(Bookmark bookmark);

    /// Forgets the values of all records, and the records whose rows are gone or answer the query
    /// no longer. A pending record stays, and one that the record set wrote as long as it is there.
    void refresh();
    /// The same for one record.
    void refresh(Bookmark bookmark);

private:
    struct Entry {
        jet::RowId place;
        std::unique_ptr<Row> values;  // null until looked at
        std::uint64_t chosen = 0;     // the moment at which the query last chose it
        bool reached = false;         // some cursor has stood on it
        bool own = false;  // written by this record set: stays, though the query may not choose it
    };
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    struct Pending {
        Bookmark bookmark = 0;
        bool adding = false;
        Row values;
        std::vector<std::size_t> changed;
    };

    [[nodiscard]] std::size_t positionOf(Bookmark bookmark) const;
    [[nodiscard]] Entry& entryOf(Bookmark bookmark) { return entries_[positionOf(bookmark)]; }
    /// Looks at the row at a position, and at up to `most` in all that follow it and are known
    /// since the same moment.
    [[nodiscard]] RowsNow lookFrom(std::size_t position, std::size_t most);
    /// Reads the rows from a position on that were not looked at yet.
    void readFrom(std::size_t position);
    [[nodiscard]] KnownRow known(const Entry& entry) const;
    [[nodiscard]] RowWriter& writer() { return *source_->writer(); }
    void writeNew();
    void writeChanges();
    void remove(Bookmark bookmark);
    void remove(std::size_t begin, std::size_t end);
    /// Removes the record at a position that is gone, and those behind it that are gone too.
    void removeRun(std::size_t position);
    /// Makes the record what it is now, pending changes included.
    [[nodiscard]] std::function<void()> undoTo(Bookmark bookmark);

    std::unique_ptr<RowSource> source_;
    // Side by side: bookmarks are searched and walked far more often than entries are opened.
    std::vector<Bookmark> bookmarks_;
    std::vector<Entry> entries_;
    Bookmark next_ = 1;
    std::optional<Pending> pending_;
    std::uint64_t generation_ = 0;
    std::size_t nextInTurn_ = kNone;  // the position behind the rows read last
};

}  // namespace stelvan::db
