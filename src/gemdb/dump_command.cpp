#include "gemdb/commands.h"
#include "gemdb/json_line.h"
#include "jet/database.h"
#include "jet/rows/row_reader.h"

namespace stelvan::gemdb {
namespace {

/// One line for each row: {"table":T,"row":{column:value,...}}, columns in ascending number.
void dumpTable(jet::Table& table, Output& output) {
    const jet::TableInfo info = table.info();
    const jet::ColumnSet all = jet::allColumns(info);

    JsonLine line;
    const auto rows = table.scan(all);
    while (rows->next()) {
        line.open('{').member("table").text(info.name).member("row").open('{');
        for (const std::size_t column : all)
            line.member(info.columns[column].name).value(rows->value(column));
        output.write(line.close('}').close('}').take());
    }
}

}  // namespace

int dumpCommand(const std::filesystem::path& file, const std::string& table) {
    jet::Database database = jet::Database::open(file, jet::Access::ReadOnly);
    const auto unchanged = database.beginRead();
    Output output;
    const std::vector<std::string> names =
        table.empty() ? database.tableNames() : std::vector<std::string>{table};
    for (const std::string& name : names) dumpTable(database.table(name), output);
    output.finish();
    return kDone;
}

}  // namespace stelvan::gemdb
