// What of a model can be told to others, and who belongs to whom in it: items by identifiers that a
// message can carry, links that lead somewhere. What is left out for it is listed.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "model/core/cross_reference.h"

namespace stelvan::model {

/// What could not be published as it stands, a line each, every line once.
class Notes {
public:
    /// "variable 205 (Chuck): " and `text`.
    void add(const Item& item, std::string_view text);
    void add(const std::string& line);
    [[nodiscard]] const std::vector<std::string>& lines() const { return lines_; }

private:
    std::vector<std::string> lines_;
    std::unordered_set<std::string> known_;
};

/// Each list is in ascending order of identifier, and each identifier is in it once: the standard's
/// item before the equipment's own, else the one that the model has first.
struct Catalogue {
    struct Report {
        Item item;
        std::vector<Item> variables;  // at least one, in their order
    };
    struct Event {
        Item item;
        std::vector<const Report*> reports;  // in their order
    };

    std::vector<Item> variables;
    std::vector<Report> reports;
    std::vector<Event> events;
    std::vector<Item> alarms;

    Catalogue() = default;
    Catalogue(const Catalogue&) = delete;  // events point into reports
    Catalogue& operator=(const Catalogue&) = delete;
    Catalogue(Catalogue&&) = default;
    Catalogue& operator=(Catalogue&&) = default;

    [[nodiscard]] const Item* findVariable(std::optional<std::int64_t> id) const;
    [[nodiscard]] const Event* findEvent(std::optional<std::int64_t> id) const;
};

/// Points into the model behind `references`. Throws Refusal where a table of the model is missing:
/// what is not there must not be published as empty.
[[nodiscard]] Catalogue catalogueOf(const Model& model, const CrossReference& references,
                                    Notes& notes);

}  // namespace stelvan::model
