#include "tests/models/expected_content.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>

namespace stelvan::data::test {
namespace {

using Json = nlohmann::ordered_json;
using jet::ColumnType;

struct PrintedType {
    ColumnType type;
    const char* name;
    int bytes;  // 0: not printed
};

constexpr std::array kPrintedTypes = {
    PrintedType{ColumnType::Boolean, "BOOLEAN", 1},
    PrintedType{ColumnType::Byte, "BYTE", 1},
    PrintedType{ColumnType::Integer, "INT", 2},
    PrintedType{ColumnType::Long, "LONG", 4},
    PrintedType{ColumnType::Single, "FLOAT", 4},
    PrintedType{ColumnType::Double, "DOUBLE", 8},
    PrintedType{ColumnType::Money, "MONEY", 8},
    PrintedType{ColumnType::Numeric, "NUMERIC", 17},
    PrintedType{ColumnType::Text, "TEXT", 0},
    PrintedType{ColumnType::Memo, "MEMO", 0},
    PrintedType{ColumnType::Ole, "OLE", 0},
    PrintedType{ColumnType::DateTime, "SHORT_DATE_TIME", 8},
};

const PrintedType& printed(ColumnType type) {
    return *std::ranges::find(kPrintedTypes, type, &PrintedType::type);
}

std::string lowerCase(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

Json valueOf(const jet::ColumnInfo& column, const Cell& cell) {
    switch (column.type) {
        case ColumnType::Boolean:
            return cell && *cell != "0";
        case ColumnType::Text:
        case ColumnType::Memo:
        case ColumnType::Ole:
        case ColumnType::DateTime:
            return cell ? Json(*cell) : Json();
        default:
            return cell ? Json::parse(*cell) : Json();
    }
}

/// The cell of a column of the schema; what it starts from where the text has no such column.
Cell cellOf(const TableRows& rows, const Cells& cells, const jet::ColumnInfo& column) {
    for (std::size_t i = 0; i < rows.columns.size(); ++i) {
        if (lowerCase(rows.columns[i]) == lowerCase(column.name)) return cells[i];
    }
    return column.defaultValue.empty() ? Cell() : Cell(column.defaultValue);
}

Json columnOf(const jet::ColumnInfo& column) {
    const PrintedType& type = printed(column.type);
    Json json = {{"name", column.name}, {"type", type.name}};
    if (column.type == ColumnType::Text) json["chars"] = column.length / 2;
    if (type.bytes != 0) json["bytes"] = type.bytes;
    if (column.type == ColumnType::Text || column.type == ColumnType::Memo) {
        json["compressed"] = column.compressed;
    }
    if (column.type == ColumnType::Numeric) {
        json["precision"] = column.precision;
        json["scale"] = column.scale;
    }
    if (column.autoNumber) json["auto"] = true;
    return json;
}

Json indexOf(const jet::TableSpec& table, const jet::IndexInfo& index) {
    Json columns = Json::array();
    for (const jet::IndexColumn& part : index.columns) {
        columns.push_back(
            {{"name", table.columns[part.column].name}, {"ascending", part.ascending}});
    }
    return {{"name", index.name},         {"primary", index.primary},
            {"unique", index.unique},     {"ignoreNulls", index.ignoreNulls},
            {"required", index.required}, {"foreign", index.foreign},
            {"columns", columns}};
}

jet::IndexInfo foreignIndex(const jet::TableSpec& table, const std::string& name,
                            const std::string& column, bool parent) {
    jet::IndexInfo index;
    index.name = name;
    index.foreign = true;
    index.unique = index.required = parent;
    const auto found = std::ranges::find(table.columns, column, &jet::ColumnInfo::name);
    index.columns = {{static_cast<std::size_t>(found - table.columns.begin()), true}};
    return index;
}

/// Enforcing a relationship gives an index to both tables, named after it on the side of the child
/// and by its number on the side of the parent.
void addForeignIndexes(const jet::RelationshipInfo& relationship, jet::TableSpec& table) {
    if (table.name == relationship.parentTable) {
        const auto letter = static_cast<char>('A' + table.indexes.size());
        table.indexes.push_back(foreignIndex(table, std::string(".r") + letter,
                                             relationship.parentColumns.at(0), true));
    }
    if (table.name == relationship.childTable) {
        table.indexes.push_back(
            foreignIndex(table, relationship.name, relationship.childColumns.at(0), false));
    }
}

Json tableOf(jet::TableSpec table, std::size_t rows, const Schema& schema) {
    for (const auto& relationship : schema.relationships) addForeignIndexes(relationship, table);
    std::ranges::sort(table.indexes, {}, &jet::IndexInfo::name);
    Json columns = Json::array();
    for (const jet::ColumnInfo& column : table.columns) columns.push_back(columnOf(column));
    Json indexes = Json::array();
    for (const jet::IndexInfo& index : table.indexes) indexes.push_back(indexOf(table, index));
    return {{"table", table.name}, {"rows", rows}, {"columns", columns}, {"indexes", indexes}};
}

Json relationshipOf(const jet::RelationshipInfo& relationship) {
    return {{"relationship", relationship.name},
            {"from", relationship.parentTable},
            {"fromColumns", relationship.parentColumns},
            {"to", relationship.childTable},
            {"toColumns", relationship.childColumns},
            {"enforced", relationship.enforced},
            {"cascadeUpdates", relationship.cascadeUpdates},
            {"cascadeDeletes", relationship.cascadeDeletes}};
}

/// Prints the rows of a table; how many they are.
std::size_t writeRows(std::ofstream& out, const jet::TableSpec& table,
                      const std::vector<TableRows>& tables) {
    std::size_t count = 0;
    for (const TableRows& rows : tables) {
        if (lowerCase(rows.table) != lowerCase(table.name)) continue;
        for (const Cells& cells : rows.rows) {
            Json row = Json::object();
            for (const jet::ColumnInfo& column : table.columns) {
                row[column.name] = valueOf(column, cellOf(rows, cells, column));
            }
            out << Json{{"table", table.name}, {"row", row}}.dump() << '\n';
            ++count;
        }
    }
    return count;
}

}  // namespace

void writeExpected(const std::filesystem::path& path, const Schema& schema,
                   const std::vector<TableRows>& tables) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream rows(path.string() + ".jsonl");
    std::ofstream definitions(path.string() + ".schema.jsonl");
    std::vector<jet::TableSpec> sorted = schema.tables;
    std::ranges::sort(sorted, {},
                      [](const jet::TableSpec& table) { return lowerCase(table.name); });
    for (const jet::TableSpec& table : sorted) {
        const std::size_t count = writeRows(rows, table, tables);
        definitions << tableOf(table, count, schema).dump() << '\n';
    }
    for (const auto& relationship : schema.relationships) {
        definitions << relationshipOf(relationship).dump() << '\n';
    }
    if (!rows || !definitions) throw std::runtime_error(path.string() + ": cannot be written");
}

}  // namespace stelvan::data::test
