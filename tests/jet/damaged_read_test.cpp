// Damaged files: an error that says so, or rows; never a crash, a hang, or a changed file.
#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <set>

#include "jet/database.h"
#include "tests/jet/file_bytes.h"
#include "tests/jet/memory_pages.h"
#include "tests/jet/row_text.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

using jet::Database;
using jet::ErrorKind;

/// Rounds of each random test; more where the environment asks for more.
int rounds(int usual) {
    const char* factor = std::getenv("STELVAN_TEST_ROUNDS");
    return factor == nullptr ? usual : usual * std::max(1, std::atoi(factor));
}

struct Outcome {
    std::set<std::string> readable;
    std::set<std::string> damaged;
    std::optional<ErrorKind> refused;  // on opening, or when the tables are listed
};

/// Walks every index that can be walked, row by row.
void readInOrder(jet::Table& table) {
    const jet::TableInfo info = table.info();
    for (std::size_t index = 0; index < info.indexes.size(); ++index) {
        const auto cursor = table.inOrder(index, {0});
        while (cursor->next()) static_cast<void>(cursor->value(0));
    }
}

/// Reads everything that the database holds, table by table, row by row and in the order of every
/// index.
Outcome readEverything(Database& database) {
    Outcome outcome;
    try {
        static_cast<void>(database.relationships());
    } catch (const jet::Error& error) {
        EXPECT_EQ(error.kind(), ErrorKind::Corrupt) << error.what();
    }
    for (const std::string& name : database.tableNames(true)) {
        try {
            static_cast<void>(readRows(database.table(name)));
            readInOrder(database.table(name));
            outcome.readable.insert(name);
        } catch (const jet::Error& error) {
            EXPECT_EQ(error.kind(), ErrorKind::Corrupt) << error.what();
            EXPECT_TRUE(error.page().has_value()) << error.what();
            outcome.damaged.insert(name);
        }
    }
    return outcome;
}

Outcome openAndRead(const std::string& path) {
    try {
        Database database = Database::open(path);
        return readEverything(database);
    } catch (const jet::Error& error) {
        Outcome outcome;
        outcome.refused = error.kind();
        return outcome;
    }
}

class RefusedFile : public testing::Test {
protected:
    /// Reads a scratch copy and makes sure that it stays as it was.
    Outcome read(const std::string& name) {
        const auto source = model("refused/" + name + "/gem.mdb");
        const auto copy = scratch_.copyOf(source);
        Outcome outcome = openAndRead(copy);
        EXPECT_EQ(bytesOf(copy), bytesOf(source));
        return outcome;
    }

private:
    ScratchDir scratch_;
};

TEST_F(RefusedFile, OfAnotherVersionIsRefusedOnOpening) {
    EXPECT_EQ(read("access97").refused, ErrorKind::UnsupportedVersion);
    EXPECT_EQ(read("access2007").refused, ErrorKind::UnsupportedVersion);
}

TEST_F(RefusedFile, ThatIsNoDatabaseIsRefusedOnOpening) {
    EXPECT_EQ(read("text_file").refused, ErrorKind::NotADatabase);
    EXPECT_EQ(read("zero_length").refused, ErrorKind::NotADatabase);
    EXPECT_EQ(read("wrong_signature").refused, ErrorKind::NotADatabase);
}

TEST_F(RefusedFile, CutWithinAPageIsRefused) {
    const Outcome outcome = read("truncated");
    EXPECT_TRUE(outcome.refused == ErrorKind::Corrupt || !outcome.damaged.empty());
}

TEST_F(RefusedFile, CutAfterAPageGivesTheTablesThatAreWhole) {
    const Outcome outcome = read("truncated_at_page");
    EXPECT_FALSE(outcome.refused.has_value());
    EXPECT_FALSE(outcome.damaged.empty());
    EXPECT_FALSE(outcome.readable.empty());
}

