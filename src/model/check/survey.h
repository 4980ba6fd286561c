// What every rule of a check works on: the model, who refers to whom, and where findings go.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "gem/error_catalogue.h"
#include "model/check/finding.h"
#include "model/check/lists.h"
#include "model/core/cross_reference.h"
#include "model/core/progress.h"

namespace stelvan::model {

class Survey {
public:
    /// `whole` must outlive the object. Throws what `progress` throws.
    Survey(const Model& whole, const Progress& progress);

    const Model& model;
    const CrossReference references;
    const std::vector<Held> held;  // how each custom variable is held
    const Progress& progress;

    /// What a finding says, beside where.
    struct Says {
        Severity severity;
        std::string_view rule;
        std::string_view column;  // empty for the whole row
        std::string text;
        std::string mend;
    };
    /// About one row; the name of a link row is its owner's.
    void add(const Item& item, const Says& says);
    /// About what is not there.
    void addAbsent(Part part, const jet::Value& id, std::string_view name, const Says& says);

    /// "variable 101 (LotId)".
    [[nodiscard]] static std::string called(const Item& item);
    /// The catalogue's message of a code, to the last blank.
    [[nodiscard]] std::string messageOf(gem::ErrorCode code) const;

    /// By part, identifier and rule; what is equal in these in the order of discovery.
    [[nodiscard]] std::vector<Finding> take();

private:
    [[nodiscard]] std::string ownerName(const Item& link) const;

    gem::ErrorCatalogue catalogue_;
    std::array<std::vector<Finding>, kParts> found_;
};

/// Whether an item of the equipment's own has an identifier out of the standard's range. Reports
/// of the standard stand among the equipment's own and are none of those.
[[nodiscard]] bool hasReservedId(const Item& item);

// The groups of rules. Each may be asked alone.
void checkTables(Survey& survey);      // structure: missing tables and columns
void checkFields(Survey& survey);      // null-field, invalid-field, out-of-limits, alarm-pair
void checkIdentities(Survey& survey);  // duplicate-id, duplicate-name, reserved-id
void checkLinks(Survey& survey);       // dangling-*, duplicate-link, order-gap
void checkReports(Survey& survey);     // empty-report, unreported-event, unused-report
void checkLists(Survey& survey);       // list-loop, orphan-child, child-of-no-list, empty-list
void checkAlarms(Survey& survey);      // alarm-event-missing, alarm-event-mismatch
void checkSettings(Survey& survey);    // setting-missing, setting-invalid, setting-unknown
void checkStandard(Survey& survey);    // standard-item-missing, standard-item-differs

}  // namespace stelvan::model
