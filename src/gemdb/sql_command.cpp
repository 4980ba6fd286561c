#include <algorithm>
#include <functional>
#include <optional>

#include "base/text.h"
#include "db/connection.h"
#include "db/record_set.h"
#include "gemdb/commands.h"
#include "gemdb/json_line.h"
#include "sql/tokens.h"

namespace stelvan::gemdb {
namespace {

/// Whether the statement begins with the word SELECT.
bool isSelect(std::string_view statement) {
    return base::sameWord(sql::firstWord(statement), "SELECT");
}

std::string connectionText(const std::filesystem::path& file, bool writing) {
    return std::string("Provider=Microsoft.Jet.OLEDB.4.0;Persist Security Info=False; Mode=") +
           (writing ? "Read|Write" : "Read") + ";Data Source=" + file.string();
}

std::string rowLine(const db::Recordset& records) {
    JsonLine line;
    line.open('{');
    for (std::size_t column = 0; column < records.fieldCount(); ++column) {
        line.member(records.fieldName(column)).value(jet::toView(records.field(column)));
    }
    return line.close('}').take();
}

void runSelect(const std::string& statement, db::Connection& connection,
               const std::function<void(const std::string&)>& write) {
    db::Recordset records;
    records.open(statement, connection, db::CursorType::Static, db::LockType::ReadOnly);
    for (; !records.eof(); records.moveNext()) write(rowLine(records));
    records.close();
}

/// Runs `body` for the n-th of several statements: a failure tells which one it was.
template <class Body>
void named(std::size_t number, const std::vector<std::string>& statements, const Body& body) {
    try {
        body(statements[number - 1]);
    } catch (const base::RunTimeError& failure) {
        if (statements.size() == 1) throw;
        throw base::RunTimeError(failure.number(), "statement " + std::to_string(number) + " (" +
                                                       statements[number - 1] +
                                                       "): " + failure.what());
    }
}

}  // namespace

/// Rows read beside statements that write are held back until the unit of work has been committed:
/// what is printed is then true of the file.
int sqlCommand(const std::filesystem::path& file, const std::vector<std::string>& statements) {
    const bool writing = !std::ranges::all_of(statements, isSelect);
    std::optional<db::UnitOfWork> unit;
    if (writing) unit.emplace(file.string());
    db::Connection connection;
    connection.setConnectionText(connectionText(file, writing));
    connection.open();

    Output output;
    std::string held;
    const auto write = [&](const std::string& line) {
        writing ? (void)(held += line) : output.write(line);
    };
    const auto run = [&](const std::string& statement) {
        isSelect(statement) ? runSelect(statement, connection, write)
                            : connection.execute(statement);
    };
    for (std::size_t number = 1; number <= statements.size(); ++number)
        named(number, statements, run);
    if (unit) unit->commit();
    output.write(held);
    output.finish();
    return kDone;
}

}  // namespace stelvan::gemdb
