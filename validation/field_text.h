// A field as the plain rules see it: its text in UTF-8, and its marker as a code.
#pragma once

#include <string>

#include "app/form/field.h"
#include "app/form/text.h"
#include "validation/reporting/error_catalogue.h"
#include "validation/rules/text.h"

namespace stelvan::validation {

[[nodiscard]] inline std::string textOf(const form::Field& field) {
    return form::toUtf8(field.text());
}

[[nodiscard]] inline bool holdsNothing(const form::Field& field) {
    return isBlank(textOf(field));
}

[[nodiscard]] inline bool isMarked(const form::Field& field, ErrorCode code) {
    return field.marker() == QString::number(code);
}

inline void mark(form::Field& field, ErrorCode code) {
    field.setMarker(QString::number(code));
}

}  // namespace stelvan::validation
