#include "form/text.h"

#include <QTextDocument>
#include <algorithm>

#include "base/text.h"
#include "base/utf.h"

namespace stelvan::form {
namespace {

std::u16string_view unitsOf(QStringView text) {
    return {text.utf16(), static_cast<std::size_t>(text.size())};
}

}  // namespace

QString toQt(std::string_view utf8) {
    QString text(static_cast<qsizetype>(utf8.size()), Qt::Uninitialized);
    auto* const begin = reinterpret_cast<char16_t*>(text.data());
    text.truncate(base::toUtf16(utf8, begin) - begin);
    return text;
}

std::string toUtf8(const QString& text) {
    return base::toUtf8(unitsOf(text));
}

Difference differenceOf(QStringView before, QStringView after) {
    const qsizetype shorter = std::min(before.size(), after.size());
    Difference same;
    while (same.prefix < shorter && before[same.prefix] == after[same.prefix]) ++same.prefix;
    while (same.suffix < shorter - same.prefix &&
           before[before.size() - 1 - same.suffix] == after[after.size() - 1 - same.suffix])
        ++same.suffix;
    return same;
}

QString withPlainBlanks(QStringView text) {
    return QString::fromStdU16String(base::withPlainBlanks(unitsOf(text)));
}

QString onOneLine(QStringView text) {
    return QString::fromStdU16String(base::onOneLine(unitsOf(text)));
}

QString asToolTip(const QString& text) {
    if (!Qt::mightBeRichText(text)) return text;
    return QLatin1String("<p style=\"white-space:pre-wrap\">") + text.toHtmlEscaped() +
           QLatin1String("</p>");
}

}  // namespace stelvan::form
