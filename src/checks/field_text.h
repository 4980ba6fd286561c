// A field as the plain rules see it: its text in UTF-8, and its marker as a code.
#pragma once

#include <string>

#include "base/text.h"
#include "form/field.h"
#include "form/text.h"
#include "gem/error_catalogue.h"

namespace stelvan::checks {

[[nodiscard]] inline std::string textOf(const form::Field& field) {
    return form::toUtf8(field.text());
}

[[nodiscard]] inline bool holdsNothing(const form::Field& field) {
    return base::isBlank(textOf(field));
}

[[nodiscard]] inline bool isMarked(const form::Field& field, gem::ErrorCode code) {
    return field.marker() == QString::number(code);
}

inline void mark(form::Field& field, gem::ErrorCode code) {
    field.setMarker(QString::number(code));
}

}  // namespace stelvan::checks
