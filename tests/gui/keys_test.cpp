// The page of keys and the keys themselves: what the page names acts, and what acts is named.
#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTableView>
#include <QTextBrowser>

#include "app/frm_keys.h"
#include "tests/support/window_bench.h"

namespace stelvan::test {
namespace {

struct Line {
    QString section;
    QString key;
    QString what;
};

/// The rows of the tables of docs/keys.md.
std::vector<Line> linesOfPage() {
    QFile file(QStringLiteral(STELVAN_SOURCE_DIR "/docs/keys.md"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    std::vector<Line> lines;
    QString section;
    for (const QString& line : QString::fromUtf8(file.readAll()).split('\n')) {
        if (line.startsWith("## ")) section = line.mid(3);
        const QStringList cells = line.split('|');
        if (cells.size() != 4 || cells[1] == " Key " || cells[1].startsWith('-')) continue;
        lines.push_back({section, cells[1].trimmed(), cells[2].trimmed()});
    }
    EXPECT_FALSE(lines.empty());
    return lines;
}

class Keys : public WindowBench {
protected:
    QStringList tried;

    void TearDown() override {
        if (window != nullptr) window->close();
    }
    /// Presses a key as the page spells it, in a widget or in the one that has the focus.
    void hit(const QString& key, QWidget* in = nullptr) {
        tried << key;
        if (in != nullptr) in->setFocus();
        QWidget* const at = QApplication::focusWidget();
        ASSERT_NE(at, nullptr) << key.toStdString();
        ASSERT_TRUE(in == nullptr || at == in) << key.toStdString();
        const QKeyCombination pressed = QKeySequence(QString(key).replace("Enter", "Return"))[0];
        ASSERT_NE(pressed.key(), Qt::Key_unknown) << key.toStdString();
        QTest::keyClick(at, pressed.key(), pressed.keyboardModifiers());
    }
    void expectAllTried(const QString& section) {
        QStringList named;
        for (const Line& line : linesOfPage())
            if (line.section == section) named << line.key;
        named.sort();
        tried.sort();
        tried.removeDuplicates();
        EXPECT_EQ(tried, named) << section.toStdString();
    }
    [[nodiscard]] const form::Navigator& nav() const { return form().nav; }
    [[nodiscard]] std::int32_t position() const { return state().current.position; }
    [[nodiscard]] bool editing() const { return state().editing(); }
    [[nodiscard]] QWidget* at(const char* name) const { return field(name).widget(); }
};

TEST_F(Keys, OfTheWindow) {
    open();
    clickCategory(gem::CSTVSV);
    hit("F1", form().tvwSECSItem);
    auto* const page = window->findChild<app::FrmKeys*>();
    ASSERT_NE(page, nullptr);
    EXPECT_TRUE(page->isVisible());
    page->close();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    hit("F6", form().tvwSECSItem);
    EXPECT_FALSE(form().tvwSECSItem->hasFocus());
    hit("Shift+F6");
    EXPECT_TRUE(form().tvwSECSItem->hasFocus());
    hit("Alt+F");
    EXPECT_TRUE(form().mnuFile->isVisible());
    form().mnuFile->hide();
    hit("Alt+H", form().tvwSECSItem);
    EXPECT_TRUE(form().mnuHelp->isVisible());
    form().mnuHelp->hide();
    expectAllTried("The window");
}

TEST_F(Keys, ToARecord) {
    open();
    clickCategory(gem::CSTVSV);
    const std::int32_t count = state().current.count();
    hit("Ctrl+PgDown", form().tvwSECSItem);
    EXPECT_EQ(position(), 2);
    hit("Ctrl+End");
    EXPECT_EQ(position(), count);
    hit("Ctrl+PgUp");
    EXPECT_EQ(position(), count - 1);
    hit("Ctrl+Home");
    EXPECT_EQ(position(), 1);
    hit("Alt+N");
    EXPECT_EQ(position(), 2);
    hit("Alt+P");
    EXPECT_EQ(position(), 1);
    hit("Alt+Left");
    EXPECT_EQ(position(), 2);
    hit("Alt+Right");
    EXPECT_EQ(position(), 1);
    hit("Ctrl+Tab");
    EXPECT_EQ(form().tspData->currentIndex(), 1);
    form().tspData->setCurrentIndex(0);
    hit("Ctrl+F", form().tvwSECSItem);
    EXPECT_TRUE(form().aids.txtFind->hasFocus());
    hit("Ctrl+G", form().tvwSECSItem);
    auto* const asked = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(asked, nullptr);
    EXPECT_NE(asked->findChild<QLineEdit*>("txtGoToID"), nullptr);
    asked->reject();
    expectAllTried("To a record");
}

TEST_F(Keys, OfOneRecord) {
    open();
    clickCategory(gem::CSTVSV);
    const std::int32_t count = state().current.count();
    hit("Alt+E", form().tvwSECSItem);
    EXPECT_TRUE(editing());
    hit("Alt+S", at("txtVarName"));
    EXPECT_FALSE(editing());
    EXPECT_EQ(exceptions(), QString());
    for (const char* key : {"Alt+A", "Ctrl+D"}) {
        hit(key, form().tvwSECSItem);
        EXPECT_EQ(state().editMode, form::EditMode::Adding) << key;
        hit("Alt+C", at("txtVarName"));
        EXPECT_FALSE(editing()) << key;
    }
    dialogs.answers.push_back(true);
    hit("Alt+D", form().tvwSECSItem);
    EXPECT_EQ(dialogs.questions.size(), 1U);
    EXPECT_EQ(state().current.count(), count - 1);
    expectAllTried("One record");
}

TEST_F(Keys, InAField) {
    open();
    clickCategory(gem::CSTVSV);
    edit();
    QWidget* const name = at("txtVarName");
    hit("Tab", name);
    QWidget* const next = QApplication::focusWidget();
    EXPECT_NE(next, name);
    hit("Shift+Tab");
    EXPECT_TRUE(name->hasFocus());
    hit("Enter");
    EXPECT_TRUE(next->hasFocus());
    hit("Shift+Enter");
    EXPECT_TRUE(name->hasFocus());
    auto* const description = qobject_cast<QPlainTextEdit*>(at("txtVarDesc"));
    const int lines = description->blockCount();
    hit("Ctrl+Enter", description);
    EXPECT_EQ(description->blockCount(), lines + 1);
    auto* const format = qobject_cast<QComboBox*>(at("cmbVarFormat"));
    for (const char* key : {"F4", "Alt+Down"}) {
        hit(key, format);
        EXPECT_TRUE(format->view()->isVisible()) << key;
        format->hidePopup();
    }
    press(nav().cmdCancel);
    clickCategory(gem::CSTALM);
    edit();
    auto* const enabled = qobject_cast<QCheckBox*>(at("chkAlmEnable"));
    const bool was = enabled->isChecked();
    hit("Space", enabled);
    EXPECT_NE(enabled->isChecked(), was);
    hit("Space", nav().cmdCancel);
    EXPECT_FALSE(editing());
    expectAllTried("In a field");
}

TEST_F(Keys, InTheFindBox) {
    open();
    QLineEdit* const box = form().aids.txtFind;
    form::ListView* const found = form().aids.lvwFound;
    box->setFocus();
    QTest::keyClicks(box, "o");
    ASSERT_GT(found->rowCount(), 1);
    const int first = found->selectedRow();
    hit("Down", box);
    EXPECT_EQ(found->selectedRow(), first + 1);
    hit("Up", box);
    EXPECT_EQ(found->selectedRow(), std::max(first, 0));
    hit("Enter", box);
    EXPECT_GT(position(), 0);
    hit("Esc", box);
    EXPECT_TRUE(form().tvwSECSItem->isVisible() && form().tvwSECSItem->hasFocus());
    expectAllTried("In the find box");
}

TEST_F(Keys, InViewAll) {
    open();
    clickCategory(gem::CSTVSV);
    form().tspData->setCurrentIndex(1);
    QTableView* const grid = form().DBGridGEM;
    grid->selectRow(2);
    QGuiApplication::clipboard()->clear();
    hit("Ctrl+C", grid);
    EXPECT_TRUE(QGuiApplication::clipboard()->text().contains('\t'));
    hit("Enter", grid);
    EXPECT_EQ(form().tspData->currentIndex(), 0);
    EXPECT_EQ(position(), 3);
    expectAllTried("In \"View All\"");
}

TEST_F(Keys, InTheLists) {
    open();
    clickCategory(gem::CSTRPT);
    goTo("txtRptID", "101");
    edit();
    form::ListView* const selected = form().variables.selected;
    const int rows = selected->rowCount();
    ASSERT_GT(rows, 0);
    selected->selectRow(0);
    hit("Del", selected);
    EXPECT_EQ(selected->rowCount(), rows - 1);
    expectAllTried("In the lists of an event, a report or a list variable");
}

TEST_F(Keys, InTheExceptionBox) {
    open();
    clickCategory(gem::CSTVSV);
    edit();
    type(field("txtVarName"), QString());
    leave(field("txtVarName"));
    ASSERT_NE(exceptions(), QString());
    hit("Enter", form().txtErrLog);
    EXPECT_TRUE(at("txtVarName")->hasFocus());
    expectAllTried("In \"Exception:\"");
}

TEST_F(Keys, EachShortcutThatActsIsOnThePage) {
    open();
    clickCategory(gem::CSTVSV);
    press(nav().cmdNext);
    press(nav().cmdPrevious);
    QStringList named;
    for (const Line& line : linesOfPage()) named << line.key;
    int seen = 0;
    for (const QAction* action : window->findChildren<QAction*>() + window->actions()) {
        if (!action->isEnabled() || action->shortcut().isEmpty()) continue;
        ++seen;
        EXPECT_TRUE(named.contains(action->shortcut().toString(QKeySequence::PortableText)))
            << action->objectName().toStdString() << ": docs/keys.md has no line for "
            << action->shortcut().toString().toStdString();
    }
    EXPECT_GT(seen, 10);
}

TEST_F(Keys, ThePageIsOneAndStaysBesideTheWindow) {
    open();
    clickCategory(gem::CSTVSV);
    edit();
    window->showKeys();
    window->showKeys();
    const auto pages = window->findChildren<app::FrmKeys*>();
    ASSERT_EQ(pages.size(), 1);
    EXPECT_FALSE(pages.first()->isModal());
    const QString shown = pages.first()->findChild<QTextBrowser*>("txtKeys")->toPlainText();
    for (const Line& line : linesOfPage()) {
        EXPECT_TRUE(shown.contains(line.key)) << line.key.toStdString();
        EXPECT_TRUE(shown.contains(line.what)) << line.what.toStdString();
    }
    EXPECT_TRUE(editing());
    QTest::keyClick(pages.first(), Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window->findChildren<app::FrmKeys*>().isEmpty());
    press(nav().cmdCancel);
}

}  // namespace
}  // namespace stelvan::test
