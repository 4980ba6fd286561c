// The notice that another program has changed the file.
#include <QLabel>

#include "tests/gui/aids_bench.h"

namespace stelvan::app {
namespace {

constexpr const char* kNotice = "Changed by another program; click the category to see it";
constexpr int kSoon = 3000;  // twice a second; machines are slow at times

class ChangeNotice : public test::AidsBench {
protected:
    void SetUp() override { open(); }
    [[nodiscard]] bool noticed() const { return aids().lblNotice->isVisible(); }
    [[nodiscard]] bool change() {
        return test::elsewhere(state().databasePath, "UPDATE secs_report SET rpt_desc = 'theirs " +
                                                         std::to_string(++changes_) + "'");
    }
    int changes_ = 0;
    void letTimePass() { QTest::qWait(1200); }
};

TEST_F(ChangeNotice, AppearsAndGoesWithAClickOnTheCategory) {
    clickCategory(gem::CSTALM);
    letTimePass();
    EXPECT_FALSE(noticed());
    ASSERT_TRUE(change());
    EXPECT_TRUE(QTest::qWaitFor([this] { return noticed(); }, kSoon));
    EXPECT_EQ(aids().lblNotice->text(), kNotice);
    clickCategory(gem::CSTALM);
    EXPECT_FALSE(noticed());
    letTimePass();
    EXPECT_FALSE(noticed());
    ASSERT_TRUE(change());
    EXPECT_TRUE(QTest::qWaitFor([this] { return noticed(); }, kSoon));
}

TEST_F(ChangeNotice, DoesNotSpeakOfWhatThisProgramWrites) {
    add(gem::CSTEVT);
    typeAndLeave("txtEvtName", "Mine");
    typeAndLeave("txtEvtGroup", "g");
    typeAndLeave("txtEvtDesc", "d");
    save();
    expectStored();
    answerYesAndDelete();
    letTimePass();
    EXPECT_FALSE(noticed());
}

TEST_F(ChangeNotice, WaitsUntilAnEditIsOverAndOwnChangesDoNotHideIt) {
    clickCategory(gem::CSTEVT);
    edit();
    ASSERT_TRUE(change());
    letTimePass();
    EXPECT_FALSE(noticed());
    typeAndLeave("txtEvtGroup", "Mine");
    save();
    expectStored();
    EXPECT_TRUE(QTest::qWaitFor([this] { return noticed(); }, kSoon));
}

TEST_F(ChangeNotice, SpeaksOfAFileThatWasReplaced) {
    clickCategory(gem::CSTEVT);
    const std::filesystem::path file = state().databasePath;
    std::filesystem::copy_file(file, file.string() + ".new");
    std::filesystem::rename(file.string() + ".new", file);
    EXPECT_TRUE(QTest::qWaitFor([this] { return noticed(); }, kSoon));
    clickCategory(gem::CSTEVT);
    EXPECT_FALSE(noticed());
    EXPECT_EQ(dialogs.texts(), QStringList());
}

}  // namespace
}  // namespace stelvan::app
