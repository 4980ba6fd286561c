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

/// As base::withPlainBlanks and base::onOneLine: what a one-line input takes, what one line shows.
[[nodiscard]] QString withPlainBlanks(QStringView text);
[[nodiscard]] QString onOneLine(QStringView text);

/// A text as a tool tip that shows it letter by letter: one that a tool tip would take for markup
/// is given as markup that means the text.
[[nodiscard]] QString asToolTip(const QString& text);

}  // namespace stelvan::form
