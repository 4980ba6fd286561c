// The dialog in which the GEM database is chosen.
#include "app/frm_gem_database.h"

#include <gtest/gtest.h>

#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTextDocument>
#include <fstream>

#include "form/text.h"
#include "tests/support/models.h"
#include "tests/support/scripted_dialogs.h"

namespace stelvan::app {
namespace {

class FrmGemDatabaseTest : public testing::Test {
protected:
    FrmGemDatabaseTest() {
        path().setText("");
        dialog.show();
        QApplication::setActiveWindow(&dialog);
    }
    [[nodiscard]] QLineEdit& path() const {
        return *dialog.findChild<QLineEdit*>("txtGEMDatabase");
    }
    [[nodiscard]] QPushButton& button(const char* name) const {
        return *dialog.findChild<QPushButton*>(name);
    }

    QStringList failures;
    base::ErrorInfo errors{[this](const std::string& line) { failures << form::toQt(line); }};
    test::ScriptedDialogs boxes;
    FrmGEMDatabase dialog{errors, boxes, QString()};

    void load(const QString& text) {
        path().setText(text);
        QTest::mouseClick(&button("cmdLoad"), Qt::LeftButton);
    }
};

TEST_F(FrmGemDatabaseTest, GemMdbIsAcceptedInAnyCaseOfItsNameAndRefusedWithACapitalExtension) {
    for (const char* good :
         {"C:\\data\\gem.mdb", "C:\\data\\GEM.mdb", "/home/u/data/gem.mdb", "./Gem.mdb"}) {
        FrmGEMDatabase fresh(errors, boxes, QString());
        fresh.findChild<QLineEdit*>("txtGEMDatabase")->setText(good);
        fresh.cmdLoad_Click();
        EXPECT_EQ(fresh.LoadStatus(), 0) << good;
        EXPECT_EQ(fresh.DBFile(), good);
    }
    EXPECT_TRUE(boxes.messages.empty());
    load("C:\\data\\GEM.MDB");
    EXPECT_EQ(boxes.texts(), QStringList{"Please select the correct database type!"});
    EXPECT_EQ(boxes.messages.front().icon, form::Icon::Exclamation);
    EXPECT_EQ(dialog.LoadStatus(), 1);
    EXPECT_EQ(dialog.DBFile(), "C:\\data\\GEM.MDB");
    EXPECT_TRUE(button("cmdBrowse").hasFocus());
    EXPECT_TRUE(dialog.isVisible());
}

TEST_F(FrmGemDatabaseTest, AnotherFileNameIsRefusedAndTheFieldIsEmptied) {
    load("C:\\data\\other.mdb");
    EXPECT_EQ(boxes.texts(), QStringList{"Please select correct GEM Database: GEM.MDB "});
    EXPECT_EQ(dialog.DBFile(), "");
    EXPECT_EQ(dialog.LoadStatus(), 1);
    EXPECT_TRUE(button("cmdBrowse").hasFocus());
}

TEST_F(FrmGemDatabaseTest, GemMdbWithoutAFolderIsRefused) {
    load("gem.mdb");
    EXPECT_EQ(boxes.texts(), QStringList{"Please select correct GEM Database: GEM.MDB "});
}

TEST_F(FrmGemDatabaseTest, EmptyFieldIsRefused) {
    load("");
    EXPECT_EQ(boxes.texts(), QStringList{"Please select the GEM Database!"});
    EXPECT_TRUE(button("cmdBrowse").hasFocus());
}

TEST_F(FrmGemDatabaseTest, ProposesTheModelOfTheProgramFolderWhereThereIsOne) {
    const test::ScratchDir folder;
    const QString here = form::toQt(folder.path().string());
    EXPECT_EQ(FrmGEMDatabase(errors, boxes, here).DBFile(), "");
    std::ofstream(folder.path() / "gem.mdb") << "x";
    FrmGEMDatabase proposing(errors, boxes, here);
    EXPECT_EQ(proposing.DBFile(), here + "/gem.mdb");
    EXPECT_EQ(proposing.LoadStatus(), 1);
}

TEST_F(FrmGemDatabaseTest, BrowseTakesWhatTheFileDialogReturnsAndCancellingItEmptiesTheField) {
    path().setText("/somewhere/gem.mdb");
    boxes.choices = {"/chosen/gem.mdb"};
    QTest::mouseClick(&button("cmdBrowse"), Qt::LeftButton);
    EXPECT_EQ(dialog.DBFile(), "/chosen/gem.mdb");
    ASSERT_EQ(boxes.files.size(), 1U);
    EXPECT_EQ(boxes.files.front().title, "Open GEM Database");
    EXPECT_EQ(boxes.files.front().filter, "MDB (*.mdb)");
    EXPECT_EQ(boxes.files.front().start, "/somewhere/gem.mdb");
    QTest::mouseClick(&button("cmdBrowse"), Qt::LeftButton);
    EXPECT_EQ(dialog.DBFile(), "");
}

TEST_F(FrmGemDatabaseTest, ToolTipRepeatsThePath) {
    path().setText("/a/long/path/gem.mdb");
    EXPECT_EQ(path().toolTip(), "/a/long/path/gem.mdb");
}

TEST_F(FrmGemDatabaseTest, APathIsNeverTakenForMarkup) {
    path().setText("/models/<b>new</b>/gem.mdb");
    QTextDocument shown;
    shown.setHtml(path().toolTip());
    EXPECT_EQ(shown.toPlainText(), "/models/<b>new</b>/gem.mdb");
}

/// Some desktops' group boxes take Enter for themselves.
class GreedyParent : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override { return event->type() == QEvent::KeyPress; }
};

TEST_F(FrmGemDatabaseTest, EnterReachesTheFieldWhateverItsFrameDoesWithIt) {
    GreedyParent greedy;
    dialog.findChild<QGroupBox*>("fraDB")->installEventFilter(&greedy);
    path().setFocus();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        boxes.messages.clear();
        QTest::keyClick(&path(), key);
        EXPECT_EQ(boxes.messages.size(), 1U);
    }
}

