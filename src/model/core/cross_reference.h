// Who refers to whom in a model: the items behind identifiers, the links of an owner, and the ways
// back ("used in").
//
// It points into the Model that it was made from, which must stay as it is and outlive it.
// Identifiers are whole numbers; rows without one are in no answer.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "model/core/model.h"

namespace stelvan::model {

/// An item by where it stands.
struct Item {
    Part part;
    const Table* table;
    const Row* row;

    [[nodiscard]] std::string text(std::string_view column) const {
        return table->text(*row, column);
    }
    [[nodiscard]] std::optional<std::int64_t> number(std::string_view column) const {
        return table->number(*row, column);
    }
    [[nodiscard]] std::optional<std::int64_t> id() const { return number(factsOf(part).id); }
    /// The identifier as text, whatever it is.
    [[nodiscard]] std::string idText() const { return text(factsOf(part).id); }
    [[nodiscard]] std::string name() const { return text(factsOf(part).name); }
    [[nodiscard]] std::int16_t category() const { return categoryOf(part, *table, *row); }
};

/// Items by a number, several for one number: in the order in which they stood in the model.
class Relation {
public:
    struct Entry {
        std::int64_t key;
        Item item;
    };

    void add(std::optional<std::int64_t> key, const Item& item);
    /// After the last add().
    void finish();
    [[nodiscard]] std::span<const Entry> of(std::int64_t key) const;
    [[nodiscard]] std::span<const Entry> all() const { return entries_; }

private:
    std::vector<Entry> entries_;
};

class CrossReference {
public:
    explicit CrossReference(const Model& model);

    // The items with an identifier, those of the standard first; usually one.
    [[nodiscard]] const Relation& variables() const { return variables_; }
    [[nodiscard]] const Relation& events() const { return events_; }
    [[nodiscard]] const Relation& reports() const { return reports_; }
    [[nodiscard]] const Relation& alarms() const { return alarms_; }

    /// Link rows of an event, of a report, in their order.
    [[nodiscard]] const Relation& reportsOfEvent() const { return reportsOfEvent_; }
    [[nodiscard]] const Relation& variablesOfReport() const { return variablesOfReport_; }
    /// The same link rows by what they lead to.
    [[nodiscard]] const Relation& eventsOfReport() const { return eventsOfReport_; }
    [[nodiscard]] const Relation& reportsOfVariable() const { return reportsOfVariable_; }

    /// Custom variables that name a list as the one that holds them, in their order.
    [[nodiscard]] const Relation& childrenOfList() const { return childrenOfList_; }
    /// Alarms that an event sets, that it clears.
    [[nodiscard]] const Relation& alarmsSetBy() const { return alarmsSetBy_; }
    [[nodiscard]] const Relation& alarmsClearedBy() const { return alarmsClearedBy_; }
    [[nodiscard]] const Relation& limitsOfVariable() const { return limitsOfVariable_; }

    /// The first item of a relation under a key, nothing where there is none.
    [[nodiscard]] static std::optional<Item> first(const Relation& relation,
                                                   std::optional<std::int64_t> key);

private:
    Relation variables_, events_, reports_, alarms_;
    Relation reportsOfEvent_, variablesOfReport_, eventsOfReport_, reportsOfVariable_;
    Relation childrenOfList_, alarmsSetBy_, alarmsClearedBy_, limitsOfVariable_;
};

}  // namespace stelvan::model
