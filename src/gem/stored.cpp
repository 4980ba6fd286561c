#include "gem/stored.h"

#include "base/text.h"
#include "gem/formats.h"
#include "gem/kinds.h"
#include "gem/schema.h"
#include "gem/settings.h"

namespace stelvan::gem {
namespace {

using enum Control;
namespace variable = schema::variable;

constexpr std::string_view kNull = "NULL";
constexpr std::string_view kZero = "0";

/// The same text, or what stands for a blank one.
std::string orElse(std::string_view text, std::string_view blank) {
    return std::string(base::isBlank(text) ? blank : text);
}

std::string byFormat(std::string_view text, std::string_view format) {
    const ValueKind kind = valueKindOf(format);
    const bool none = kind == ValueKind::Text || kind == ValueKind::Boolean || isList(format);
    return orElse(text, none ? kNull : kZero);
}

std::string defaultByFormat(std::string_view text, std::string_view format) {
    const bool isBoolean = valueKindOf(format) == ValueKind::Boolean;
    return byFormat(isBoolean ? base::upperCase(base::trimBlanks(text)) : std::string(text),
                    format);
}

std::string storedText(const Record& record, const FieldFacts& field) {
    const std::string& text = record[field.control].text;
    switch (field.stored) {
        case Stored::Trimmed:
            return std::string(base::trimBlanks(text));
        case Stored::TrimmedOrNull:
            return orElse(base::trimBlanks(text), kNull);
        case Stored::TypedOrNull:
            return orElse(text, kNull);
        case Stored::TrimmedOrZero:
            return orElse(base::trimBlanks(text), kZero);
        case Stored::ByFormat:
            return byFormat(text, record.format());
        case Stored::DefaultByFormat:
            return defaultByFormat(text, record.format());
        case Stored::BySetting:
            return storedSetting(record[txtSttName].text, text);
        case Stored::AsTyped:
        case Stored::Flag:
            break;
    }
    return text;
}

bool isAbsent(std::string_view text, bool zeroToo) {
    return saysNull(text) || (zeroToo && base::trimBlanks(text) == kZero);
}

}  // namespace

std::vector<ColumnValue> columnsOf(const Record& record) {
    std::vector<ColumnValue> values;
    for (const FieldFacts* field : inOrder(record.kind(), &Places::written)) {
        if (!mayChange(record.category(), *field)) continue;
        if (field->stored == Stored::Flag) {
            values.push_back({field->column, record[field->control].text == "1" ? 1 : 0});
        } else {
            values.push_back({field->column, storedText(record, *field)});
        }
    }
    if (isCustomVariable(record.category()))
        values.push_back({variable::kType, std::string(categoryAt(record.category()).type)});
    return values;
}

std::vector<ColumnValue> columnsOfNew(Kind kind) {
    if (kind != Kind::Variable) return {};
    return {{variable::kParentKey, 0}, {variable::kAccessId, 0}, {variable::kAllowDuplicates, 0}};
}

bool saysNull(std::string_view text) {
    return base::sameWord(base::trimBlanks(text), kNull);
}

void blankPlaceholders(Record& record) {
    bool limited = false;
    for (const FieldFacts& field : fieldsOf(record.kind())) {
        const std::string& text = record[field.control].text;
        const bool says = !base::isBlank(text) && !isAbsent(text, true);
        limited = limited || (field.shown == Shown::LimitPair && says);
    }
    for (const FieldFacts& field : fieldsOf(record.kind())) {
        std::string& text = record[field.control].text;
        const bool blank = field.column.empty() ||
                           (field.shown == Shown::BlankForNull && isAbsent(text, false)) ||
                           (field.shown == Shown::BlankForNullOrZero && isAbsent(text, true)) ||
                           (field.shown == Shown::LimitPair && !limited);
        if (blank) text.clear();
    }
}

}  // namespace stelvan::gem
