// A record set: the rows of one SELECT with a cursor, write-through for "select * from T [where
// ...]".
//
// Which rows it holds is settled at open, and so are their values: all are of one moment, whatever
// others write meanwhile. A record set that is to be browsed (Reading::AsReached) holds row ids
// only; a row is decoded when it is looked at (a walk from row to row decodes some ahead) and, once
// the cursor has reached it, keeps its values as of that moment. There a row that another program
// has deleted, or made one that the query would not choose, is reported by the first field() that
// looks at it (-2147217864) and leaves a gap. resync() takes over what others changed. Errors are
// RunTimeError: 3021 no current record, 3265 no such field, 3704 closed, 3705 open, 3219 not
// allowed here, 3251 not updatable, 13 and provider numbers from writing.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "db/connection.h"
#include "db/value_text.h"
#include "jet/rows/column_facts.h"

namespace stelvan::db {

enum class CursorType { ForwardOnly = 0, Keyset = 1, Dynamic = 2, Static = 3 };
enum class LockType { ReadOnly = 1, Pessimistic = 2, Optimistic = 3, BatchOptimistic = 4 };
/// When the rows of one table are decoded; joined and computed ones always are at once.
enum class Reading { AtOnce, AsReached };
enum class Affect { Current = 1, All = 3 };

/// Identifies a record within a record set and its clones.
using Bookmark = std::int64_t;

class Recordset {
public:
    Recordset();
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    /// Runs a SELECT; the cursor stands on the first record. The connection must be open and may be
    /// closed afterwards without ending the record set.
    void open(const std::string& sql, Connection& connection,
              CursorType cursor = CursorType::Static, LockType lock = LockType::Optimistic,
              Reading reading = Reading::AtOnce);
    [[nodiscard]] ObjectState state() const;
    void close();

    /// Records that the filter lets through, a record being added included.
    [[nodiscard]] std::int32_t recordCount() const;
    [[nodiscard]] bool bof() const;
    [[nodiscard]] bool eof() const;
    /// True on a record that is there: not before, behind or on the gap that a deleted one left.
    [[nodiscard]] bool onRecord() const;
    /// The current record's number among those that the filter lets through, from 1; 0 on none.
    [[nodiscard]] std::int32_t position() const;
    void moveFirst();
    void moveLast();
    /// Past the last record: EOF; from EOF: 3021.
    void moveNext();
    /// Before the first record: BOF; from BOF: 3021.
    void movePrevious();

    [[nodiscard]] Bookmark bookmark() const;
    void setBookmark(Bookmark bookmark);

    [[nodiscard]] std::size_t fieldCount() const;
    /// The column's name as the file spells it. Throws 3265.
    [[nodiscard]] const std::string& fieldName(std::size_t index) const;
    /// Value of the current record, pending changes included. Throws 3021, 3265 (names without
    /// regard to letter case).
    [[nodiscard]] Value field(const std::string& name) const;
    [[nodiscard]] Value field(std::size_t index) const;

    /// Begins or continues the edit of the current record; nothing reaches the file before
    /// update(). Text is converted to the column's type in C notation after trimming; what the
    /// column cannot take is a provider failure that names the column.
    void setField(const std::string& name, const Value& value);

    /// Begins a new record, which becomes the current one.
    void addNew();
    /// True while a record is being added or has unwritten changes.
    [[nodiscard]] bool editPending() const;
    /// Writes the current record, in the open UnitOfWork or one of its own. A record that another
    /// program changed since it was read, or that the query would no longer choose: -2147217864,
    /// nothing written.
    void update();
    /// Deletes the current record from the file; it leaves the record set with the next move, as
    /// the cursor then stands where it stood.
    void deleteCurrent();
    /// Drops the changes of the current record; one being added vanishes and the record that was
    /// current before it is current again.
    void cancelUpdate();
    void cancelBatch(Affect affect = Affect::All);
    /// Takes over what the file now holds for all records; rows that are gone, or that the query
    /// would no longer choose, leave the record set. What it wrote itself stays.
    void resync();
    /// Reads the current record anew; one that has left it likewise leaves, and the cursor stands
    /// on its gap.
    void resyncCurrent();

    /// "column = 12" or "column = 'text'"; empty shows all again. Moves to the first record.
    void setFilter(const std::string& filter);

    /// Another cursor over the same records, sharing bookmarks.
    [[nodiscard]] std::shared_ptr<Recordset> clone() const;

    /// For views that show many rows without moving the cursor: the stored values of the n-th
    /// record (0-based, a record being added and pending changes left out), and how many there are.
    [[nodiscard]] std::int32_t storedCount() const;
    [[nodiscard]] Value storedField(std::int32_t row, std::size_t index) const;
    /// The n-th of them, to move the cursor to. Throws 3265.
    [[nodiscard]] Bookmark storedBookmark(std::int32_t row) const;
    /// Shows `look` the values of many of them, each with its place in `rows`; none for a record
    /// that is gone. What was not looked at before is not kept either, so that memory stays
    /// bounded.
    using Look = std::function<void(std::size_t at, const std::vector<Value>* values)>;
    void eachStored(std::span<const std::int32_t> rows, const Look& look) const;

    /// Where the file keeps the current record; nothing for one that is being added or computed.
    [[nodiscard]] std::optional<jet::RowId> place() const;
    /// The record that the file keeps at a place, as the number of a stored one (from 0); nothing
    /// where the record set does not hold it.
    [[nodiscard]] std::optional<std::int32_t> storedAt(jet::RowId place) const;

    struct Impl;

private:
    std::unique_ptr<Impl> impl_;
};

}  // namespace stelvan::db
