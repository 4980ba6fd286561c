// What views of many rows ask a record set: all rows without the cursor, and where they are kept.
#include <gtest/gtest.h>

#include <numeric>

#include "db/current_records.h"
#include "jet/database.h"
#include "tests/db/gem_file.h"

namespace stelvan::db {
namespace {

using test::failureOf;
using test::GemFile;

constexpr const char* kEvents = "select * from secs_cusevent";
constexpr int kNoItem = 3265;

std::shared_ptr<Recordset> browsed(const GemFile& file) {
    return DataSource{file.connectionText(), kEvents}.refresh();
}

std::vector<std::int32_t> allRows(const Recordset& records) {
    std::vector<std::int32_t> rows(static_cast<std::size_t>(records.storedCount()));
    std::iota(rows.begin(), rows.end(), 0);
    return rows;
}

/// The first field of the rows, "gone" for what is gone.
std::vector<std::string> firstFields(const Recordset& records,
                                     const std::vector<std::int32_t>& rows) {
    std::vector<std::string> texts(rows.size());
    records.eachStored(rows, [&](std::size_t at, const std::vector<Value>* values) {
        texts[at] = values == nullptr ? "gone" : toTextOrEmpty(values->front());
    });
    return texts;
}

TEST(StoredRows, AreShownInTheOrderAskedForWhetherLookedAtBeforeOrNot) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = browsed(file);
    const std::vector<std::string> ids = file.column(kEvents);
    ASSERT_EQ(ids.size(), 70u);
    (void)records->storedField(5, 0);
    EXPECT_EQ(firstFields(*records, allRows(*records)), ids);
    EXPECT_EQ(firstFields(*records, {69, 5, 0, 5}),
              (std::vector<std::string>{ids[69], ids[5], ids[0], ids[5]}));
    EXPECT_EQ(failureOf([&] { firstFields(*records, {70}); }).number(), kNoItem);
}

TEST(StoredRows, ThatWereDeletedMeanwhileAreShownAsGone) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = browsed(file);
    const std::vector<std::string> ids = file.column(kEvents);
    file.execute("DELETE FROM secs_cusevent WHERE evt_id = " + ids[3]);
    const auto now = firstFields(*records, {2, 3, 4});
    EXPECT_EQ(now, (std::vector<std::string>{ids[2], "gone", ids[4]}));
    EXPECT_EQ(records->recordCount(), 70);
}

TEST(StoredRows, AreFoundByTheirPlaceInTheFile) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = browsed(file);
    for (const std::int32_t row : {0, 33, 69}) {
        records->setBookmark(records->storedBookmark(row));
        const std::optional<jet::RowId> place = records->place();
        ASSERT_TRUE(place.has_value());
        EXPECT_EQ(records->storedAt(*place), row);
        EXPECT_EQ(records->position(), row + 1);
    }
    EXPECT_EQ(records->storedAt(jet::RowId{1, 1}), std::nullopt);
    records->addNew();
    EXPECT_EQ(records->place(), std::nullopt);
    EXPECT_EQ(failureOf([&] { (void)records->storedBookmark(70); }).number(), kNoItem);
}

TEST(StoredRows, OfAJoinHaveNoPlace) {
    STELVAN_GEM_FILE("gem.mdb");
    const auto records = file.records("SELECT evt_id, rpt_name FROM secs_def_evt_rpt, secs_report");
    ASSERT_TRUE(records->onRecord());
    EXPECT_EQ(records->place(), std::nullopt);
    EXPECT_EQ(records->storedAt(jet::RowId{1, 1}), std::nullopt);
}

}  // namespace
}  // namespace stelvan::db
