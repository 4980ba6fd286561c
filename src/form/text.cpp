#include "form/text.h"

#include <algorithm>

namespace stelvan::form {
namespace {

constexpr unsigned char kSurrogateLead =
    0xED;  // U+D000 to U+DFFF; from 0xA0 on the second byte: surrogates
constexpr unsigned char kSurrogateSecond = 0xA0;

bool isSurrogateAt(std::string_view text, std::size_t at) {
    return at + 2 < text.size() && static_cast<unsigned char>(text[at]) == kSurrogateLead &&
           static_cast<unsigned char>(text[at + 1]) >= kSurrogateSecond;
}

char16_t surrogateAt(std::string_view text, std::size_t at) {
    const auto second = static_cast<unsigned>(static_cast<unsigned char>(text[at + 1]));
    const auto third = static_cast<unsigned>(static_cast<unsigned char>(text[at + 2]));
    return static_cast<char16_t>(0xD000U | ((second & 0x3FU) << 6U) | (third & 0x3FU));
}

bool isLone(const QString& text, qsizetype at) {
    const QChar c = text[at];
    if (c.isHighSurrogate()) return at + 1 == text.size() || !text[at + 1].isLowSurrogate();
    return c.isLowSurrogate() && (at == 0 || !text[at - 1].isHighSurrogate());
}

void appendLone(std::string& out, char16_t unit) {
    out += static_cast<char>(kSurrogateLead);
    out += static_cast<char>(0x80U | ((unit >> 6U) & 0x3FU));
    out += static_cast<char>(0x80U | (unit & 0x3FU));
}

QString fromPlain(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

}  // namespace

QString toQt(std::string_view utf8) {
    QString text;
    std::size_t plain = 0;
    for (std::size_t at = 0; at < utf8.size(); ++at) {
        if (!isSurrogateAt(utf8, at)) continue;
        text += fromPlain(utf8.substr(plain, at - plain));
        text += QChar(surrogateAt(utf8, at));
        at += 2;
        plain = at + 1;
    }
    return text + fromPlain(utf8.substr(plain));
}

std::string toUtf8(const QString& text) {
    std::string out;
    qsizetype plain = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (!text[at].isSurrogate() || !isLone(text, at)) continue;
        out += text.mid(plain, at - plain).toStdString();
        appendLone(out, text[at].unicode());
        plain = at + 1;
    }
    return out + text.mid(plain).toStdString();
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
    QString plain = text.toString();
    plain.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    for (QChar& c : plain) {
        const bool noBreak = c == QChar(QChar::Nbsp) || c == QChar(0x202F) || c == QChar(0xFEFF);
        if (c.isSpace() || noBreak) c = QLatin1Char(' ');
    }
    return plain;
}

}  // namespace stelvan::form
