// Files with tables as nobody would lay them out: columns of every type, identifiers that are
// missing, doubled or no numbers, links without owner, target or place, values at every border.
#pragma once

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "jet/database.h"
#include "model/core/parts.h"
#include "model/text/layout.h"
#include "tests/crash/table_parts.h"

namespace stelvan::test {

class OddFile {
public:
    explicit OddFile(std::uint32_t seed) : random_(seed) {}

    void create(const std::filesystem::path& path) {
        jet::Database database = jet::Database::create(path, jet::DateTime{45000});
        for (const model::PartFacts& facts : model::parts()) {
            if (upTo(8) == 0) continue;
            const bool limits = facts.part == model::Part::Limits;
            const std::string name = limits ? "columns" : std::string(facts.table);
            database.createTable(specOf(facts, name));
            fill(database, facts, name);
        }
    }

private:
    using Type = jet::ColumnType;

    std::size_t upTo(std::size_t bound) { return random_() % bound; }
    template <typename T>
    const T& oneOf(const std::vector<T>& choices) {
        return choices[upTo(choices.size())];
    }

    jet::TableSpec specOf(const model::PartFacts& facts, const std::string& name) {
        static const std::vector<Type> kIdTypes = {Type::Long, Type::Double,  Type::Text,
                                                   Type::Long, Type::Numeric, Type::Money};
        static const std::vector<Type> kTypes = {
            Type::Boolean, Type::Byte,   Type::Integer, Type::Long,    Type::Money,
            Type::Single,  Type::Double, Type::Binary,  Type::Text,    Type::Ole,
            Type::Memo,    Type::Guid,   Type::Numeric, Type::DateTime};
        static const std::vector<std::string> kNames = {
            "reports", "variables", "reports_", "Caf\xC3\xA9", "two words", "escaped",
            "a'b = {",     "#x",        "\"q\"",    "columns",     "7",         "variables_"};
        jet::TableSpec spec{name, {}, {}};
        for (const std::string_view known : {facts.id, facts.name, facts.target, facts.order})
            if (!known.empty() && (upTo(12) != 0 || facts.part == model::Part::Limits))
                spec.columns.push_back(columnOf(std::string(known), oneOf(kIdTypes)));
        if (facts.part == model::Part::Limits)
            for (const char* bound : {"upperdb", "lowerdb"})
                spec.columns.push_back(columnOf(bound, oneOf(kTypes)));
        const std::size_t first = upTo(kNames.size());
        for (std::size_t i = 0; i <= upTo(4); ++i)
            spec.columns.push_back(columnOf(kNames[(first + i) % kNames.size()], oneOf(kTypes)));
        return spec;
    }

    static jet::ColumnInfo columnOf(const std::string& name, Type type) {
        jet::ColumnInfo info = column(name, type);
        if (type == Type::Text) info.length = 200;
        if (type == Type::Binary) info.length = 30;
        if (type == Type::Numeric) {
            info.precision = 28;
            info.scale = 6;
        }
        return info;
    }

    void fill(jet::Database& database, const model::PartFacts& facts, const std::string& name) {
        jet::Table& table = database.table(name);
        const jet::TableInfo info = table.info();
        for (std::size_t count = upTo(12); count > 0; --count) {
            std::vector<jet::ColumnValue> values;
            for (std::size_t at = 0; at < info.columns.size(); ++at) {
                const jet::ColumnInfo& facing = info.columns[at];
                const bool known = facing.name == facts.id || facing.name == facts.target ||
                                   facing.name == facts.order;
                if (upTo(7) == 0) continue;
                values.emplace_back(at,
                                    known && upTo(6) != 0 ? smallNumber(facing) : valueFor(facing));
            }
            table.insert(values);
        }
    }

    /// So that owners and links meet.
    jet::Value smallNumber(const jet::ColumnInfo& info) {
        const int number = static_cast<int>(upTo(4)) + 1;
        if (info.type == Type::Text) return std::to_string(number);
        return number;
    }

    jet::Value valueFor(const jet::ColumnInfo& info) {
        switch (info.type) {
            case Type::Boolean:
                return upTo(2) == 0;
            case Type::Byte:
                return static_cast<std::int32_t>(upTo(256));
            case Type::Integer:
                return static_cast<std::int32_t>(upTo(65536)) - 32768;
            case Type::Long:
                return oneOf<std::int32_t>({0, 1, -1, std::numeric_limits<std::int32_t>::max(),
                                            std::numeric_limits<std::int32_t>::min(), 101});
            case Type::Money:
                return jet::Money{oneOf<std::int64_t>(
                    {0, 1, -15000, 1'000'000, std::numeric_limits<std::int64_t>::max(),
                     std::numeric_limits<std::int64_t>::min(), 123'456'789'012'345'678})};
            case Type::Single:
                return oneOf<float>({0, 1, 0.1F, -2.5e30F, 1e-40F, 16777216, 3.4028235e38F,
                                     std::numeric_limits<float>::infinity()});
            case Type::Double:
                return oneOf<double>({0, 101, 0.1, -1.0 / 3, 1e300, 5e-324, 9007199254740993.0,
                                      1e15, 999999999999999, 1e17,
                                      -std::numeric_limits<double>::infinity()});
            case Type::DateTime:
                return jet::DateTime{oneOf<double>({0, 1.25, -1.25, 39999.5, 40123.302083333336,
                                                    40123.30208, 1e9, -657434, 2958465.999, -0.5})};
            case Type::Numeric:
                return oneOf<std::string>({"0", "1.5", "-1234567890123456.789012",
                                           "9999999999999999999999.999999", "-0.000001"});
            case Type::Guid:
                return std::string("{ABCDEF01-0203-0405-0607-08090A0B0C0D}");
            case Type::Binary:
            case Type::Ole:
                return bytes();
            default:
                return text();
        }
    }

    jet::Value bytes() {
        jet::Blob bytes(upTo(20) + 1);
        for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(upTo(256));
        return bytes;
    }

    jet::Value text() {
        static const std::vector<std::string> kPieces = {"",
                                                         "plain",
                                                         " padded ",
                                                         "\"",
                                                         "\\",
                                                         "\\uD800",
                                                         "\n",
                                                         "\r\n",
                                                         "\t",
                                                         "#",
                                                         "'''",
                                                         "\x01\x1F\x7F",
                                                         "caf\xC3\xA9",
                                                         "7",
                                                         "[[",
                                                         "=",
                                                         "null",
                                                         "\xC2\x85",
                                                         "\xE2\x80\xA8",
                                                         "x\xEF\xBB\xBF",
                                                         "{escaped}",
                                                         "\xED\xA0\x80",
                                                         "\xED\xB0\x80",
                                                         "\xF0\x9F\x98\x80",
                                                         std::string(1, '\0'),
                                                         " 7 "};
        std::string text;
        for (std::size_t count = upTo(4) + 1; count > 0; --count) text += oneOf(kPieces);
        return text;
    }

    std::mt19937 random_;
};

}  // namespace stelvan::test
