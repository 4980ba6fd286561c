// The whole window on a scratch copy of a model, worked with as a user does: clicks in the tree, on
// buttons and fields, keys.
#pragma once

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>
#include <memory>
#include <stdexcept>

#include "app/frm_main.h"
#include "app/subsystems.h"
#include "form/text.h"
#include "tests/support/models.h"
#include "tests/support/qt_text.h"
#include "tests/support/scripted_dialogs.h"

namespace stelvan::test {

class WindowBench : public ::testing::Test {
protected:
    using enum gem::Control;

    ScratchDir scratch;
    ScriptedDialogs dialogs;
    std::unique_ptr<app::FrmMain> window;

    /// Opens the window on a copy of a sample model, as start-up leaves it.
    void open(const std::string& modelName = "gem.mdb") {
        const auto path = scratch.copyOf(model(modelName));
        window = std::make_unique<app::FrmMain>(dialogs, QString());
        window->start(form::toQt(path.string()));
        window->resize(1200, 900);
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        ASSERT_EQ(dialogs.texts(), QStringList());
    }

    [[nodiscard]] form::MainForm& form() const { return window->window().form; }
    [[nodiscard]] form::MainState& state() const { return window->window().state; }
    [[nodiscard]] app::Subsystems& all() const { return window->subsystems(); }
    /// The exact text of the "Exception:" box.
    [[nodiscard]] QString exceptions() const { return all().checks.box.text(); }

    /// Clicks a category's node, 1 to 11.
    void clickCategory(std::int16_t category) {
        QTreeWidget* const tree = form().tvwSECSItem;
        const QRect node = tree->visualItemRect(tree->topLevelItem(category - 1));
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, node.center());
        ASSERT_EQ(state().category, category);
    }
    static void press(QPushButton* button) {
        ASSERT_TRUE(button->isVisible() && button->isEnabled())
            << button->objectName().toStdString();
        QTest::mouseClick(button, Qt::LeftButton);
    }
    void add(std::int16_t category) {
        clickCategory(category);
        press(form().nav.cmdNew);
        ASSERT_EQ(state().editMode, form::EditMode::Adding);
    }
    void edit() {
        press(form().nav.cmdUpdate);
        ASSERT_EQ(state().editMode, form::EditMode::Editing);
    }
    /// Pages on until a field shows a text.
    void goTo(const QString& fieldName, const QString& text) {
        const form::Field& shown = field(fieldName);
        for (int left = 2000; shown.text() != text; --left) {
            ASSERT_GT(left, 0) << "no record with " << fieldName.toStdString() << ' '
                               << text.toStdString();
            press(form().nav.cmdNext);
        }
    }

    [[nodiscard]] form::Field& field(const QString& name) const {
        for (form::Field* f : form().fields()) {
            if (f->widget()->objectName() == name) return *f;
        }
        throw std::logic_error("no such field: " + name.toStdString());
    }
    /// Replaces a field's text by keystrokes.
    static void type(form::Field& field, const QString& text) {
        QWidget* const widget = field.widget();
        widget->setFocus();
        ASSERT_TRUE(widget->hasFocus()) << widget->objectName().toStdString();
        QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(widget, Qt::Key_Delete);
        QTest::keyClicks(widget, text);
    }
    /// Tab; where the focus order leads to a closed field, a click into another one.
    void leave(form::Field& field) {
        QWidget* const widget = field.widget();
        if (!widget->hasFocus()) widget->setFocus();
        QTest::keyClick(widget, Qt::Key_Tab);
        for (form::Field* other : form().fields()) {
            if (!widget->hasFocus()) break;
            const bool line = other->kind() == form::Field::Kind::Line;
            if (line && other != &field && other->widget()->isVisible() && other->isOpen()) {
                QTest::mouseClick(other->widget(), Qt::LeftButton);
            }
        }
        ASSERT_FALSE(widget->hasFocus()) << widget->objectName().toStdString();
    }
    /// The rows of a query on the file as it is now, cells joined by "|".
    [[nodiscard]] QStringList query(const std::string& sql) const {
        db::Connection connection;
        connection.setConnectionText(window->window().operations.connectionText());
        connection.open();
        db::Recordset records;
        records.open(sql, connection);
        QStringList rows;
        for (; !records.eof(); records.moveNext()) {
            QStringList cells;
            for (std::size_t i = 0; i < records.fieldCount(); ++i)
                cells << form::toQt(db::toTextOrEmpty(records.field(i)));
            rows << cells.join('|');
        }
        return rows;
    }
    void typeAndLeave(const QString& name, const QString& text) {
        type(field(name), text);
        leave(field(name));
    }
};

}  // namespace stelvan::test
