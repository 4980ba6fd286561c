// The format of a variable: the list it is chosen from, whether it is a known one, which fields it
// opens, and the check of one value against it.
#pragma once

#include <QHash>
#include <QString>
#include <array>
#include <cstdint>
#include <functional>

#include "checks/record_checks.h"
#include "form/frames.h"
#include "form/main_state.h"

namespace stelvan::checks {

class VariableFormat {
public:
    VariableFormat(const form::VarFrame& frame, form::MainState& state, RecordChecks& records);

    /// Shows or hides the child-item editor and the child list of a list variable (both are further
    /// up).
    std::function<void(bool show)> showChildEditor = [](bool) {};

    /// Fills cmbVarFormat for a category: 7 and 8 get all formats, 9 all but "L", others none. The
    /// text stays.
    void lLoadVarFormat(std::int16_t kind);

    /// Whether the list of cmbVarFormat holds the format, letter case apart.
    bool lCheckFormat(const QString& format);

    /// Marks cmbVarFormat and verifies the variable. Only while adding or editing; a closed box is
    /// valid.
    void lVarCheckFormat();

    /// Checks one of the four values against a format code and marks it; true when its marker is
    /// "0" afterwards. An overflow is reported, leaves the marker, and answers false.
    bool lVarVerifyValue(form::Field& field, const QString& format);

    /// Opens, closes and empties the five fields that depend on the format. Only while adding or
    /// editing. A text emptied here comes back when the field is opened again in the same edit.
    void lVarSetFormatRight();

    /// The chosen format, trimmed and in upper case.
    [[nodiscard]] QString code() const;
    /// A text that names a format in another spelling takes the list's spelling. A stored one that
    /// the user did not touch stays.
    void adoptSpelling();
    /// Forgets the texts emptied in the former edit.
    void beginEdit() { emptied_.clear(); }

    /// Maximum, minimum, unit, default value, value.
    [[nodiscard]] const std::array<form::Field*, 5>& dependents() const { return dependents_; }

private:
    /// What the record being edited holds in the file; empty for a new one.
    [[nodiscard]] QString stored(const char* column) const;
    [[nodiscard]] bool isChildOfList() const;
    void open(form::Field& field);
    void close(form::Field& field, bool empty);

    const form::VarFrame& frame_;
    form::MainState& state_;
    RecordChecks& records_;
    std::array<form::Field*, 5> dependents_;
    QHash<form::Field*, QString> emptied_;
};

}  // namespace stelvan::checks
