// The copy that is kept before the first write of a session.
#include <fstream>

#include "model/core/kept_copies.h"
#include "model/core/sink.h"
#include "tests/gui/aids_bench.h"

namespace stelvan::app {
namespace {

namespace fs = std::filesystem;

class SafetyCopy : public test::AidsBench {
protected:
    void SetUp() override {}

    [[nodiscard]] fs::path folder() const { return scratch.path() / "state" / "copies"; }
    [[nodiscard]] std::vector<model::KeptCopy> copies() const {
        return model::KeptCopies(folder()).of(file());
    }
    /// Opens the window as `open` does, with a place for copies.
    void openWithCopies() {
        const auto path = scratch.copyOf(test::model("gem.mdb"));
        window = std::make_unique<FrmMain>(dialogs, QString(),
                                           UserPlaces{{}, {}, form::toQt(folder().string())});
        window->start(form::toQt(path.string()));
        window->resize(1200, 900);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    void typeAndSave(const QString& text) {
        edit();
        typeAndLeave("txtRptDesc", text);
        save();
    }
    /// No folder can be made where a file stands.
    void blockCopies() { std::ofstream(scratch.path() / "state") << "in the way"; }
};

TEST_F(SafetyCopy, IsKeptBeforeTheFirstSaveAndNotAgain) {
    openWithCopies();
    const std::string before = model::readWhole(file());
    showReport("101");
    edit();
    typeAndLeave("txtRptDesc", "Typed, not saved");
    cancel();
    EXPECT_TRUE(copies().empty());
    typeAndSave("First");
    expectStored();
    ASSERT_EQ(copies().size(), 1U);
    EXPECT_EQ(model::readWhole(copies().front().path), before);
    typeAndSave("Second");
    answerYesAndDelete();
    EXPECT_EQ(copies().size(), 1U);
    EXPECT_EQ(dialogs.texts(), QStringList());
}

TEST_F(SafetyCopy, IsKeptBeforeADelete) {
    openWithCopies();
    const std::string before = model::readWhole(file());
    showReport("103");
    answerYesAndDelete();
    ASSERT_EQ(copies().size(), 1U);
    EXPECT_EQ(model::readWhole(copies().front().path), before);
}

TEST_F(SafetyCopy, OfAnotherSessionIsAnotherOne) {
    openWithCopies();
    showReport("101");
    typeAndSave("First");
    window->start(form::toQt(file()));
    showReport("101");
    const std::string between = model::readWhole(file());
    typeAndSave("Second");
    ASSERT_EQ(copies().size(), 2U);
    EXPECT_EQ(model::readWhole(copies().front().path), between);
}

TEST_F(SafetyCopy, WhereNoneCanBeKeptTheUserDecides) {
    blockCopies();
    openWithCopies();
    showReport("101");
    const std::string before = model::readWhole(file());
    typeAndSave("Mine");
    ASSERT_EQ(dialogs.questions.size(), 1U);
    EXPECT_TRUE(dialogs.questions.front().text.startsWith(
        "The model could not be copied before this first change: "))
        << dialogs.questions.front().text.toStdString();
    EXPECT_EQ(state().editMode, form::EditMode::Editing) << "No: nothing is written";
    EXPECT_EQ(shown("txtRptDesc"), "Mine");
    EXPECT_EQ(model::readWhole(file()), before);
    dialogs.answers = {true};
    save();
    expectStored();
    EXPECT_NE(model::readWhole(file()), before);
    typeAndSave("Mine again");
    expectStored();
    EXPECT_EQ(dialogs.questions.size(), 2U) << "it is asked once";
}

TEST_F(SafetyCopy, NoUnitOfWorkIsOpenWhileTheUserIsAsked) {
    blockCopies();
    openWithCopies();
    showReport("102");
    const QString id = shown("txtRptID");
    dialogs.answers = {true, false};  // yes, delete it; not without a copy
    press(nav().cmdDelete);
    EXPECT_EQ(dialogs.questions.size(), 2U);
    EXPECT_EQ(shown("txtRptID"), id);
    EXPECT_TRUE(test::elsewhere(file(), "UPDATE secs_report SET rpt_desc = 'theirs'"));
    EXPECT_FALSE(tool(form::Tool::Undo)->isEnabled());
}

}  // namespace
}  // namespace stelvan::app
