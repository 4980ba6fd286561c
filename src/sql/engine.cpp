#include "sql/engine.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <utility>

#include "base/text.h"
#include "sql/dialect.h"
#include "sql/error.h"
#include "sql/read_limit.h"
#include "sql/refusals.h"
#include "sql/single_table.h"
#include "sql/sqlite_handle.h"
#include "sql/sqlite_values.h"
#include "sql/summary_select.h"
#include "sql/table_module.h"
#include "sql/type_check.h"

namespace stelvan::sql {

namespace {

/// SQLite's own names for a row's number are columns to no table of the file.
void refuseRowNumbers(const Statement& statement, const std::vector<ScopeTable>& scope) {
    constexpr std::array<std::string_view, 3> kRowNumbers{"ROWID", "OID", "_ROWID_"};
    for (const Token& token : statement.tokens) {
        const bool isNumber =
            std::any_of(kRowNumbers.begin(), kRowNumbers.end(), [&token](std::string_view name) {
                return token.isName() && base::sameWord(token.text, name);
            });
        if (!isNumber) continue;
        const bool isColumn =
            std::any_of(scope.begin(), scope.end(), [&token](const ScopeTable& table) {
                return table.info->findColumn(token.text).has_value();
            });
        if (!isColumn) refuseUnknownColumn();
    }
}

}  // namespace

struct Engine::State {
    explicit State(jet::Database& file) : database(file) {}

    /// Throws UnknownTable, and TypeMismatch for comparisons that Access refuses.
    Statement read(std::string_view sql);
    /// SQLite, opened when the first statement needs it: many connections never do.
    sqlite3* handle();
    TableModule& declare(const std::string& table);
    /// The first table that a statement names.
    [[nodiscard]] jet::Table& tableOf(const Statement& statement) {
        return database.table(statement.tableName(statement.tables.front()));
    }
    [[nodiscard]] Selection select(std::string_view sql, Take take, ReadLimit limit);

    jet::Database& database;
    CaughtFailure failure;
    std::map<std::string, std::unique_ptr<TableModule>>
        modules;  // by name; they outlive SQLite's use of them
    std::optional<SqliteHandle> sqlite;
};

Statement Engine::State::read(std::string_view sql) {
    Statement statement = parseStatement(sql);
    std::vector<ScopeTable> scope;
    for (const TableReference& reference : statement.tables) {
        Token& name = statement.tokens[reference.token];
        if (!database.hasTable(name.text)) refuseUnknownTable(name.text);
        const jet::TableInfo& info = database.table(name.text).info();
        name.kind = TokenKind::Name;
        name.text = info.name;
        scope.push_back({reference.alias, &info});
    }
    refuseRowNumbers(statement, scope);
    checkComparisons(statement.tokens, scope);
    return statement;
}

sqlite3* Engine::State::handle() {
    if (!sqlite) sqlite.emplace();
    return sqlite->get();
}

TableModule& Engine::State::declare(const std::string& table) {
    auto& module = modules[table];
    if (module == nullptr) module = std::make_unique<TableModule>(database.table(table), failure);
    module->declareTo(handle());
    return *module;
}

namespace {

/// Has SQLite give up what it does once a limit is spent.
class Watch {
public:
    Watch(sqlite3* handle, ReadLimit limit) : handle_(handle), limit_(limit) {
        constexpr int kStepsPerLook = 4096;
        sqlite3_progress_handler(handle_, kStepsPerLook, isSpent, &limit_);
    }
    ~Watch() { sqlite3_progress_handler(handle_, 0, nullptr, nullptr); }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

private:
    static int isSpent(void* limit) { return static_cast<ReadLimit*>(limit)->spent() ? 1 : 0; }

    sqlite3* handle_;
    ReadLimit limit_;
};

/// One prepared statement; what fails in it is thrown in our own words.
class Run {
public:
    Run(sqlite3* handle, CaughtFailure& failure, const Statement& statement, const Tokens& tokens,
        ReadLimit limit = {})
        : handle_(handle),
          failure_(failure),
          statement_(statement),
          watch_(handle, limit),
          translation_(translate(tokens)) {
        failure_.exception = nullptr;
        sqlite3_stmt* prepared = nullptr;
        const int size = static_cast<int>(translation_.text.size());
        const int result =
            sqlite3_prepare_v2(handle_, translation_.text.c_str(), size, &prepared, nullptr);
        prepared_.reset(prepared);
        if (result != SQLITE_OK) fail();
    }

    /// True on a row.
    bool step() {
        const int result = sqlite3_step(prepared_.get());
        if (result != SQLITE_ROW && result != SQLITE_DONE) fail();
        return result == SQLITE_ROW;
    }

    [[nodiscard]] sqlite3_stmt* get() const { return prepared_.get(); }

private:
    [[noreturn]] void fail() {
        if (sqlite3_errcode(handle_) == SQLITE_INTERRUPT) throw ReadLimit::Spent{};
        if (failure_.exception != nullptr)
            std::rethrow_exception(std::exchange(failure_.exception, nullptr));
        refuse(handle_, statement_, translation_);
    }

