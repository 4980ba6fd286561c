#include "sql/sqlite_values.h"

#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include "base/number.h"
#include "jet/index/collation.h"
#include "jet/rows/conversion.h"
#include "jet/rows/value_text.h"

namespace stelvan::sql {

namespace {

using jet::ColumnType;

struct DeclaredType {
    ColumnType type;
    const char*
        word;  // contains what gives the affinity: TEXT, BLOB, DOUB; anything else is numeric
};

constexpr std::array kDeclaredTypes{DeclaredType{ColumnType::Boolean, "YESNO"},
                                    DeclaredType{ColumnType::Byte, "BYTE"},
                                    DeclaredType{ColumnType::Integer, "SHORT"},
                                    DeclaredType{ColumnType::Long, "LONG"},
                                    DeclaredType{ColumnType::Money, "CURRENCY"},
                                    DeclaredType{ColumnType::Single, "SINGLE"},
                                    DeclaredType{ColumnType::Double, "NUMBER"},
                                    DeclaredType{ColumnType::DateTime, "DATETIME"},
                                    DeclaredType{ColumnType::Binary, "BLOB_BINARY"},
                                    DeclaredType{ColumnType::Text, "TEXT"},
                                    DeclaredType{ColumnType::Ole, "BLOB_OLE"},
                                    DeclaredType{ColumnType::Memo, "TEXT_MEMO"},
                                    DeclaredType{ColumnType::Guid, "TEXT_GUID"},
                                    DeclaredType{ColumnType::Numeric, "DECIMAL"},
                                    DeclaredType{ColumnType::FixedBinary, "BLOB_FIXED"}};

void giveNumber(sqlite3_context* context, double number) {
    sqlite3_result_double(context, number);
}

struct Give {
    sqlite3_context* context;

    void operator()(jet::Null) const { sqlite3_result_null(context); }
    void operator()(bool flag) const { sqlite3_result_int(context, flag ? -1 : 0); }
    void operator()(std::int32_t number) const { sqlite3_result_int(context, number); }
    void operator()(float number) const { giveNumber(context, static_cast<double>(number)); }
    void operator()(double number) const { giveNumber(context, number); }
    void operator()(jet::DateTime date) const { giveNumber(context, date.days); }
    void operator()(jet::Money amount) const {
        constexpr std::int64_t kUnit = 10000;
        if (amount.scaled % kUnit == 0) return sqlite3_result_int64(context, amount.scaled / kUnit);
        giveNumber(context, static_cast<double>(amount.scaled) / kUnit);
    }
    void operator()(const jet::Numeric& number) const {
        giveNumber(context, base::toDouble(jet::textOf(number)));
    }
    void operator()(const jet::Guid& guid) const { (*this)(std::string_view(jet::textOf(guid))); }
    void operator()(std::string_view text) const {
        // An empty text may stand nowhere in memory, which SQLite would take for Null.
        const char* characters = text.empty() ? "" : text.data();
        sqlite3_result_text64(context, characters, text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    }
    void operator()(std::span<const std::uint8_t> bytes) const {
        if (bytes.empty()) return sqlite3_result_zeroblob(context, 0);
        sqlite3_result_blob64(context, bytes.data(), bytes.size(), SQLITE_TRANSIENT);
    }
};

jet::Value textOrBytes(sqlite3_value* value, bool text) {
    const void* data =
        text ? static_cast<const void*>(sqlite3_value_text(value)) : sqlite3_value_blob(value);
    const auto size = static_cast<std::size_t>(sqlite3_value_bytes(value));
    if (text) return std::string(static_cast<const char*>(data), size);
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    return jet::Blob(bytes, bytes + size);
}

}  // namespace

void giveResult(sqlite3_context* context, const jet::ValueView& value) {
    std::visit(Give{context}, value);
}

jet::Value takeValue(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
        case SQLITE_INTEGER: {
            const std::int64_t number = sqlite3_value_int64(value);
            if (std::in_range<std::int32_t>(number)) return static_cast<std::int32_t>(number);
            return static_cast<double>(number);
        }
        case SQLITE_FLOAT:
            return sqlite3_value_double(value);
        case SQLITE_TEXT:
            return textOrBytes(value, true);
        case SQLITE_BLOB:
            return textOrBytes(value, false);
        default:
            return jet::Null{};
    }
}

jet::Value takeColumnValue(sqlite3_value* value, ColumnType type) {
    const int kind = sqlite3_value_type(value);
    if (kind == SQLITE_NULL) return jet::Null{};
    switch (type) {
        case ColumnType::Boolean:
            return sqlite3_value_int(value) != 0;
        case ColumnType::Single:
            return static_cast<float>(sqlite3_value_double(value));
        case ColumnType::Double:
            return sqlite3_value_double(value);
        case ColumnType::DateTime:
            return jet::DateTime{sqlite3_value_double(value)};
        default:
            return takeValue(value);
    }
}

bool hasExactKeys(const jet::ColumnInfo& column) {
    switch (column.type) {
        case ColumnType::Boolean:
        case ColumnType::Byte:
        case ColumnType::Integer:
        case ColumnType::Long:
        case ColumnType::Single:
        case ColumnType::Double:
            return true;
        case ColumnType::Text:
            return jet::canCollate(column.order);
        default:
            return false;
    }
}

std::optional<jet::Value> keyValue(sqlite3_value* value, const jet::ColumnInfo& column) {
    const int kind = sqlite3_value_type(value);
    const bool text = column.type == ColumnType::Text;
    if (kind == SQLITE_NULL || kind == SQLITE_BLOB || text != (kind == SQLITE_TEXT))
        return std::nullopt;
    if (text) return takeValue(value);
    const double number = sqlite3_value_double(value);
    if (column.type == ColumnType::Double) return number;
    if (column.type == ColumnType::Single) {
        const auto single = static_cast<float>(number);
        return static_cast<double>(single) == number ? std::optional<jet::Value>(single)
                                                     : std::nullopt;
    }
    using Limits = std::numeric_limits<std::int32_t>;
    if (number != std::trunc(number) || number < Limits::min() || number > Limits::max())
        return std::nullopt;
    const auto whole = static_cast<std::int32_t>(number);
    if (column.type != ColumnType::Boolean) return whole;
    return whole == 0 || whole == -1 ? std::optional<jet::Value>(whole != 0) : std::nullopt;
}

const char* declaredType(ColumnType type) {
    for (const DeclaredType& declared : kDeclaredTypes) {
        if (declared.type == type) return declared.word;
    }
    return "BLOB";
}

std::optional<ColumnType> typeDeclaredAs(const char* declared) {
    if (declared == nullptr) return std::nullopt;
    for (const DeclaredType& known : kDeclaredTypes) {
        if (std::string_view(declared) == known.word) return known.type;
    }
    return std::nullopt;
}

}  // namespace stelvan::sql