TEST_F(FrmGemDatabaseTest, EnterInTheFieldLoadsOnce) {
    path().setFocus();
    QTest::keyClick(&path(), Qt::Key_Return);
    EXPECT_EQ(boxes.messages.size(), 1U);
    path().setText("/x/gem.mdb");
    path().setFocus();
    QTest::keyClick(&path(), Qt::Key_Enter);
    EXPECT_EQ(dialog.LoadStatus(), 0);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(FrmGemDatabaseTest, EnterAndSpaceOnAFocusedButtonPressThatButton) {
    button("cmdBrowse").setFocus();
    QTest::keyClick(&button("cmdBrowse"), Qt::Key_Return);
    EXPECT_EQ(boxes.files.size(), 1U);
    QTest::keyClick(&button("cmdBrowse"), Qt::Key_Space);
    EXPECT_EQ(boxes.files.size(), 2U);
    EXPECT_TRUE(boxes.messages.empty());
    button("cmdCancel").setFocus();
    QTest::keyClick(&button("cmdCancel"), Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.LoadStatus(), 1);
}

TEST_F(FrmGemDatabaseTest, EscapeAndTheCloseBoxActAsCancel) {
    path().setText("/x/gem.mdb");
    QTest::keyClick(&path(), Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.LoadStatus(), 1);
    dialog.show();
    dialog.close();
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(dialog.LoadStatus(), 1);
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(FrmGemDatabaseTest, ControlsHaveTheirNamesAndCaptions) {
    EXPECT_EQ(dialog.objectName(), "frmGEMDatabase");
    EXPECT_EQ(dialog.windowTitle(), "GEM Database Setting");
    EXPECT_NE(dialog.findChild<QWidget*>("fraDB"), nullptr);
    EXPECT_EQ(button("cmdBrowse").text(), "Browse...");
    EXPECT_EQ(button("cmdLoad").text(), "&Load");
    EXPECT_EQ(button("cmdCancel").text(), "&Cancel");
}

}  // namespace
}  // namespace stelvan::app