    sqlite3* handle_;
    CaughtFailure& failure_;
    const Statement& statement_;
    Watch watch_;
    Translation translation_;
    PreparedStatement prepared_;
};

std::vector<jet::Value> takeRow(sqlite3_stmt* prepared) {
    std::vector<jet::Value> row;
    const int columns = sqlite3_column_count(prepared);
    for (int column = 0; column < columns; ++column) {
        sqlite3_value* value = sqlite3_column_value(prepared, column);
        const auto type = typeDeclaredAs(sqlite3_column_decltype(prepared, column));
        row.push_back(type ? takeColumnValue(value, *type) : takeValue(value));
    }
    return row;
}

/// All rows of the table, in stored order.
void takeAll(jet::Table& table, RowPlaces& result, Take take, ReadLimit& limit) {
    const bool values = take == Take::Values;
    result.places.reserve(table.info().rows);
    if (values) result.rows.reserve(table.info().rows);
    const auto cursor = table.scan(values ? result.columns : jet::ColumnSet{});
    for (; cursor->next(); limit.check()) {
        result.places.push_back(cursor->rowId());
        if (values) result.rows.push_back(jet::valuesOf(*cursor, result.columns));
    }
}

void takeValues(jet::Table& table, RowPlaces& result, ReadLimit& limit) {
    result.rows.reserve(result.places.size());
    for (const jet::RowId place : result.places) {
        result.rows.push_back(jet::valuesOf(*table.row(place, result.columns), result.columns));
        limit.check();
    }
}

std::vector<jet::RowId> takePlaces(Run& run, bool ordered) {
    std::vector<jet::RowId> places;
    while (run.step()) places.push_back(jet::RowId::unpack(sqlite3_column_int64(run.get(), 0)));
    // Several index lookups joined by OR come one after the other.
    if (!ordered && !std::is_sorted(places.begin(), places.end()))
        std::sort(places.begin(), places.end());
    return places;
}

/// How Access calls an expression without a name: by its place.
std::string expressionName(int column) {
    constexpr int kFirstExpression = 1000;
    return "Expr" + std::to_string(kFirstExpression + column);
}

/// SQLite calls an expression without a name by its text.
std::string columnName(sqlite3_stmt* prepared, int column) {
    const std::string name = sqlite3_column_name(prepared, column);
    const bool isColumn = sqlite3_column_decltype(prepared, column) != nullptr;
    const bool isName = name.find_first_of("\"'() ") == std::string::npos;
    return isColumn || isName ? name : expressionName(column);
}

ComputedRows takeRows(Run& run) {
    ComputedRows result;
    const int columns = sqlite3_column_count(run.get());
    for (int column = 0; column < columns; ++column) {
        result.columns.push_back(columnName(run.get(), column));
    }
    while (run.step()) result.rows.push_back(takeRow(run.get()));
    return result;
}

}  // namespace

Selection Engine::State::select(std::string_view sql, Take take, ReadLimit limit) {
    const auto scope = database.beginRead();
    const Statement statement = read(sql);
    if (statement.kind != StatementKind::Select) {
        throw Error(ErrorKind::NotAStatement, "Invalid SQL statement; expected 'SELECT'.");
    }
    std::optional<SingleTableSelect> single;
    if (statement.tables.size() == 1) {
        if (const auto value = summaryOf(statement, tableOf(statement)))
            return ComputedRows{{expressionName(0)}, {{*value}}};
        single = asSingleTable(statement, tableOf(statement).info());
    }
    if (single && single->everyRow) {
        RowPlaces all{tableOf(statement).info().name, single->columns, database.moment(), {}, {}};
        takeAll(tableOf(statement), all, take, limit);
        return all;
    }
    for (const TableReference& table : statement.tables) declare(statement.tableName(table));
    const Tokens tokens = single ? selectingPlaces(statement, *single) : statement.tokens;
    Run run(handle(), failure, statement, tokens, limit);
    if (!single) return takeRows(run);
    RowPlaces found{tableOf(statement).info().name,
                    single->columns,
                    database.moment(),
                    takePlaces(run, single->ordered),
                    {}};
    if (take == Take::Values) takeValues(tableOf(statement), found, limit);
    return found;
}

Engine::Engine(jet::Database& database) : state_(std::make_unique<State>(database)) {}
Engine::~Engine() = default;

Selection Engine::select(std::string_view sql, Take take) {
    // Half of what a writer waits (file_locks.h): the other half is for the copy.
    constexpr std::chrono::milliseconds kLongestLook{1000};
    try {
        return state_->select(sql, take, ReadLimit(kLongestLook));
    } catch (const ReadLimit::Spent&) {
        jet::Database copy = state_->database.copyInMemory();
        return State(copy).select(sql, take, {});
    }
}

std::vector<jet::RowId> Engine::stillChosen(std::string_view sql,
                                            std::span<const jet::RowId> places) {
    const auto scope = state_->database.beginRead();
    const Statement statement = state_->read(sql);
    jet::Table& table = state_->tableOf(statement);
    const auto single = asSingleTable(statement, table.info());
    if (!single) return {};
    state_->declare(table.info().name);
    Run run(state_->handle(), state_->failure, statement, judgingPlace(statement, *single));
    std::vector<jet::RowId> chosen;
    for (const jet::RowId place : places) {
        sqlite3_bind_int64(run.get(), 1, place.packed());
        if (run.step()) chosen.push_back(place);
        sqlite3_reset(run.get());
    }
    return chosen;
}

std::int64_t Engine::execute(std::string_view sql) {
    jet::UnitOfWork unit(state_->database);
    const Statement statement = state_->read(sql);
    for (const TableReference& table : statement.tables)
        state_->declare(statement.tableName(table));
    if (auto columns = insertedColumns(statement)) {
        state_->declare(statement.tableName(statement.tables.front()))
            .insertNamesOnly(std::move(*columns));
    }
    std::int64_t changed = 0;
    {
        // Ends before the commit: no walk over the rows may live on behind it.
        Run run(state_->handle(), state_->failure, statement, statement.tokens);
        while (run.step()) {
        }
        if (statement.kind != StatementKind::Select) changed = sqlite3_changes64(state_->handle());
    }
    unit.commit();
    return changed;
}

}  // namespace stelvan::sql
