// The format of a variable: the list it is chosen from, which fields it opens, and its check.
#pragma once

#include <QHash>
#include <QString>
#include <array>
#include <cstdint>
#include <functional>

#include "checks/record_checks.h"
#include "checks/record_fields.h"

namespace stelvan::checks {

class VariableFormat {
public:
    /// All must outlive the object.
    VariableFormat(form::Window& window, RecordFields& fields, RecordChecks& records);

    /// Shows or hides the child-item editor and the child list of a list variable (both are further
    /// up).
    std::function<void(bool show)> showChildEditor = [](bool) {};

    /// Fills cmbVarFormat for a category; the text stays.
    void lLoadVarFormat(std::int16_t kind);

    /// Whether the list of cmbVarFormat holds the format, letter case apart.
    [[nodiscard]] bool lCheckFormat(const QString& format) const {
        return fields_.lCheckFormat(format);
    }

    /// Marks cmbVarFormat and verifies the variable. Only while adding or editing; a closed box is
    /// valid.
    void lVarCheckFormat();

    /// Checks one of the four values against a format code and marks it; true when its marker is
    /// "0" afterwards. An overflow, RunTimeError 6, leaves the marker.
    bool lVarVerifyValue(gem::Control field, const QString& format);

    /// Opens, closes and empties the five fields that depend on the format. Only while adding or
    /// editing. A text emptied here comes back when the field is opened again in the same edit.
    void lVarSetFormatRight();

    /// After a change of format: every open, non-empty field of the five is judged anew.
    void judgeAnew();

    /// A text that names a format in another spelling takes the list's spelling. A stored one that
    /// the user did not touch stays.
    void adoptSpelling();
    /// Forgets the texts emptied in the former edit.
    void beginEdit() { emptied_.clear(); }

    /// Maximum, minimum, unit, default value, value: closed and emptied, as for a new variable,
    /// which has no format yet.
    void closeDependents();

private:
    void open(form::Field& field);
    void close(form::Field& field, bool empty);

    form::Window& window_;
    RecordFields& fields_;
    RecordChecks& records_;
    QHash<form::Field*, QString> emptied_;
};

}  // namespace stelvan::checks
