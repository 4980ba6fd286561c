// The rows of a record set as the grid shows them.
#include "browser/records_model.h"

#include "tests/browser/browser_bench.h"

namespace stelvan::browser {
namespace {

class RecordsModelTest : public test::BrowserBench {
protected:
    std::shared_ptr<db::Recordset> rowsOf(const std::string& sql) {
        db::Connection connection;
        connection.setConnectionText(operations.connectionText());
        connection.open();
        auto records = std::make_shared<db::Recordset>();
        records->open(sql, connection);
        return records;
    }
};

TEST_F(RecordsModelTest, AFlagKeptAsTextIsSetByWhateverIsNotZero) {
    useModel("gem.mdb");
    const auto records = rowsOf("SELECT var_val FROM secs_cusvar");
    RecordsModel model(records);
    model.setFlagFormat(0);
    int set = 0;
    int clear = 0;
    for (int row = 0; row < model.rowCount(); ++row) {
        const std::string stored = db::toTextOrEmpty(records->storedField(row, 0));
        const QString shown = model.index(row, 0).data().toString();
        if (stored.empty()) {
            EXPECT_EQ(shown, "");
        } else if (stored == "0" || stored == "0.0") {
            EXPECT_EQ(shown, "FALSE");
            ++clear;
        } else if (stored != "-0" && stored.find_first_not_of("0.") != std::string::npos) {
            EXPECT_EQ(shown, "TRUE") << stored;
            ++set;
        }
    }
    EXPECT_GT(set, 0);
    EXPECT_GT(clear, 0);
}

TEST_F(RecordsModelTest, TextsOfAFileAreNeverMarkup) {
    useModel("gem.mdb");
    execute("UPDATE secs_cusvar SET var_unit = '<b>x</b>' WHERE var_id = 101");
    const RecordsModel model(rowsOf("SELECT var_unit FROM secs_cusvar WHERE var_id = 101"));
    EXPECT_EQ(model.index(0, 0).data().toString(), "<b>x</b>");
    EXPECT_FALSE(model.index(0, 0).data(Qt::ToolTipRole).toString().contains("<b>"));
}

}  // namespace
}  // namespace stelvan::browser
