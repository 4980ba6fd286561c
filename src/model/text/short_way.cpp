#include "model/text/short_way.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "base/date.h"
#include "base/text.h"
#include "base/utf.h"
#include "model/text/layout.h"
#include "model/text/toml_text.h"
#include "model/text/whole.h"

namespace stelvan::model {
namespace {

bool isKeyCharacter(char c) {
    return base::isLetter(c) || base::isDigit(c) || c == '_' || c == '-';
}

bool isTokenCharacter(char c) {
    return isKeyCharacter(c) || c == '+' || c == '.' || c == ':';
}

/// Digits without leading zeros, as TOML wants them.
bool isWholeForm(std::string_view digits) {
    return !digits.empty() && std::ranges::all_of(digits, base::isDigit) &&
           (digits.size() == 1 || digits.front() != '0');
}

bool isFractionForm(std::string_view number) {
    const std::size_t exponent = std::min(number.find_first_of("eE"), number.size());
    const std::string_view mantissa = number.substr(0, exponent);
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    if (!isWholeForm(mantissa.substr(0, point))) return false;
    if (point < mantissa.size()) {
        const std::string_view places = mantissa.substr(point + 1);
        if (places.empty() || !std::ranges::all_of(places, base::isDigit)) return false;
    }
    if (exponent == number.size()) return true;
    std::string_view power = number.substr(exponent + 1);
    if (power.starts_with('+') || power.starts_with('-')) power.remove_prefix(1);
    return !power.empty() && std::ranges::all_of(power, base::isDigit);
}

std::optional<jet::Value> numberOf(std::string_view token) {
    constexpr std::size_t kSafeDigits = 18;
    const std::string_view size = token.substr(token.starts_with('-') ? 1 : 0);
    if (isWholeForm(size) && size.size() <= kSafeDigits) {
        std::int64_t number = 0;
        std::from_chars(token.data(), token.data() + token.size(), number);
        return wholeValue(number);
    }
    if (size.find_first_of(".eE") == std::string_view::npos || !isFractionForm(size))
        return std::nullopt;
    double number = 0;
    const auto [end, fault] = std::from_chars(token.data(), token.data() + token.size(), number);
    if (fault != std::errc() || end != token.data() + token.size()) return std::nullopt;
    return number;
}

std::optional<jet::Value> valueOf(std::string_view token) {
    constexpr std::size_t kTimeAt = 10;
    if (token == "true") return true;
    if (token == "false") return false;
    if (token.size() > kTimeAt && token[kTimeAt] == 'T') {
        const auto days = base::parseDate(token);
        return days ? std::optional<jet::Value>(jet::DateTime{*days}) : std::nullopt;
    }
    return numberOf(token);
}

class ShortWay {
public:
    ShortWay(std::string_view text, std::size_t at, std::size_t line, TomlSection& section)
        : text_(text), at_(at), line_(line), section_(&section) {}

    std::optional<std::size_t> read() {
        if (!header()) return std::nullopt;
        while (at_ < text_.size() && text_[at_] != '[') {
            if (text_[at_] == '\n') {
                newLine();
            } else if (!statement()) {
                return std::nullopt;
            }
        }
        return endsHere() ? std::optional(at_) : std::nullopt;
    }

private:
    bool take(std::string_view expected) {
        if (!text_.substr(at_).starts_with(expected)) return false;
        at_ += expected.size();
        return true;
    }
    void newLine() {
        ++at_;
        ++line_;
    }
    bool endOfLine() {
        if (at_ == text_.size()) return true;
        if (text_[at_] != '\n') return false;
        newLine();
        return true;
    }
    template <typename Belongs>
    std::string_view run(Belongs&& belongs) {
        const std::size_t begin = at_;
        while (at_ < text_.size() && belongs(text_[at_])) ++at_;
        return text_.substr(begin, at_ - begin);
    }

    bool header() {
        section_->line = line_;
        section_->isArray = true;
        if (!take("[[")) return false;
        section_->name = run(isKeyCharacter);
        return !section_->name.empty() && take("]]") && endOfLine();
    }

    /// A header of several parts would belong to this section.
    [[nodiscard]] bool endsHere() const {
        const std::size_t end = std::min(text_.find('\n', at_), text_.size());
        return text_.substr(at_, end - at_).find_first_of(".\"'") == std::string_view::npos;
    }

