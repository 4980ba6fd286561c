// Where a record set stands among its records: before the first, on one (or on the gap that one
// left), or after the last; and which records its filter lets through.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "db/record_filter.h"
#include "db/record_store.h"

namespace stelvan::db {

class RecordCursor {
public:
    /// Stands on the first record.
    explicit RecordCursor(std::shared_ptr<RecordStore> store);

    [[nodiscard]] bool bof() const;
    [[nodiscard]] bool eof() const;
    [[nodiscard]] std::size_t count() const { return visible().size(); }
    /// The n-th record that the filter lets through, from 0.
    [[nodiscard]] Bookmark at(std::size_t n) const { return visible()[n]; }

    /// The record it stands on. Throws 3021.
    [[nodiscard]] Bookmark current() const;
    [[nodiscard]] bool onRecord() const;
    /// Its number among those that the filter lets through, from 1; 0 on none.
    [[nodiscard]] std::size_t position() const;

    // Throw 3021 where there is nowhere to go.
    void first();
    void last();
    void next();
    void previous();
    void moveTo(Bookmark bookmark);

    /// After records left: a gap behind which nothing follows is the end.
    void settle();

    /// Filters by the values of a field, or not at all; moves to the first record.
    void filter(std::size_t field, const RecordFilter& filter);
    void showAll();
    /// A record just added is let through whatever it holds.
    void include(Bookmark bookmark);

    enum class Where { Before, On, After };
    /// To go back to after an added record was given up.
    struct Place {
        Where where = Where::Before;
        Bookmark bookmark = 0;
    };
    [[nodiscard]] Place place() const { return place_; }
    void returnTo(Place place) { place_ = place; }

private:
    [[nodiscard]] const std::vector<Bookmark>& visible() const;
    void standOn(Bookmark bookmark) { place_ = {Where::On, bookmark}; }

    std::shared_ptr<RecordStore> store_;
    Place place_;
    mutable std::optional<std::vector<Bookmark>> filtered_;  // ascending
    mutable std::uint64_t generation_ = 0;  // of the store when filtered_ was last right
};

}  // namespace stelvan::db
