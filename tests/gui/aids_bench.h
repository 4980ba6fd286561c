// The window with its aids: the find box, the tool bar, where records are used, the grid.
#pragma once

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTabBar>
#include <QTableView>
#include <QToolButton>

#include "form/tool_bar.h"
#include "tests/gui/edit_bench.h"
#include "tests/support/outsider.h"

namespace stelvan::test {

class AidsBench : public EditBench {
protected:
    [[nodiscard]] const form::Aids& aids() const { return form().aids; }
    [[nodiscard]] QAction* tool(form::Tool tool) const { return aids().tlbModel->action(tool); }
    [[nodiscard]] QString shown(const char* name) const { return field(QString(name)).text(); }
    [[nodiscard]] QAbstractItemModel* grid() const { return form().DBGridGEM->model(); }

    void find(const QString& text) {
        aids().txtFind->setFocus();
        aids().txtFind->selectAll();
        QTest::keyClicks(aids().txtFind, text);
        QTest::qWait(20);  // descriptions are looked through once no key waits
    }
    /// Category, identifier and name of a row that was found.
    [[nodiscard]] QString found(int row) const {
        if (row >= aids().lvwFound->rowCount()) return "none";
        return aids().lvwFound->rows()[static_cast<std::size_t>(row)].texts.join('|');
    }
    void viewAll() { form().tspData->setCurrentIndex(1); }
    [[nodiscard]] int column(const QString& name) const {
        for (int c = 0; c < grid()->columnCount(); ++c)
            if (grid()->headerData(c, Qt::Horizontal).toString() == name) return c;
        throw std::logic_error("no column " + name.toStdString());
    }
    [[nodiscard]] QStringList cells(const QString& name) const {
        QStringList texts;
        for (int row = 0; row < grid()->rowCount(); ++row)
            texts << grid()->index(row, column(name)).data().toString();
        return texts;
    }
    /// A key at whatever has the focus.
    void key(Qt::Key key, Qt::KeyboardModifiers held = {}) {
        QWidget* const focus = QApplication::focusWidget();
        QTest::keyClick(focus != nullptr ? focus : window.get(), key, held);
    }
};

}  // namespace stelvan::test
