// Creates an Access file with one table, changes a row, and reads it back.
#include <array>
#include <iostream>

#include "jet/database.h"
#include "jet/rows/value_text.h"

using namespace stelvan::jet;

int main(int argc, char** argv) try {
    if (argc != 2) throw std::runtime_error("usage: example NEW-FILE.mdb");
    Database::create(argv[1], DateTime{45658});
    Database database = Database::open(argv[1]);

    TableSpec tools{"tool", {}, {}};
    tools.columns.push_back({.name = "id", .type = ColumnType::Long});
    tools.columns.push_back({.name = "name", .type = ColumnType::Text, .length = 2 * 50});
    tools.indexes.push_back(
        {.name = "PrimaryKey", .columns = {{0}}, .primary = true, .unique = true});
    database.createTable(tools);

    UnitOfWork unit(database);  // all that follows, or nothing of it
    Table& table = database.table("tool");
    const RowId etcher =
        table.insert(std::array{ColumnValue{0, 1}, ColumnValue{1, std::string("Etcher")}});
    table.insert(std::array{ColumnValue{0, 2}, ColumnValue{1, std::string("Coater")}});
    table.update(etcher, std::array{ColumnValue{1, std::string("Dry etcher")}});
    unit.commit();

    for (const auto rows = table.inOrder(0, {0, 1}); rows->next();)
        std::cout << textOf(toValue(rows->value(0))) << ' ' << textOf(toValue(rows->value(1)))
                  << '\n';
} catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
}
