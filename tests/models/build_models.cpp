// Builds the models that the tests open, and what they are known to hold, into one folder. A step
// of the build; see models.cmake.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "data/builder/build_model.h"
#include "data/builder/generated_model.h"
#include "tests/models/damaged_files.h"
#include "tests/models/deleted_columns.h"
#include "tests/models/expected_content.h"
#include "tests/models/generated_rows.h"
#include "tests/models/looser_rows.h"
#include "tests/models/used_rows.h"

namespace {

namespace fs = std::filesystem;
using namespace stelvan;
using Tables = std::vector<data::TableRows>;

/// How a model's rows come to be what the file holds.
enum class Life { Fresh, Used };

struct TestModel {
    const char* file;
    const char* schema;
    std::vector<const char*> rows = {};  // folders
    Tables (*generate)() = [] { return Tables(); };
    void (*change)(Tables&) = [](Tables&) {};
    Life life = Life::Fresh;
    const char* deletedColumn = nullptr;  // of the first table
};

const std::vector<TestModel>& testModels() {
    using namespace data::test;
    static const std::vector<TestModel> kModels = {
        {.file = "gem",
         .schema = "small",
         .rows = {"settings", "standard", "small"},
         .life = Life::Used},
        {.file = "gem_int_flags",
         .schema = "looser",
         .rows = {"settings", "standard", "small"},
         .change = loosen,
         .life = Life::Used},
        {.file = "gem_empty", .schema = "small"},
        {.file = "gem_edges", .schema = "small", .rows = {"settings", "edges"}},
        {.file = "gem_large",
         .schema = "small",
         .rows = {"settings", "standard"},
         .generate = largeModel},
        {.file = "gem_spellings", .schema = "spellings", .rows = {"settings", "standard", "small"}},
        {.file = "gem_few_columns",
         .schema = "few_columns",
         .rows = {"settings", "standard", "small"},
         .change = dropOptionalColumns},
        {.file = "shapes/compressed_text",
         .schema = "shapes/compressed_text",
         .rows = {"shapes/compressed_text"}},
        {.file = "shapes/deleted_columns",
         .schema = "shapes/deleted_columns",
         .rows = {"shapes/deleted_columns"},
         .deletedColumn = "forgotten"},
        {.file = "shapes/deleted_rows",
         .schema = "shapes/deleted_rows",
         .rows = {"shapes/deleted_rows"},
         .life = Life::Used},
        {.file = "shapes/descending_index",
         .schema = "shapes/descending_index",
         .generate = descendingNumbers},
        {.file = "shapes/index_cursor", .schema = "shapes/index_cursor"},
        {.file = "shapes/long_memo", .schema = "shapes/long_memo", .generate = longMemos},
        {.file = "shapes/no_rows", .schema = "shapes/no_rows"},
        {.file = "shapes/no_user_tables", .schema = "shapes/no_user_tables"},
        {.file = "shapes/numeric", .schema = "shapes/numeric", .rows = {"shapes/numeric"}},
        {.file = "shapes/overflow",
         .schema = "shapes/overflow",
         .generate = growingRows,
         .life = Life::Used},
        {.file = "shapes/relationships",
         .schema = "shapes/relationships",
         .rows = {"shapes/relationships"}},
        {.file = "shapes/text_index_empty", .schema = "shapes/text_index_empty"},
    };
    return kModels;
}

Tables rowsOf(const TestModel& made, const fs::path& texts) {
    Tables tables;
    for (const char* folder : made.rows) {
        Tables more = data::readTables(texts / folder);
        std::move(more.begin(), more.end(), std::back_inserter(tables));
    }
    Tables more = made.generate();
    std::move(more.begin(), more.end(), std::back_inserter(tables));
    made.change(tables);
    return tables;
}

void build(const TestModel& made, const fs::path& texts, const fs::path& folder) {
    const fs::path path = folder / (std::string(made.file) + ".mdb");
    const fs::path schemaText = texts / "schemas" / (std::string(made.schema) + ".txt");
    data::Schema schema = data::parseSchema(data::readText(schemaText));
    const Tables tables = rowsOf(made, texts);
    fs::create_directories(path.parent_path());
    fs::remove(path);
    data::buildModel(path, schema, tables,
                     made.life == Life::Used ? data::test::insertAsUsed : data::insertRows);
    if (made.deletedColumn != nullptr) {
        data::test::deleteColumn(path, schema.tables[0].name, made.deletedColumn);
        data::test::forgetColumn(schema.tables[0], made.deletedColumn);
    }
    data::test::writeExpected(folder / "expected" / made.file, schema, tables);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: build_test_models TEXTS FOLDER\n");
        return 2;
    }
    try {
        for (const TestModel& made : testModels()) build(made, argv[1], argv[2]);
        data::test::writeDamagedFiles(fs::path(argv[2]) / "gem.mdb", fs::path(argv[2]) / "refused");
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "build_test_models: %s\n", failure.what());
        return 1;
    }
    return 0;
}
