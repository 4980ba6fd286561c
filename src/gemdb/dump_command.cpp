#include "gemdb/commands.h"
#include "gemdb/json_line.h"
#include "jet/database.h"
#include "jet/rows/row_reader.h"

namespace stelvan::gemdb {
namespace {

/// What stands before the value of each column, the same in every row:
/// {"table":T,"row":{"first": and ,"second":
std::vector<std::string> textsBeforeValues(const jet::TableInfo& table) {
    std::vector<std::string> texts;
    std::string text = "{\"table\":";
    appendJsonText(text, table.name);
    text += ",\"row\":{";
    for (const jet::ColumnInfo& column : table.columns) {
        appendJsonText(text, column.name);
        text += ':';
        texts.push_back(std::move(text));
        text = ",";
    }
    return texts;
}

/// One line for each row: {"table":T,"row":{column:value,...}}, columns in ascending number.
void dumpTable(jet::Table& table, Output& output) {
    const jet::TableInfo info = table.info();
    const std::vector<std::string> before = textsBeforeValues(info);
    const auto rows = table.scan(jet::allColumns(info));
    std::string& text = output.buffer();
    while (rows->next()) {
        for (std::size_t column = 0; column < before.size(); ++column) {
            text += before[column];
            appendJsonValue(text, rows->value(column));
        }
        text += "}}\n";
        output.flushWhenFull();
    }
}

}  // namespace

int dumpCommand(const std::filesystem::path& file, const std::string& table) {
    // Whoever reads the output may take any time, and writers must not wait for that: the rows are
    // those of a copy.
    jet::Database database = jet::Database::open(file, jet::Access::ReadOnly).copyInMemory();
    Output output;
    const std::vector<std::string> names =
        table.empty() ? database.tableNames() : std::vector<std::string>{table};
    for (const std::string& name : names) dumpTable(database.table(name), output);
    output.finish();
    return kDone;
}

}  // namespace stelvan::gemdb
