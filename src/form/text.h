// Between the texts of the floors below (UTF-8) and those of the widgets (UTF-16). Half a surrogate
// pair, as some files hold, survives both ways.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace stelvan::form {

[[nodiscard]] QString toQt(std::string_view utf8);
[[nodiscard]] std::string toUtf8(const QString& text);

/// Where two versions of a text differ: everything before `prefix` and the last `suffix` characters
/// are the same in both.
struct Difference {
    qsizetype prefix = 0;
    qsizetype suffix = 0;
};
[[nodiscard]] Difference differenceOf(QStringView before, QStringView after);

/// Tabs, line breaks and no-break spaces as blanks: what a one-line input takes in their place.
[[nodiscard]] QString withPlainBlanks(QStringView text);

}  // namespace stelvan::form
