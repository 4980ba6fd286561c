// Statements over a file that others are writing to: processes that move amounts between rows, and
// readers to whom the sum is always the same, whichever way they ask for the rows.

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "base/run_time_error.h"
#include "db/connection.h"
#include "db/error_map.h"
#include "db/record_set.h"
#include "jet/database.h"
#include "tests/crash/child_process.h"
#include "tests/crash/table_parts.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;
using jet::ColumnType;

constexpr int kRows = 60;  // of 400 characters and more each: on many pages
constexpr int kAmount = 100;
constexpr std::size_t kWriters = 4;
constexpr int kReaders = 3;

/// Accounts, and for every writer how many units it has done.
void build(const fs::path& path) {
    jet::Database database = jet::Database::create(path, {42000.5});
    database.createTable({"accounts",
                          {column("id", ColumnType::Long), column("amount", ColumnType::Long),
                           column("filling", ColumnType::Text, 510)},
                          {index("PrimaryKey", 0, true)}});
    database.createTable({"writers",
                          {column("id", ColumnType::Long), column("units", ColumnType::Long)},
                          {index("PrimaryKey", 0, true)}});
    for (int id = 1; id <= kRows; ++id) {
        database.table("accounts")
            .insert(std::vector<jet::ColumnValue>{
                {0, id},
                {1, kAmount},
                {2, std::string(static_cast<std::size_t>(200 + id % 50), 'x')}});
    }
    for (int id = 0; id < static_cast<int>(kWriters); ++id)
        database.table("writers").insert(std::vector<jet::ColumnValue>{{0, id}, {1, 0}});
}

/// How long the processes run: seconds, more where the environment asks for more.
std::chrono::seconds duration() {
    const char* wanted = std::getenv("STELVAN_TEST_SECONDS");
    return std::chrono::seconds(wanted == nullptr ? 3 : std::max(1, std::atoi(wanted)));
}

class OneMoment : public ::testing::Test {
protected:
    void SetUp() override { build(path_); }

    void open(db::Connection& connection) const {
        connection.setConnectionText(
            "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + path_.string() + "; Mode=Read|Write");
        connection.open();
    }
    std::vector<int> numbers(const std::string& sql) const {
        db::Connection connection;
        open(connection);
        db::Recordset records;
        records.open(sql, connection);
        std::vector<int> found;
        for (; !records.eof(); records.moveNext())
            found.push_back(std::stoi(db::toText(records.field(std::size_t{0}))));
        return found;
    }
    int sum(const std::string& sql) const {
        const std::vector<int> found = numbers(sql);
        return std::accumulate(found.begin(), found.end(), 0);
    }
    void execute(const std::string& sql) const {
        db::Connection connection;
        open(connection);
        connection.execute(sql);
    }

    /// One unit of work: moves an amount from one row to another, and counts itself.
    void move(int from, int to, int amount, std::size_t writer) const {
        db::UnitOfWork unit(path_.string());
        execute("UPDATE accounts SET amount = amount - " + std::to_string(amount) +
                " WHERE id = " + std::to_string(from));
        execute("UPDATE accounts SET amount = amount + " + std::to_string(amount) +
                " WHERE id = " + std::to_string(to));
        execute("UPDATE writers SET units = units + 1 WHERE id = " + std::to_string(writer));
        unit.commit();
    }
    /// Writes until told to stop. A turn that could not be had is no unit.
    bool writesUntil(const SharedNumber& stop, const SharedNumber& units,
                     std::size_t writer) const {
        std::mt19937 random(static_cast<std::uint32_t>(::getpid()));
        std::uniform_int_distribution<int> row(1, kRows);
        while (*stop == 0) {
            try {
                move(row(random), row(random), 1, writer);
                ++*units;
            } catch (const base::RunTimeError& failure) {
                if (failure.number() != db::provider::kFailed) throw;
            }
        }
        return true;
    }
    /// Asks in every way until told to stop; how often a sum was not the one of every moment.
    bool readsWellUntil(const SharedNumber& stop, const SharedNumber& looks,
                        const SharedNumber& halves) const {
        while (*stop == 0) {
            for (const std::string& sql : kQuestions) {
                if (sum(sql) != kRows * kAmount) ++*halves;
                ++*looks;
            }
        }
        return true;
    }

    inline static const std::vector<std::string> kQuestions{
        "SELECT amount FROM accounts",
        "SELECT amount FROM accounts WHERE id > 0",
        "SELECT amount, filling, id FROM accounts ORDER BY filling",
        "SELECT a.amount FROM accounts a INNER JOIN accounts b ON a.id = b.id",
        "SELECT SUM(amount) FROM accounts",
    };

    ScratchDir scratch_;
    fs::path path_ = scratch_.path() / "gem.mdb";
};

TEST_F(OneMoment, NoReaderSeesHalfAUnitAndNoUnitIsLostWhoeverIsKilled) {
    const SharedNumber stop;
    const SharedNumber looks;
    const SharedNumber halves;
    std::array<SharedNumber, kWriters> units;
    std::vector<std::unique_ptr<Child>> children;
    for (int reader = 0; reader < kReaders; ++reader) {
        children.push_back(
            std::make_unique<Child>([&] { return readsWellUntil(stop, looks, halves); }));
    }
    // The first writer dies again and again, and another takes its place; the others live.
    const auto writer = [&](std::size_t which) {
        return std::make_unique<Child>(
            [&, which] { return writesUntil(stop, units[which], which); });
    };
    for (std::size_t which = 1; which < kWriters; ++which) children.push_back(writer(which));
    std::mt19937 random(5);
    std::uint64_t killed = 0;
    const auto end = std::chrono::steady_clock::now() + duration();
    while (std::chrono::steady_clock::now() < end) {
        const auto victim = writer(0);
        std::this_thread::sleep_for(
            std::chrono::milliseconds(std::uniform_int_distribution<int>(20, 200)(random)));
        victim->kill();
        ++killed;
    }
    *stop = 1;
    for (const auto& child : children) EXPECT_TRUE(child->wait());

    EXPECT_GT(*looks, 0U);
    EXPECT_EQ(*halves, 0U) << "of " << *looks << " looks";
    EXPECT_EQ(sum("SELECT amount FROM accounts"), kRows * kAmount);
    const std::vector<int> stored = numbers("SELECT units FROM writers");
    for (std::size_t which = 1; which < kWriters; ++which) {
        EXPECT_GT(*units[which], 0U);
        EXPECT_EQ(static_cast<std::uint64_t>(stored[which]), *units[which]);
    }
    // A unit may be done before its writer could count it.
    EXPECT_GE(static_cast<std::uint64_t>(stored[0]), *units[0]);
    EXPECT_LE(static_cast<std::uint64_t>(stored[0]), *units[0] + killed);
}

TEST_F(OneMoment, AReaderThatTakesVeryLongKeepsNoWriterOut) {
    const SharedNumber started;
    const SharedNumber ended;
    Child reader([&] {
        *started = 1;
        (void)sum(
            "SELECT SUM(a.amount + b.amount + c.amount + d.amount + e.amount + f.amount) "
            "FROM accounts a, accounts b, accounts c, accounts d, accounts e, accounts f");
        *ended = 1;
        return true;
    });
    ASSERT_TRUE(reader.runsUntil(started, 1));
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(3);
    while (std::chrono::steady_clock::now() < end) move(1, 2, 1, 0);
    EXPECT_EQ(*ended, 0U) << "it was to read on all the while";
    reader.kill();
    EXPECT_EQ(sum("SELECT amount FROM accounts"), kRows * kAmount);
}

}  // namespace
}  // namespace stelvan::test
