#include "tests/bench/contestants.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

#include "data/builder/build_model.h"
#include "data/builder/generated_model.h"
#include "jet/rows/conversion.h"
#include "jet/rows/row_reader.h"

namespace stelvan::bench {
namespace {

namespace fs = std::filesystem;

void buildAccessFile(const fs::path& file, std::size_t rows) {
    const data::Schema schema =
        data::parseSchema(data::readText(STELVAN_SOURCE_DIR "/data/schema.txt"));
    data::buildModel(file, schema, std::array{data::generateVariables(0, rows)});
}

void buildWholeModel(const fs::path& file, const data::ModelSize& size) {
    const std::string texts = STELVAN_SOURCE_DIR "/data/";
    std::vector<data::TableRows> rows = data::readTables(texts + "standard");
    for (data::TableRows& more : data::generateModel(size)) rows.push_back(std::move(more));
    data::buildModel(file, data::parseSchema(data::readText(texts + "schema.txt")), rows);
}

std::vector<std::vector<jet::ColumnValue>> valuesOf(const data::TableRows& rows,
                                                    const jet::TableInfo& table) {
    std::vector<std::vector<jet::ColumnValue>> values;
    for (const auto& cells : rows.rows) {
        std::vector<jet::ColumnValue> row;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const std::size_t column = table.findColumn(rows.columns[i]).value();
            row.emplace_back(column, jet::convertTo(table.columns[column], cells[i].value()));
        }
        values.push_back(std::move(row));
    }
    return values;
}

/// Column types and keys as the Access file has them, in SQLite's own best form.
void buildSqliteFile(const fs::path& file, const fs::path& accessFile) {
    jet::Database access = jet::Database::open(accessFile, jet::Access::ReadOnly);
    const jet::TableInfo table = access.table(kTable).info();
    std::string columns;
    for (const jet::ColumnInfo& column : table.columns) {
        if (!columns.empty()) columns += ", ";
        columns += column.name + (column.type == jet::ColumnType::Long ? " INTEGER" : " TEXT");
        if (column.name == "var_id") columns += " PRIMARY KEY";
    }
    Sqlite sqlite(file);
    sqlite.run(("CREATE TABLE secs_cusvar (" + columns + ")").c_str());
    sqlite.run("CREATE UNIQUE INDEX var_name ON secs_cusvar (var_name)");
    sqlite.run("CREATE INDEX var_parentkey ON secs_cusvar (var_parentkey)");
    sqlite.run("BEGIN");
    sqlite3_stmt* insert = sqlite.prepare(insertText(table.columns.size()));
    for (const auto& row : valuesOf(data::generateVariables(0, kRows), table)) {
        bindRow(insert, row);
        sqlite3_step(insert);
        sqlite3_reset(insert);
    }
    sqlite.run("COMMIT");
}

struct Weigh {
    std::size_t& sum;
    void operator()(std::string_view text) const { sum += text.size(); }
    void operator()(std::span<const std::uint8_t> bytes) const { sum += bytes.size(); }
    template <typename Other>
    void operator()(const Other&) const {
        ++sum;
    }
};

}  // namespace

std::size_t readAll(const std::filesystem::path& file) {
    jet::Database database = jet::Database::open(file, jet::Access::ReadOnly);
    jet::Table& table = database.table(kTable);
    const jet::ColumnSet all = jet::allColumns(table.info());
    std::size_t sum = 0;
    const auto rows = table.scan(all);
    while (rows->next()) {
        for (const std::size_t column : all) std::visit(Weigh{sum}, rows->value(column));
    }
    return sum;
}

Files& Files::get() {
    static Files files;
    return files;
}

Files::Files() : folder_(fs::path(STELVAN_BINARY_DIR) / ("bench-" + std::to_string(::getpid()))) {
    fs::create_directories(folder_);
}

Files::~Files() {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

const fs::path& Files::accessFile() {
    if (access_.empty()) buildAccessFile(access_ = folder_ / "gem.mdb", kRows);
    return access_;
}

const fs::path& Files::hugeAccessFile() {
    if (huge_.empty()) buildAccessFile(huge_ = folder_ / "huge.mdb", 4 * kRows);
    return huge_;
}

const fs::path& Files::sqliteFile() {
    if (sqlite_.empty()) buildSqliteFile(sqlite_ = folder_ / "gem.sqlite", accessFile());
    return sqlite_;
}

const fs::path& Files::modelFile() {
    if (model_.empty())
        buildWholeModel(model_ = folder_ / "model.mdb",
                        {.variables = kRows, .events = 2000, .alarms = 2000, .reports = 2000});
    return model_;
}

const fs::path& Files::standardFile() {
    if (standard_.empty()) buildWholeModel(standard_ = folder_ / "standard.mdb", {});
    return standard_;
}

fs::path Files::copyOf(const fs::path& file) {
    const fs::path copy = folder_ / ("copy" + file.extension().string());
    fs::copy_file(file, copy, fs::copy_options::overwrite_existing);
    const int descriptor = ::open(copy.c_str(), O_RDONLY);
    ::fsync(descriptor);
    ::close(descriptor);
    return copy;
}

const std::vector<std::vector<jet::ColumnValue>>& newRows(const jet::TableInfo& table) {
    static const auto kNewRows = valuesOf(data::generateVariables(kRows, kInserted), table);
    return kNewRows;
}

Sqlite::Sqlite(const fs::path& file) {
    sqlite3* connection = nullptr;
    const int failed = sqlite3_open(file.c_str(), &connection);
    connection_.reset(connection);
    if (failed != SQLITE_OK) throw std::runtime_error("SQLite cannot open " + file.string());
    run("PRAGMA journal_mode = DELETE");
    run("PRAGMA synchronous = FULL");
}

void Sqlite::run(const char* sql) const {
    if (sqlite3_exec(connection_.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) {
        throw std::runtime_error(sqlite3_errmsg(connection_.get()));
    }
}

sqlite3_stmt* Sqlite::prepare(const std::string& sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(connection_.get(), sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) {
        throw std::runtime_error(sqlite3_errmsg(connection_.get()));
    }
    statements_.emplace_back(statement);
    return statement;
}

std::string insertText(std::size_t columns) {
    std::string parameters = "?";
    for (std::size_t column = 1; column < columns; ++column) parameters += ", ?";
    return std::string("INSERT INTO ") + kTable + " VALUES (" + parameters + ")";
}

void bindRow(sqlite3_stmt* statement, const std::vector<jet::ColumnValue>& row) {
    for (const auto& [column, value] : row) {
        const int parameter = static_cast<int>(column) + 1;
        if (const auto* number = std::get_if<std::int32_t>(&value)) {
            sqlite3_bind_int(statement, parameter, *number);
        } else if (const auto* text = std::get_if<std::string>(&value)) {
            sqlite3_bind_text(statement, parameter, text->data(), static_cast<int>(text->size()),
                              SQLITE_STATIC);
        }
    }
}

}  // namespace stelvan::bench
