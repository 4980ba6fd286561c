// A writable copy of a model file, and what the tests of this floor do with it again and again.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/run_time_error.h"
#include "db/connection.h"
#include "db/record_set.h"
#include "db/value_text.h"
#include "tests/support/models.h"

namespace stelvan::db::test {

class GemFile {
public:
    explicit GemFile(const std::filesystem::path& master) : path_(scratch_.copyOf(master)) {}

    [[nodiscard]] std::string path() const { return path_.string(); }
    [[nodiscard]] std::string connectionText() const {
        return "Provider=Microsoft.Jet.OLEDB.4.0;Persist Security Info=False; Mode=Read|Write;Data "
               "Source=" +
               path();
    }
    void open(Connection& connection) const {
        connection.setConnectionText(connectionText());
        connection.open();
    }
    /// A record set of its own connection, which is closed again.
    [[nodiscard]] std::shared_ptr<Recordset> records(const std::string& sql) const {
        Connection connection;
        open(connection);
        auto records = std::make_shared<Recordset>();
        records->open(sql, connection);
        return records;
    }
    void execute(const std::string& sql) const {
        Connection connection;
        open(connection);
        connection.execute(sql);
    }
    /// All rows as text, Null as "<null>".
    [[nodiscard]] std::vector<std::vector<std::string>> rows(const std::string& sql) const {
        std::vector<std::vector<std::string>> result;
        const auto set = records(sql);
        for (; !set->eof(); set->moveNext()) {
            auto& row = result.emplace_back();
            for (std::size_t field = 0; field < set->fieldCount(); ++field) {
                const Value value = set->field(field);
                row.push_back(jet::isNull(value) ? "<null>" : toText(value));
            }
        }
        return result;
    }
    /// The first column of all rows.
    [[nodiscard]] std::vector<std::string> column(const std::string& sql) const {
        std::vector<std::string> result;
        for (const auto& row : rows(sql)) result.push_back(row.front());
        return result;
    }

private:
    stelvan::test::ScratchDir scratch_;
    std::filesystem::path path_;
};

/// The everyday model in every layout, of every maker that is present; RefusedFile tells where
/// other makers' files are absent.
inline std::vector<stelvan::test::ModelFile> everyLayout() {
    std::vector<stelvan::test::ModelFile> files = stelvan::test::byEveryMaker(
        {"gem.mdb", "gem_int_flags.mdb", "gem_spellings.mdb", "gem_few_columns.mdb"});
    std::erase_if(files, [](const auto& file) { return file.path().empty(); });
    return files;
}

/// The failure that `body` ends with; number 0 where it ends well.
inline base::RunTimeError failureOf(const std::function<void()>& body) {
    try {
        body();
    } catch (const base::RunTimeError& error) {
        return error;
    }
    return {0, ""};
}

}  // namespace stelvan::db::test

/// Declares `file`, a copy of a model of the tests.
#define STELVAN_GEM_FILE(name) const stelvan::db::test::GemFile file(stelvan::test::model(name))
