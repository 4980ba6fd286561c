#include "jet/rows/value_text.h"

#include "base/date.h"
#include "base/decimal.h"
#include "base/hex.h"
#include "base/number.h"

namespace stelvan::jet {

namespace {

struct ToText {
    std::string operator()(Null) const { return {}; }
    std::string operator()(bool flag) const { return flag ? "True" : "False"; }
    std::string operator()(std::int32_t number) const { return std::to_string(number); }
    std::string operator()(float number) const { return base::numberText(number); }
    std::string operator()(double number) const { return base::numberText(number); }
    std::string operator()(Money money) const {
        return base::withoutIdleZeros(base::decimalText(money.scaled, Money::kPlaces));
    }
    std::string operator()(DateTime date) const { return base::dateText(date.days); }
    std::string operator()(const Numeric& number) const {
        return base::withoutIdleZeros(
            base::decimalText(number.negative, number.magnitude, number.scale));
    }
    std::string operator()(const Guid& guid) const { return base::guidText(guid.bytes); }
    std::string operator()(const std::string& text) const { return text; }
    std::string operator()(const Blob& bytes) const { return base::hexText(bytes); }
};

}  // namespace

std::string textOf(const Value& value) {
    return std::visit(ToText{}, value);
}

}  // namespace stelvan::jet
