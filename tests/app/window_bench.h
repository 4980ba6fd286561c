// The whole window on a copy of a sample model, driven through its widgets.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QTreeWidget>

#include "app/form/text.h"
#include "app/frm_main.h"
#include "app/subsystems.h"
#include "tests/support/samples.h"
#include "tests/support/scripted_dialogs.h"

namespace stelvan::test {

class WindowBench : public ::testing::Test {
protected:
    ScratchDir scratch;
    ScriptedDialogs dialogs;
    app::FrmMain window{dialogs, QString()};
    form::MainForm& form = window.form();
    form::MainState& state = window.state();
    const form::Navigator& nav = form.nav;

    /// Starts the window on a copy of a sample.
    void open(const std::string& model) {
        window.start(form::toQt(scratch.copyOf(sample(model)).string()));
        window.show();
        QApplication::setActiveWindow(&window);
    }

    void clickNode(int index) {
        QTreeWidget* tree = form.tvwSECSItem;
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {},
                          tree->visualItemRect(tree->topLevelItem(index - 1)).center());
    }
    static void press(QPushButton* button) { QTest::mouseClick(button, Qt::LeftButton); }

    /// Replaces a field's text by typing, as the user does it.
    static void type(const form::Field* field, const QString& text) {
        QWidget* widget = field->widget();
        widget->setFocus(Qt::MouseFocusReason);
        QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(widget, Qt::Key_Delete);
        QTest::keyClicks(widget, text);
    }

    bool moveToText(const form::Field* field, const QString& text) {
        for (int left = state.current.records->recordCount(); left > 0; --left) {
            if (field->text() == text) return true;
            press(nav.cmdNext);
        }
        return false;
    }

    [[nodiscard]] QString position() const { return nav.lblRecNumber->text(); }

    /// The rows of a query on the file as it is now, cells joined by "|".
    QStringList query(const std::string& sql) {
        db::Connection connection;
        connection.setConnectionText(window.subsystems().operations.connectionText());
        connection.open();
        db::Recordset records;
        records.open(sql, connection);
        QStringList rows;
        for (; !records.eof(); records.moveNext()) {
            QStringList cells;
            for (std::size_t i = 0; i < records.fieldCount(); ++i)
                cells << form::toQt(db::toTextOrEmpty(records.field(i)));
            rows << cells.join("|");
        }
        return rows;
    }
};

}  // namespace stelvan::test