TEST_F(RefusedFile, WithNoiseForACatalogueIsRefused) {
    EXPECT_EQ(read("damaged_catalogue").refused, ErrorKind::Corrupt);
}

TEST_F(RefusedFile, WithARingOfPagesGivesAnErrorForThatTable) {
    const Outcome outcome = read("damaged_ring");
    EXPECT_TRUE(outcome.damaged.contains("secs_cusvar"));
    EXPECT_TRUE(outcome.readable.contains("secs_setting"));
}

TEST_F(RefusedFile, WithImpossibleRowsGivesErrorsForThoseTables) {
    const Outcome outcome = read("damaged_rows");
    EXPECT_FALSE(outcome.damaged.empty());
    EXPECT_FALSE(outcome.readable.empty());
}

TEST_F(RefusedFile, WithBadMemoReferencesGivesAllOtherRows) {
    ScratchDir scratch;
    Database database = Database::open(scratch.copyOf(model("refused/damaged_memo/gem.mdb")));
    std::size_t good = 0;
    std::size_t bad = 0;
    for (const std::string& name : database.tableNames()) {
        jet::Table& table = database.table(name);
        const auto cursor = table.scan(jet::ColumnSet{0, 1, 2, 3, 4, 5});
        while (cursor->next()) {
            try {
                static_cast<void>(rowText(table.info(), *cursor));
                ++good;
            } catch (const jet::Error& error) {
                EXPECT_EQ(error.kind(), ErrorKind::Corrupt);
                EXPECT_TRUE(error.page().has_value());
                ++bad;
            }
        }
    }
    EXPECT_EQ(bad, 4U);
    EXPECT_GT(good, 900U);
}

class DamagedCopy : public testing::TestWithParam<ModelFile> {
protected:
    void readCopy(const std::vector<std::uint8_t>& bytes) {
        try {
            Database database = Database::over(std::make_shared<MemoryPages>(bytes));
            static_cast<void>(readEverything(database));
        } catch (const jet::Error&) {
            // Refused as a whole.
        }
    }
};

TEST_P(DamagedCopy, GivesAnErrorOrRows) {
    STELVAN_NEEDS_FILE(GetParam());
    const auto original = bytesOf(GetParam().path());
    std::mt19937 random(20261121);
    const auto pick = [&](std::size_t below) {
        return std::uniform_int_distribution<std::size_t>(0, below - 1)(random);
    };
    for (int round = 0; round < rounds(100); ++round) {
        SCOPED_TRACE(round);
        auto bytes = original;
        const std::size_t flips = 1 + pick(40);
        for (std::size_t i = 0; i < flips; ++i) {
            // Half of them in the first bytes of a page, where the structure is.
            const std::size_t page = 1 + pick(bytes.size() / jet::kPageSize - 1);
            const std::size_t offset = pick(2) == 0 ? pick(64) : pick(jet::kPageSize);
            bytes[page * jet::kPageSize + offset] = static_cast<std::uint8_t>(pick(256));
        }
        readCopy(bytes);
    }
}

TEST_P(DamagedCopy, ThatIsCutGivesAnErrorOrRows) {
    STELVAN_NEEDS_FILE(GetParam());
    const auto original = bytesOf(GetParam().path());
    std::mt19937 random(20261122);
    for (int round = 0; round < rounds(10); ++round) {
        auto bytes = original;
        bytes.resize(std::uniform_int_distribution<std::size_t>(0, bytes.size())(random));
        readCopy(bytes);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Models, DamagedCopy,
    testing::ValuesIn(byEveryMaker({"gem.mdb", "gem_int_flags.mdb", "gem_edges.mdb",
                                    "shapes/compressed_text.mdb", "shapes/deleted_columns.mdb",
                                    "shapes/descending_index.mdb", "shapes/long_memo.mdb",
                                    "shapes/overflow.mdb", "shapes/relationships.mdb"})),
    [](const auto& file) { return label(file.param); });

}  // namespace
}  // namespace stelvan::test
