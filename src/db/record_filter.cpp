#include "db/record_filter.h"

#include <string_view>

#include "base/decimal.h"
#include "base/number.h"
#include "base/text.h"
#include "db/error_map.h"
#include "db/value_text.h"
#include "jet/index/collation.h"

namespace stelvan::db {

RecordFilter RecordFilter::parse(const std::string& text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos) throw badArgument();
    RecordFilter filter;
    std::string_view column = base::trimBlanks(std::string_view(text).substr(0, equals));
    if (column.size() > 2 && column.front() == '[' && column.back() == ']') {
        column = column.substr(1, column.size() - 2);
    }
    std::string_view literal = base::trimBlanks(std::string_view(text).substr(equals + 1));
    filter.quoted = literal.size() >= 2 && literal.front() == '\'' && literal.back() == '\'';
    if (filter.quoted) literal = literal.substr(1, literal.size() - 2);
    filter.column = column;
    filter.literal = literal;
    const bool badText = filter.quoted && literal.find('\'') != std::string_view::npos;
    if (column.empty() || badText || (!filter.quoted && !base::isNumeric(literal)))
        throw badArgument();
    return filter;
}

bool RecordFilter::matches(const jet::Value& value) const {
    if (jet::isNull(value)) return false;
    if (const std::string* text = std::get_if<std::string>(&value)) {
        return jet::compareText(*text, literal) == 0;
    }
    const std::string text = toText(value);
    const bool* flag = std::get_if<bool>(&value);
    const auto number = base::parseDecimal(flag == nullptr ? text : *flag ? "-1" : "0");
    const auto wanted = base::parseDecimal(literal);
    return number && wanted ? *number == *wanted : jet::compareText(text, literal) == 0;
}

}  // namespace stelvan::db
