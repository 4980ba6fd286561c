#include <algorithm>

#include "gemdb/commands.h"
#include "gemdb/json_line.h"
#include "jet/database.h"

namespace stelvan::gemdb {
namespace {

std::string_view typeName(jet::ColumnType type) {
    switch (type) {
        case jet::ColumnType::Boolean:
            return "BOOLEAN";
        case jet::ColumnType::Byte:
            return "BYTE";
        case jet::ColumnType::Integer:
            return "INT";
        case jet::ColumnType::Long:
            return "LONG";
        case jet::ColumnType::Money:
            return "MONEY";
        case jet::ColumnType::Single:
            return "FLOAT";
        case jet::ColumnType::Double:
            return "DOUBLE";
        case jet::ColumnType::DateTime:
            return "SHORT_DATE_TIME";
        case jet::ColumnType::Binary:
            return "BINARY";
        case jet::ColumnType::Text:
            return "TEXT";
        case jet::ColumnType::Ole:
            return "OLE";
        case jet::ColumnType::Memo:
            return "MEMO";
        case jet::ColumnType::Guid:
            return "GUID";
        case jet::ColumnType::Numeric:
            return "NUMERIC";
        case jet::ColumnType::FixedBinary:
            return "FIXED_BINARY";
    }
    return "UNKNOWN";
}

/// What a value of the type occupies; a Yes/No counts as one byte although it is a bit of the null
/// mask.
int byteCount(const jet::ColumnInfo& column) {
    switch (column.type) {
        case jet::ColumnType::Boolean:
        case jet::ColumnType::Byte:
            return 1;
        case jet::ColumnType::Integer:
            return 2;
        case jet::ColumnType::Long:
        case jet::ColumnType::Single:
            return 4;
        case jet::ColumnType::Money:
        case jet::ColumnType::Double:
        case jet::ColumnType::DateTime:
            return 8;
        case jet::ColumnType::Guid:
            return 16;
        case jet::ColumnType::Numeric:
            return 17;
        default:
            return column.length;
    }
}

void writeSize(const jet::ColumnInfo& column, JsonLine& line) {
    switch (column.type) {
        case jet::ColumnType::Text:
            line.member("chars")
                .number(column.length / 2)
                .member("compressed")
                .flag(column.compressed);
            return;
        case jet::ColumnType::Memo:
            line.member("compressed").flag(column.compressed);
            return;
        case jet::ColumnType::Ole:
            return;
        case jet::ColumnType::Numeric:
            line.member("bytes").number(byteCount(column));
            line.member("precision").number(column.precision).member("scale").number(column.scale);
            return;
        default:
            line.member("bytes").number(byteCount(column));
            return;
    }
}

void writeColumn(const jet::ColumnInfo& column, JsonLine& line) {
    line.open('{').member("name").text(column.name).member("type").text(typeName(column.type));
    writeSize(column, line);
    if (column.autoNumber) line.member("auto").flag(true);
    line.close('}');
}

void writeIndex(const jet::IndexInfo& index, const jet::TableInfo& table, JsonLine& line) {
    line.open('{').member("name").text(index.name);
    line.member("primary").flag(index.primary).member("unique").flag(index.unique);
    line.member("ignoreNulls").flag(index.ignoreNulls).member("required").flag(index.required);
    line.member("foreign").flag(index.foreign).member("columns").open('[');
    for (const jet::IndexColumn& column : index.columns) {
        line.open('{').member("name").text(table.columns[column.column].name);
        line.member("ascending").flag(column.ascending).close('}');
    }
    line.close(']').close('}');
}

std::string tableLine(const jet::TableInfo& table) {
    JsonLine line;
    line.open('{').member("table").text(table.name).member("rows").number(table.rows);
    line.member("columns").open('[');
    for (const jet::ColumnInfo& column : table.columns) writeColumn(column, line);
    line.close(']').member("indexes").open('[');
    std::vector<jet::IndexInfo> indexes = table.indexes;
    std::ranges::sort(indexes, {}, &jet::IndexInfo::name);
    for (const jet::IndexInfo& index : indexes) writeIndex(index, table, line);
    return line.close(']').close('}').take();
}

void writeNames(std::string_view member, const std::vector<std::string>& names, JsonLine& line) {
    line.member(member).open('[');
    for (const std::string& name : names) line.text(name);
    line.close(']');
}

std::string relationshipLine(const jet::RelationshipInfo& relationship) {
    JsonLine line;
    line.open('{').member("relationship").text(relationship.name);
    line.member("from").text(relationship.parentTable);
    writeNames("fromColumns", relationship.parentColumns, line);
    line.member("to").text(relationship.childTable);
    writeNames("toColumns", relationship.childColumns, line);
    line.member("enforced").flag(relationship.enforced);
    line.member("cascadeUpdates").flag(relationship.cascadeUpdates);
    line.member("cascadeDeletes").flag(relationship.cascadeDeletes);
    return line.close('}').take();
}

/// By name; the system tables have relationships too, which are nobody's business here.
std::vector<jet::RelationshipInfo> relationshipsAmong(const std::vector<std::string>& tables,
                                                      jet::Database& database) {
    std::vector<jet::RelationshipInfo> relationships = database.relationships();
    const auto known = [&](const std::string& name) {
        return std::ranges::find(tables, name) != tables.end();
    };
    std::erase_if(relationships, [&](const jet::RelationshipInfo& relationship) {
        return !known(relationship.parentTable) || !known(relationship.childTable);
    });
    std::ranges::sort(relationships, {}, &jet::RelationshipInfo::name);
    return relationships;
}

}  // namespace

int schemaCommand(const std::filesystem::path& file, const std::string& table) {
    jet::Database database = jet::Database::open(file, jet::Access::ReadOnly);
    const auto unchanged = database.beginRead();
    const std::vector<std::string> names =
        table.empty() ? database.tableNames() : std::vector<std::string>{table};
    Output output;
    for (const std::string& name : names) output.write(tableLine(database.table(name).info()));
    if (table.empty()) {
        for (const auto& relationship : relationshipsAmong(names, database)) {
            output.write(relationshipLine(relationship));
        }
    }
    output.finish();
    return kDone;
}

}  // namespace stelvan::gemdb
