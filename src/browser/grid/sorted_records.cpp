#include "browser/grid/sorted_records.h"

#include <algorithm>
#include <cmath>
#include <compare>
#include <numeric>
#include <string>

#include "base/number.h"
#include "base/text.h"
#include "jet/index/collation.h"

namespace stelvan::browser {
namespace {

enum class Sort : std::uint8_t { Number, Text, Nothing };

struct Key {
    Sort sort = Sort::Nothing;
    double number = 0;
    std::string text;                 // of a number: for those that no double tells apart
    std::vector<std::uint8_t> order;  // of a text: its key in the file's order
};

double doubleOf(const std::string& number) {
    try {
        return base::toDouble(number);
    } catch (const base::RunTimeError&) {
        const bool negative = base::trimBlanks(number).starts_with('-');
        return negative ? -HUGE_VAL : HUGE_VAL;  // too large for one
    }
}

Key keyOf(const db::Value& value) {
    Key key;
    key.text = db::toTextOrEmpty(value);
    if (key.text.empty()) return key;
    if (base::isNumeric(key.text)) {
        key.sort = Sort::Number;
        key.number = doubleOf(key.text);
    } else {
        key.sort = Sort::Text;
        jet::appendTextKey(key.order, key.text, true);
        key.text.clear();
    }
    return key;
}

std::weak_ordering compare(const Key& left, const Key& right) {
    if (left.sort == Sort::Text) return left.order <=> right.order;
    if (left.number < right.number) return std::weak_ordering::less;
    if (left.number > right.number) return std::weak_ordering::greater;
    if (left.text == right.text) return std::weak_ordering::equivalent;
    return base::compareDecimals(left.text, right.text);
}

}  // namespace

std::vector<std::int32_t> sortedRecords(const db::Recordset& records, std::size_t field,
                                        bool descending) {
    std::vector<std::int32_t> order(static_cast<std::size_t>(records.storedCount()));
    std::iota(order.begin(), order.end(), 0);
    std::vector<Key> keys(order.size());
    records.eachStored(order, [&](std::size_t at, const std::vector<db::Value>* values) {
        if (values != nullptr) keys[at] = keyOf((*values)[field]);
    });
    const auto before = [&](std::int32_t a, std::int32_t b) {
        const Key& left = keys[static_cast<std::size_t>(a)];
        const Key& right = keys[static_cast<std::size_t>(b)];
        if (left.sort != right.sort && (left.sort == Sort::Nothing || right.sort == Sort::Nothing))
            return right.sort == Sort::Nothing;
        if (left.sort == Sort::Nothing) return false;
        const std::weak_ordering found =
            left.sort != right.sort ? left.sort <=> right.sort : compare(left, right);
        return descending ? std::is_gt(found) : std::is_lt(found);
    };
    std::ranges::stable_sort(order, before);
    return order;
}

}  // namespace stelvan::browser
