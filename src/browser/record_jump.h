// From anywhere to a record: its category is loaded where it is not the one on screen, and the
// record becomes the current one. Only while browsing.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "browser/category_tree.h"
#include "browser/index/model_index.h"

namespace stelvan::browser {

/// A record, for longer than a record set lives. What tells it from others of its category is its
/// identifier, and a setting's name; the place in the file finds it at once, and finds the right
/// one of several with the same identifier.
struct RecordAddress {
    std::int16_t category = 0;
    std::string id;
    jet::RowId place;
    friend bool operator==(const RecordAddress&, const RecordAddress&) = default;
};

class RecordJump {
public:
    /// All must outlive the object.
    RecordJump(form::Window& window, RecordView& records, CategoryTree& tree, ModelIndex& index)
        : window_(window), records_(records), tree_(tree), index_(index) {}

    /// Shows the record in "Properties". False where it is there no longer, which the status bar
    /// says, or its category could not be loaded, which has been reported.
    bool show(const RecordAddress& address);
    /// While a category is being loaded on the way: what is displayed then is not the aim yet.
    [[nodiscard]] bool underway() const { return underway_; }
    /// Runs when a way has ended, wherever it led.
    std::function<void()> onEnded = [] {};

    /// The same after its category was loaded anew, which shows what the file holds now.
    bool showAnew(const RecordAddress& address);

    /// The record on screen; nothing where none is, or one that is being added.
    [[nodiscard]] std::optional<RecordAddress> shown() const;

    /// The record behind an item of the index.
    [[nodiscard]] RecordAddress addressOf(const IndexedItem& item) const;

private:
    /// The number of the record in the record set, from 0.
    [[nodiscard]] std::optional<std::int32_t> rowOf(const RecordAddress& address) const;
    [[nodiscard]] bool holds(std::int32_t row, const RecordAddress& address) const;
    [[nodiscard]] std::optional<jet::RowId> presentPlace(const RecordAddress& address) const;
    [[nodiscard]] bool load(std::int16_t category);
    [[nodiscard]] bool goTo(const RecordAddress& address);

    form::Window& window_;
    RecordView& records_;
    CategoryTree& tree_;
    ModelIndex& index_;
    bool underway_ = false;
};

/// The column that tells the records of a category apart; empty for none.
[[nodiscard]] std::string idColumnOf(std::int16_t category);

}  // namespace stelvan::browser
