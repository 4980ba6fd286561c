// The first dialog as it lets a user begin: recent models, a new one, the demo.
#include <gtest/gtest.h>

#include <QPushButton>
#include <QTest>
#include <QTreeWidget>
#include <filesystem>
#include <fstream>
#include <memory>

#include "app/frm_gem_database.h"
#include "form/text.h"
#include "tests/support/models.h"
#include "tests/support/scripted_dialogs.h"

namespace stelvan::app {
namespace {

/// The dialog with places of its own to remember things in.
class FirstDialog : public testing::Test {
protected:
    QStringList failures;
    base::ErrorInfo errors{[this](const std::string& line) { failures << form::toQt(line); }};
    test::ScriptedDialogs boxes;

    [[nodiscard]] QString at(const std::string& name) const {
        return form::toQt((scratch.path() / name).string());
    }
    [[nodiscard]] UserMemory memory() const {
        return UserMemory({at("stelvan.ini"), at("own/demo")});
    }
    std::unique_ptr<FrmGEMDatabase> shown() {
        auto made = std::make_unique<FrmGEMDatabase>(errors, boxes, QString(), nullptr, memory());
        made->show();
        QApplication::setActiveWindow(made.get());
        return made;
    }
    QString opened(const std::string& folder) {
        std::filesystem::create_directories(scratch.path() / folder);
        std::ofstream(scratch.path() / folder / "gem.mdb") << "x";
        memory().noteOpened(at(folder) + "/gem.mdb");
        return at(folder) + "/gem.mdb";
    }
    static QTreeWidget& recent(const FrmGEMDatabase& dialog) {
        return *dialog.findChild<QTreeWidget*>("lvwRecent");
    }
    static void click(const FrmGEMDatabase& dialog, const char* name) {
        QTest::mouseClick(dialog.findChild<QPushButton*>(name), Qt::LeftButton);
    }

    test::ScratchDir scratch;
};

TEST_F(FirstDialog, RecentModelsAreListedWithFolderAndDateAndOneIsTakenByAClick) {
    opened("etcher");
    const QString path = opened("wet bench");
    const auto dialog = shown();
    QTreeWidget& list = recent(*dialog);
    ASSERT_EQ(list.topLevelItemCount(), 2);
    EXPECT_EQ(list.topLevelItem(0)->text(0), at("wet bench"));
    EXPECT_FALSE(list.topLevelItem(0)->text(1).isEmpty());
    EXPECT_EQ(list.topLevelItem(1)->text(0), at("etcher"));
    EXPECT_EQ(dialog->DBFile(), "");
    const QPoint first = list.visualItemRect(list.topLevelItem(0)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, first);
    EXPECT_EQ(dialog->DBFile(), path);
    EXPECT_EQ(dialog->LoadStatus(), 1);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, first);
    EXPECT_EQ(dialog->LoadStatus(), 0);
    EXPECT_TRUE(boxes.messages.empty());
}

TEST_F(FirstDialog, ARecentModelIsLoadedByKeysAlone) {
    const QString etcher = opened("etcher");
    opened("wet bench");
    const auto dialog = shown();
    QTreeWidget& list = recent(*dialog);
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Down);
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(dialog->DBFile(), etcher);
    EXPECT_EQ(dialog->LoadStatus(), 0);
}

TEST_F(FirstDialog, AModelThatIsGoneIsListedButCannotBeTaken) {
    opened("etcher");
    std::filesystem::remove(scratch.path() / "etcher" / "gem.mdb");
    const auto dialog = shown();
    QTreeWidget& list = recent(*dialog);
    ASSERT_EQ(list.topLevelItemCount(), 1);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {},
                       list.visualItemRect(list.topLevelItem(0)).center());
    EXPECT_EQ(dialog->DBFile(), "");
    EXPECT_TRUE(list.topLevelItem(0)->toolTip(0).startsWith("Not there now: "));
}

TEST_F(FirstDialog, ANewModelIsStartedInAFolderOfChoiceAndLoaded) {
    const auto dialog = shown();
    click(*dialog, "cmdNewModel");
    EXPECT_EQ(dialog->DBFile(), "");
    EXPECT_TRUE(dialog->isVisible());
    boxes.choices = {at("line 3")};
    click(*dialog, "cmdNewModel");
    ASSERT_EQ(boxes.folders.size(), 2U);
    EXPECT_EQ(dialog->DBFile(), at("line 3") + "/gem.mdb");
    EXPECT_EQ(dialog->LoadStatus(), 0);
    EXPECT_TRUE(std::filesystem::exists(scratch.path() / "line 3" / "gem.mdb"));
    EXPECT_TRUE(boxes.messages.empty());
}

TEST_F(FirstDialog, ANewModelNeverReplacesOne) {
    const QString path = opened("etcher");
    const auto dialog = shown();
    boxes.choices = {at("etcher")};
    click(*dialog, "cmdNewModel");
    ASSERT_EQ(boxes.messages.size(), 1U);
    EXPECT_EQ(boxes.messages.front().text, "No model was made: there is a model already: " + path);
    EXPECT_EQ(boxes.messages.front().icon, form::Icon::Exclamation);
    EXPECT_EQ(std::filesystem::file_size(scratch.path() / "etcher" / "gem.mdb"), 1U);
    EXPECT_EQ(dialog->LoadStatus(), 1);
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(FirstDialog, TheDemoIsMadeOnceAndGoesOnWhereItWasLeft) {
    const auto first = shown();
    click(*first, "cmdTryDemo");
    EXPECT_EQ(first->LoadStatus(), 0);
    EXPECT_EQ(first->DBFile(), at("own/demo/gem.mdb"));
    const auto demo = scratch.path() / "own" / "demo" / "gem.mdb";
    const auto size = std::filesystem::file_size(demo);
    std::ofstream(demo, std::ios::app) << "changed";
    const auto second = shown();
    click(*second, "cmdTryDemo");
    EXPECT_EQ(second->LoadStatus(), 0);
    EXPECT_EQ(std::filesystem::file_size(demo), size + 7);
    EXPECT_TRUE(boxes.messages.empty());
}

}  // namespace
}  // namespace stelvan::app
