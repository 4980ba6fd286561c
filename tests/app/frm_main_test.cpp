// Starting, changing the database, closing.
#include "app/frm_main.h"

#include <QAction>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTimer>

#include "app/frm_about.h"
#include "app/frm_gem_database.h"
#include "tests/support/window_bench.h"

namespace stelvan::test {
namespace {

class FrmMainTest : public WindowBench {
protected:
    void SetUp() override { window = std::make_unique<app::FrmMain>(dialogs, QString()); }
    [[nodiscard]] const form::Navigator& nav() const { return form().nav; }
    [[nodiscard]] QString position() const { return nav().lblRecNumber->text(); }

    /// Answers the database dialog as soon as it stands: with a path, or by Cancel.
    static void answerDialog(const QString& path) {
        QTimer::singleShot(0, [path] {
            auto* dialog = qobject_cast<app::FrmGEMDatabase*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            if (path.isEmpty()) {
                press(dialog->findChild<QPushButton*>("cmdCancel"));
            } else {
                dialog->findChild<QLineEdit*>("txtGEMDatabase")->setText(path);
                press(dialog->findChild<QPushButton*>("cmdLoad"));
            }
        });
    }
    static bool firstCopy() { return true; }

    void expectFreshStart() {
        EXPECT_EQ(form().tvwSECSItem->topLevelItemCount(), 11);
        EXPECT_TRUE(form().tvwSECSItem->selectedItems().isEmpty());
        EXPECT_EQ(position(), "0 of 0");
        EXPECT_EQ(state().current.records, nullptr);
        EXPECT_EQ(state().current.position, 0);
        EXPECT_EQ(state().category, gem::NO_CATEGORY);
        EXPECT_EQ(state().editMode, form::EditMode::Browsing);
        EXPECT_EQ(form().frontFrame(), 0);
        EXPECT_EQ(form().tspData->currentIndex(), 0);
        EXPECT_TRUE(nav().fraDBOperation->isEnabled());
        EXPECT_TRUE(nav().cmdSave->isHidden());
        EXPECT_TRUE(nav().cmdCancel->isHidden());
        for (const QPushButton* button :
             {nav().cmdNew, nav().cmdUpdate, nav().cmdDelete, nav().cmdPrevious, nav().cmdNext})
            EXPECT_FALSE(button->isEnabled());
        for (const form::Field* field : form().fields()) {
            EXPECT_FALSE(field->isOpen());
            EXPECT_EQ(field->text(), field->kind() == form::Field::Kind::Check ? "0" : "");
        }
        for (const auto* editor : {&form().children, &form().variables, &form().reports}) {
            EXPECT_TRUE(editor->pool->isHidden());
            EXPECT_EQ(editor->selected->rowCount(), 0);
        }
        EXPECT_EQ(form().lblPropertyType->text(), "");
        EXPECT_EQ(form().statusPanel->text(), "");
        EXPECT_EQ(form().txtErrLog->toPlainText(), "");
        EXPECT_TRUE(form().mnuFileDB->isEnabled());
        EXPECT_TRUE(form().tvwSECSItem->isEnabled());
    }
};

TEST_F(FrmMainTest, StartsWithNothingSelected) {
    const QString path = form::toQt(scratch.copyOf(model("gem.mdb")).string());
    answerDialog(path);
    EXPECT_TRUE(window->Form_Load(firstCopy));
    EXPECT_EQ(state().databasePath, path.toStdString());
    expectFreshStart();
    EXPECT_TRUE(dialogs.messages.empty());
    EXPECT_FALSE(window->isVisible());
}

TEST_F(FrmMainTest, AFileThatIsGivenIsOpenedWithoutTheDialog) {
    const QString path = form::toQt(scratch.copyOf(model("gem.mdb")).string());
    EXPECT_TRUE(window->Form_Load(firstCopy, path));
    EXPECT_EQ(state().databasePath, path.toStdString());
    expectFreshStart();
    EXPECT_TRUE(dialogs.messages.empty());
    clickCategory(gem::CSTVSV);
    EXPECT_GT(state().current.count(), 0);
}

TEST_F(FrmMainTest, AFileOfAnotherNameIsRefusedAsInTheDialogWhichThenOpens) {
    const QString path = form::toQt(scratch.copyOf(model("gem.mdb")).string());
    answerDialog(path);
    EXPECT_TRUE(window->Form_Load(firstCopy, "/line3/other.mdb"));
    EXPECT_EQ(dialogs.texts(), QStringList{"Please select correct GEM Database: GEM.MDB "});
    EXPECT_EQ(dialogs.messages.front().icon, form::Icon::Exclamation);
    EXPECT_EQ(state().databasePath, path.toStdString());
    answerDialog(QString());
    EXPECT_FALSE(window->Form_Load(firstCopy, "/line3/gem.txt"));
    EXPECT_EQ(dialogs.texts().last(), "Please select the correct database type!");
}

TEST_F(FrmMainTest, ASecondCopyEndsWithItsFileToo) {
    EXPECT_FALSE(window->Form_Load([] { return false; }, "/line3/gem.mdb"));
    EXPECT_EQ(dialogs.texts(), QStringList{"Cannot run more than 1 copy of Stelvan application"});
    EXPECT_EQ(state().databasePath, "");
}

TEST_F(FrmMainTest, SecondCopySaysSoAndEnds) {
    EXPECT_FALSE(window->Form_Load([] { return false; }));
    EXPECT_EQ(dialogs.texts(), QStringList{"Cannot run more than 1 copy of Stelvan application"});
    EXPECT_FALSE(window->isVisible());
}

TEST_F(FrmMainTest, CancelAtStartUpEndsTheProgramSilently) {
    answerDialog(QString());
    EXPECT_FALSE(window->Form_Load(firstCopy));
    EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(FrmMainTest, CancelFromTheFileMenuKeepsDatabaseAndDisplay) {
    open();
    clickCategory(5);
    press(nav().cmdNext);
    const std::string path = state().databasePath;
    const QString name = form()[txtAlmName].text();
    answerDialog(QString());
    form().mnuFileDB->trigger();
    EXPECT_EQ(state().databasePath, path);
    EXPECT_EQ(form()[txtAlmName].text(), name);
    EXPECT_EQ(state().current.position, 2);
    EXPECT_EQ(form().frontFrame(), 2);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(FrmMainTest, AfterAChangeOfDatabaseNothingOfTheOldOneIsLeft) {
    open();
    const ScratchDir other;
    const QString path = form::toQt(other.copyOf(model("gem.mdb")).string());
    for (const auto category :
         {gem::GEMSDV, gem::CSTALM, gem::CSTEVT, gem::CSTVSV, gem::GEMSTT, gem::CSTRPT}) {
        clickCategory(category);
        if (category == gem::CSTVSV) {
            goTo("txtVarID", "227");
        }
        form().tspData->setCurrentIndex(category % 2);
        form().txtErrLog->setPlainText("left over");
        answerDialog(path);
        form().mnuFileDB->trigger();
        EXPECT_EQ(state().databasePath, path.toStdString());
        expectFreshStart();
    }
    form().tspData->setCurrentIndex(1);
    EXPECT_EQ(dialogs.messages.size(), 1U);
    EXPECT_EQ(form().tspData->currentIndex(), 0);
}

TEST_F(FrmMainTest, InputLengthsAreLimited) {
    open();
    clickCategory(5);
    press(nav().cmdNew);
    type(form()[txtAlmName], QString(105, 'n'));
    type(form()[txtAlmText], QString(1003, 't'));
    EXPECT_EQ(form()[txtAlmName].text().size(), 100);
    EXPECT_EQ(form()[txtAlmText].text().size(), 1000);
}

TEST_F(FrmMainTest, ClosingWhileEditingAsksNothingAndDiscards) {
    open();
    clickCategory(5);
    press(nav().cmdUpdate);
    type(form()[txtAlmName], "Has Blank");
    EXPECT_TRUE(window->close());
    EXPECT_TRUE(dialogs.messages.empty());
    EXPECT_TRUE(dialogs.questions.empty());
    EXPECT_EQ(state().current.records, nullptr);
    EXPECT_TRUE(query("SELECT alm_id FROM secs_alarm WHERE alm_name = 'Has Blank'").isEmpty());
}

TEST_F(FrmMainTest, ExitClosesTheWindow) {
    open();
    form().mnuFileExit->trigger();
    EXPECT_FALSE(window->isVisible());
}

TEST_F(FrmMainTest, AboutShowsFourLinesAndEnterOrEscapeClosesIt) {
    open();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
        QTimer::singleShot(0, [key] {
            auto* about = qobject_cast<app::FrmAbout*>(QApplication::activeModalWidget());
            ASSERT_NE(about, nullptr);
            EXPECT_EQ(about->windowTitle(), "About Stelvan");
            const QStringList lines = about->findChild<QLabel*>("lblVersion")->text().split('\n');
            ASSERT_EQ(lines.size(), 4);
            EXPECT_EQ(lines[0], "Stelvan (A component of Duvessa)");
            EXPECT_EQ(lines[1], QString("Version %1.%2.%3")
                                    .arg(STELVAN_VERSION_MAJOR)
                                    .arg(STELVAN_VERSION_MINOR)
                                    .arg(STELVAN_VERSION_PATCH));
            EXPECT_FALSE(about->findChild<QLabel*>("Image1")->pixmap().isNull());
            QTest::keyClick(about, key);
            EXPECT_FALSE(about->isVisible());
        });
        form().mnuHelpAbout->trigger();
    }
}

TEST_F(FrmMainTest, FailuresAreShownWithTheExclamationIconAndTheDefaultTitle) {
    window->start("/no/such/folder/gem.mdb");
    window->show();
    all().browser.tree.tvwSECSItem_NodeClick("GEMEVT");
    ASSERT_EQ(dialogs.messages.size(), 1U);
    EXPECT_TRUE(dialogs.messages.front().text.startsWith("ERROR("));
    EXPECT_EQ(dialogs.messages.front().icon, form::Icon::Exclamation);
    EXPECT_EQ(dialogs.messages.front().title, "");
}

}  // namespace
}  // namespace stelvan::test
