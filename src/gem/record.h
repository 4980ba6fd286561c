// A record as its rules see it: the text of each field, whether the user may change it, and the
// fault that it is known to have.
//
// Whoever judges a record (the window after a keystroke, the command line for a whole file) fills
// one in, lets judge() change the faults, and takes them from it.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "gem/categories.h"
#include "gem/controls.h"
#include "gem/error_catalogue.h"
#include "gem/formats.h"

namespace stelvan::gem {

struct FieldState {
    std::string text;
    ErrorCode fault = NO_EXCEPTION;
    bool open = true;
};

/// The fields of a variable that its format opens and closes.
inline constexpr Control kByFormat[] = {Control::txtVarMax, Control::txtVarMin, Control::txtVarUnit,
                                        Control::txtVarDefValue, Control::txtVarValue};
/// Whether a format that opens `opened` opens this one of them.
[[nodiscard]] bool opens(const OpenedFields& opened, Control field);

class Record {
public:
    explicit Record(std::int16_t category) : category_(category), kind_(kindOf(category)) {}

    [[nodiscard]] std::int16_t category() const { return category_; }
    [[nodiscard]] Kind kind() const { return kind_; }

    [[nodiscard]] FieldState& operator[](Control field) { return fields_[indexOf(field)]; }
    [[nodiscard]] const FieldState& operator[](Control field) const {
        return fields_[indexOf(field)];
    }

    /// The chosen format as the rules compare it: trimmed and in upper case.
    [[nodiscard]] std::string format() const;

    bool adding = false;       // a new record; its identifier must not be taken
    std::string loadedName;    // the name that an existing record had, which is its own
    bool formatKnown = true;   // the format, as typed, is one of those offered
    bool childOfList = false;  // a list holds it, so it cannot be a list
    /// The limit whose VAR_MIN_GT_MAX came from the other being blank, which will be stored as 0.
    Control judgedAgainstBlank = Control::None;

private:
    std::int16_t category_;
    Kind kind_;
    std::array<FieldState, kControls> fields_;
};

}  // namespace stelvan::gem
