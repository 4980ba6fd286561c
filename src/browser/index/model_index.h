// What of a model is kept in memory to find records and their users at once: category, identifier,
// name and group of every item, and who refers to whom. Descriptions stay in the file.
//
// It is a copy of one moment of the file and holds no lock; refresh() takes over a later one.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "jet/database.h"
#include "model/core/parts.h"

namespace stelvan::browser {

inline constexpr std::int64_t kNoId = std::numeric_limits<std::int64_t>::min();

/// One item; its texts are asked of the index.
struct IndexedItem {
    std::int64_t id = kNoId;  // kNoId where it is no whole number, as of settings
    jet::RowId place;         // in the table of its part
    std::uint32_t name = 0;
    std::uint32_t folded = 0;
    std::uint32_t group = 0;
    std::uint16_t nameSize = 0;
    std::uint16_t foldedSize = 0;
    model::Part part = model::Part::StandardVariables;
    std::uint8_t category = 0;  // NO_CATEGORY for a variable of no known type
};

/// How a record is used by another.
enum class Role {
    InReport,     // a variable, by a report
    InList,       // a variable, by the list that holds it
    HoldsChild,   // a list, by its children
    SetsAlarm,    // an event, by the alarms that it sets
    ClearsAlarm,  // or clears
    SentByEvent   // a report, by an event
};

struct Use {
    Role role;
    std::size_t user;  // position in items()
    friend auto operator<=>(const Use&, const Use&) = default;
};

/// Pairs of numbers, found by the first.
class NumberPairs {
public:
    void add(std::int64_t key, std::int64_t value) { pairs_.emplace_back(key, value); }
    /// After the last add().
    void finish();
    [[nodiscard]] std::span<const std::pair<std::int64_t, std::int64_t>> of(std::int64_t key) const;

private:
    std::vector<std::pair<std::int64_t, std::int64_t>> pairs_;
};

class ModelIndex {
public:
    /// Takes over what the file holds now, if that is not what it held before; true then. Throws
    /// jet::Error, and keeps what it had.
    bool refresh(const std::filesystem::path& file);
    /// Whether refresh() would find nothing new. False where the file cannot be asked.
    [[nodiscard]] bool isFresh(const std::filesystem::path& file) const;
    void clear() { *this = ModelIndex(); }

    /// Another one for each content that it has held.
    [[nodiscard]] std::uint64_t moment() const { return moment_; }

    /// Part by part, each in the order of the file.
    [[nodiscard]] std::span<const IndexedItem> items() const { return items_; }
    [[nodiscard]] std::string_view nameOf(const IndexedItem& item) const {
        return std::string_view(texts_).substr(item.name, item.nameSize);
    }
    /// The name without regard to letter case (jet::foldName).
    [[nodiscard]] std::string_view foldedNameOf(const IndexedItem& item) const {
        return std::string_view(texts_).substr(item.folded, item.foldedSize);
    }
    /// Every group once, folded; IndexedItem::group counts them from 0.
    [[nodiscard]] const std::vector<std::string>& groups() const { return groups_; }

    /// The first item of a category with an identifier.
    [[nodiscard]] std::optional<std::size_t> find(std::int16_t category, std::int64_t id) const;
    /// The first item of a category with this very name.
    [[nodiscard]] std::optional<std::size_t> find(std::int16_t category,
                                                  std::string_view name) const;
    /// Who refers to a record, by role and in the order of items(); each once. Users that can be
    /// shown in no category are left out.
    [[nodiscard]] std::vector<Use> usesOf(std::int16_t category, std::int64_t id) const;

    /// Reads the descriptions of all items, in the order of items(). False, and nothing is read,
    /// where the file is not known to be as it was at refresh(). Throws jet::Error.
    [[nodiscard]] bool eachText(
        const std::function<void(std::size_t item, std::string_view text)>& look);

private:
    /// The items of a part with an identifier; usually one.
    [[nodiscard]] std::span<const std::uint32_t> sharing(model::Part part, std::int64_t id) const;
    void addUses(std::vector<Use>& uses, Role role, const NumberPairs& users, std::int64_t id,
                 std::span<const model::Part> parts) const;

    std::optional<jet::Database> database_;  // keeps the count of moments going
    std::uint64_t moment_ = 0;
    std::vector<IndexedItem> items_;
    std::vector<std::uint32_t> byId_;  // positions, by part and identifier
    std::string texts_;
    std::vector<std::string> groups_;
    NumberPairs reportsOfVariable_, eventsOfReport_;
    NumberPairs alarmsSetBy_, alarmsClearedBy_;
    NumberPairs childrenOfList_, listOfChild_;
};

}  // namespace stelvan::browser
