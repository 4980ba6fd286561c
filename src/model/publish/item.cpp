#include "model/publish/item.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

#include "base/decimal.h"
#include "base/number.h"
#include "base/run_time_error.h"
#include "base/text.h"
#include "gem/formats.h"
#include "model/publish/shown.h"

namespace stelvan::model {
namespace {

using gem::ValueKind;

/// What the whole numbers of a format hold on the wire, which for some is more than the editor's
/// 32-bit checks let pass.
struct WholeRange {
    std::string_view format;
    std::string_view lowest;
    std::string_view highest;
};

constexpr std::array kWholeRanges = {
    WholeRange{"I4", "-2147483648", "2147483647"},
    WholeRange{"I8", "-9223372036854775808", "9223372036854775807"},
    WholeRange{"U4", "0", "4294967295"},
    WholeRange{"U8", "0", "18446744073709551615"},
};

std::optional<std::string> wideWhole(std::string_view text, std::string_view format) {
    const auto* const range = std::ranges::find(kWholeRanges, format, &WholeRange::format);
    const auto number = base::parseDecimal(text);
    if (range == kWholeRanges.end() || !number) return std::nullopt;
    if (gem::outsideLimits(text, range->lowest, range->highest)) return std::nullopt;
    const std::optional<std::string> digits = number->scaled(0);
    if (!digits) return std::nullopt;
    return (number->negative ? "-" : "") + *digits;
}

template <typename Float>
std::string plainText(Float number) {
    constexpr std::size_t kRoom = 1200;  // the smallest double has 1074 places
    std::array<char, kRoom> room{};
    const auto end =
        std::to_chars(room.data(), room.data() + room.size(), number + Float{0},  // -0 is 0
                      std::chars_format::fixed);
    return {room.data(), end.ptr};
}

std::optional<std::string> checkedValue(std::string_view text, std::string_view format) {
    if (gem::checkValue(text, format) != gem::NO_EXCEPTION) return std::nullopt;
    switch (gem::valueKindOf(format)) {
        case ValueKind::Boolean:
            return base::upperCase(base::trimBlanks(text));
        case ValueKind::Single:
            return plainText(base::toSingle(text));
        case ValueKind::Double:
            return plainText(base::toDouble(text));
        default:
            return std::to_string(base::toInt32(text));
    }
}

/// The list and those that it stands in, innermost last.
using Path = std::vector<std::int64_t>;

SecsItem itemIn(Path& path, const Item& item, const CrossReference& references);

/// Empty for a child that can stand in the list. Each identifier counts once: rows that share one
/// would share its children, and double the item with every level.
std::string whyNotIn(const Path& path, const Item& child, const CrossReference& references) {
    if (typeOf(child).empty()) return "its child " + child.idText() + " is no SV, DV or EC";
    if (path.size() >= kDeepestList) return "its children nest too deeply";
    const auto id = child.id();
    if (!id) return {};
    if (std::ranges::find(path, *id) != path.end())
        return "its child " + child.idText() + " holds the list itself";
    const bool first = CrossReference::first(references.variables(), id)->row == child.row;
    return first ? "" : "its child " + child.idText() + " has the identifier of another variable";
}

void addChildren(Path& path, SecsItem& list, const CrossReference& references) {
    const auto id = list.variable.id();
    if (!id) return;
    path.push_back(*id);
    for (const auto& [key, child] : references.childrenOfList().of(*id)) {
        const std::string why = whyNotIn(path, child, references);
        if (why.empty()) {
            list.items.push_back(itemIn(path, child, references));
        } else {
            list.fault = why;
        }
    }
    path.pop_back();
}

SecsItem itemIn(Path& path, const Item& item, const CrossReference& references) {
    const gem::Record shown = shownRecord(item);
    const std::string& format = shown[gem::Control::cmbVarFormat].text;
    SecsItem made{item, secsFormat(format)};
    if (made.format.empty()) {
        made.fault = base::isBlank(format) ? "it has no format"
                                           : "its format " + format + " is none of SECS-II";
    } else if (gem::isList(made.format)) {
        addChildren(path, made, references);
    } else {
        const std::string& text = shown[gem::Control::txtVarValue].text;
        made.value = secsValue(text, made.format);
        if (!made.value && !base::isBlank(text))
            made.fault = "its value " + text + " is no " + std::string(made.format);
    }
    return made;
}

}  // namespace

std::string_view secsFormat(std::string_view text) {
    const auto codes = gem::formatCodes();
    const auto found = std::ranges::find(codes, gem::formatCode(text));
    return found == codes.end() ? std::string_view() : *found;
}

std::optional<std::string> secsValue(std::string_view text, std::string_view format) {
    const ValueKind kind = gem::valueKindOf(format);
    if (kind == ValueKind::Text) return std::string(text);
    if (kind == ValueKind::None || base::isBlank(text)) return std::nullopt;
    if (kind == ValueKind::Unchecked) return wideWhole(text, format);
    try {
        return checkedValue(text, format);
    } catch (const base::RunTimeError&) {  // more than the 32 bits or the fraction of the check
        return wideWhole(text, format);
    }
}

SecsItem secsItem(const Item& variable, const CrossReference& references) {
    Path path;
    return itemIn(path, variable, references);
}

}  // namespace stelvan::model
