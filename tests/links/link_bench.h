// A window with the link editors behind it, and the gestures with which a user works on their
// lists.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>

#include "links/link_editors.h"
#include "tests/support/check_bench.h"

namespace stelvan::test {

class LinkBench : public CheckBench {
protected:
    links::LinkEditors links{allChecks};
    links::EventReports& eventReports = links.eventReports;
    links::ReportVariables& reportVariables = links.reportVariables;
    links::ListChildren& listChildren = links.listChildren;
    links::SelectionLists& lists = links.selectionLists;

    void SetUp() override {
        CheckBench::SetUp();
        lists.connectControls();
        QObject::connect(form.children.selected, &form::ListView::itemChecked, &lists,
                         [this](int row) { listChildren.lvwChildItems_ItemCheck(row); });
    }

    /// A frame in an edit, its lists shown and open.
    void openFrame(std::int16_t category, form::EditMode mode = form::EditMode::Editing) {
        begin(category, mode);
        for (const form::TwoListEditor* editor : {&form.reports, &form.variables, &form.children}) {
            editor->showPool(true);
            editor->showSelected(true);
            editor->pool->setOpen(true);
            editor->selected->setOpen(true);
        }
        QApplication::processEvents();
    }

    static void click(QPushButton* button) { QTest::mouseClick(button, Qt::LeftButton); }

    static QPoint middleOf(const form::ListView& list, int row, int column) {
        const QModelIndex shown = list.model()->index(row, column);
        return list.visualRect(shown).center();
    }
    static void clickRow(form::ListView* list, int row, int column = 1) {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, middleOf(*list, row, column));
    }

    static std::vector<QStringList> textsOf(const form::ListView* list) {
        std::vector<QStringList> all;
        for (const form::ListRow& row : list->rows()) all.push_back(row.texts);
        return all;
    }
    static QStringList columnOf(const form::ListView* list, int column) {
        QStringList all;
        for (const form::ListRow& row : list->rows()) all << row.texts.value(column);
        return all;
    }
    static std::vector<form::ListRow> rowsOf(const std::vector<QStringList>& texts) {
        std::vector<form::ListRow> rows;
        for (const QStringList& row : texts) rows.push_back({row, false});
        return rows;
    }
};

}  // namespace stelvan::test