    bool key(std::vector<TomlField>& fields) {
        TomlField field;
        field.line = line_;
        if (take("\"")) {
            field.key = run([](char c) { return c >= ' ' && c <= '~' && c != '"' && c != '\\'; });
            if (!take("\"")) return false;
        } else {
            field.key = run(isKeyCharacter);
            if (field.key.empty()) return false;
        }
        for (const TomlField& other : fields)
            if (other.key == field.key) return false;
        fields.push_back(std::move(field));
        return take(" = ");
    }

    bool statement() {
        if (!key(section_->fields)) return false;
        TomlField& field = section_->fields.back();
        if (take("[\n")) {
            ++line_;
            field.isList = true;
            return list(field.list) && endOfLine();
        }
        return value(field.value) && endOfLine();
    }

    bool list(std::vector<TomlEntry>& entries) {
        while (!take("]")) {
            if (!take("  ")) return false;
            TomlEntry& entry = entries.emplace_back();
            entry.line = line_;
            entry.isTable = take("{");
            if (entry.isTable ? !inlineTable(entry.fields) : !value(entry.value)) return false;
            if (!take(",\n")) return false;
            ++line_;
        }
        return true;
    }

    /// Behind the opening brace.
    bool inlineTable(std::vector<TomlField>& fields) {
        if (take("}")) return true;
        for (std::string_view before = " "; take(before); before = ", ")
            if (!key(fields) || !value(fields.back().value)) return false;
        return take(" }");
    }

    bool value(jet::Value& value) {
        if (at_ == text_.size()) return false;
        if (text_[at_] == '"') return text(value.emplace<std::string>());
        if (text_[at_] == '{') return escapedText(value);
        auto read = valueOf(run(isTokenCharacter));
        if (read) value = std::move(*read);
        return read.has_value();
    }

    bool escapedText(jet::Value& value) {
        std::string escaped;
        return take("{ ") && take(kEscapedKey) && take(" = ") && text(escaped) && take(" }") &&
               unescape(escaped, value.emplace<std::string>());
    }

    bool text(std::string& out) {
        if (!take("\"")) return false;
        while (at_ < text_.size()) {
            out += run([](char c) { return c >= ' ' && c != '\x7F' && c != '"' && c != '\\'; });
            if (take("\"")) return true;
            if (!(take("\\") ? escape(out) : longCharacter(out))) return false;
        }
        return false;
    }

    bool longCharacter(std::string& out) {
        if (at_ == text_.size() || static_cast<unsigned char>(text_[at_]) < 0x80) return false;
        const std::size_t begin = at_;
        const char32_t c = base::nextCharacter(text_, at_);
        // A single byte here is one that belongs to no character.
        if (at_ == begin + 1 || base::isSurrogate(c)) return false;
        out += text_.substr(begin, at_ - begin);
        return true;
    }

    /// Behind the backslash.
    bool escape(std::string& out) {
        constexpr std::string_view kLetters = "\"\\nrt";
        constexpr std::string_view kMeant = "\"\\\n\r\t";
        if (at_ == text_.size()) return false;
        if (const std::size_t found = kLetters.find(text_[at_]); found != std::string_view::npos) {
            ++at_;
            out += kMeant[found];
            return true;
        }
        return take("u") && unit(out);
    }

    bool unit(std::string& out) {
        constexpr std::size_t kDigits = 4;
        const std::string_view digits = text_.substr(at_, kDigits);
        unsigned unit = 0;
        const char* end = digits.data() + digits.size();
        const auto [stop, fault] = std::from_chars(digits.data(), end, unit, 16);
        if (digits.size() < kDigits || fault != std::errc() || stop != end) return false;
        if (base::isSurrogate(unit)) return false;
        at_ += kDigits;
        char buffer[4];
        out.append(buffer, static_cast<std::size_t>(base::putUtf8(unit, buffer) - buffer));
        return true;
    }

    std::string_view text_;
    std::size_t at_;
    std::size_t line_;
    TomlSection* section_;
};

}  // namespace

std::optional<std::size_t> readShortWay(std::string_view text, std::size_t begin, std::size_t line,
                                        TomlSection& section) {
    return ShortWay(text, begin, line, section).read();
}

}  // namespace stelvan::model
