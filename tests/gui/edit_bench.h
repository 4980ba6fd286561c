// The whole window, and its file read by another reader after each change.
#pragma once

#include <QLabel>

#include "tests/gui/mdb_export.h"
#include "tests/support/window_bench.h"

namespace stelvan::test {

class EditBench : public WindowBench {
protected:
    void SetUp() override { STELVAN_NEEDS_MDB_EXPORT(); }

    [[nodiscard]] std::string file() const { return state().databasePath; }

    [[nodiscard]] ExportedRow stored(const QString& table, const QString& column,
                                     const QString& value) const {
        const auto rows = exportWhere(file(), table, column, value);
        EXPECT_EQ(rows.size(), 1U) << table.toStdString() << ' ' << value.toStdString();
        return rows.empty() ? ExportedRow() : rows.front();
    }
    [[nodiscard]] std::size_t countOf(const QString& table, const QString& column,
                                      const QString& value) const {
        return exportWhere(file(), table, column, value).size();
    }
    /// The values of one column in the numeric order of another.
    [[nodiscard]] QStringList ordered(const QString& table, const QString& column,
                                      const QString& value, const QString& wanted,
                                      const QString& order) const {
        auto rows = exportWhere(file(), table, column, value);
        std::stable_sort(rows.begin(), rows.end(), [&](const ExportedRow& a, const ExportedRow& b) {
            return a.value(order).toDouble() < b.value(order).toDouble();
        });
        QStringList values;
        for (const ExportedRow& row : rows) values << row.value(wanted);
        return values;
    }

    [[nodiscard]] const form::Navigator& nav() const { return form().nav; }
    [[nodiscard]] QString place() const { return nav().lblRecNumber->text(); }

    void save() { press(nav().cmdSave); }
    void cancel() { press(nav().cmdCancel); }
    void answerYesAndDelete() {
        dialogs.answers.push_back(true);
        press(nav().cmdDelete);
    }
    /// Reports up to 100 belong to the standard.
    void showReport(const QString& id) {
        clickCategory(gem::CSTRPT);
        goTo("txtRptID", id);
    }
    /// Steps to the n-th record.
    void goToNumber(int number) {
        while (state().current.position < number) press(nav().cmdNext);
        while (state().current.position > number) press(nav().cmdPrevious);
    }

    void expectBrowsing() {
        EXPECT_EQ(state().editMode, form::EditMode::Browsing);
        EXPECT_TRUE(nav().cmdSave->isHidden() && nav().cmdCancel->isHidden());
        EXPECT_TRUE(form().tvwSECSItem->isEnabled());
    }
    void expectStored() {
        EXPECT_EQ(dialogs.texts(), QStringList());
        EXPECT_EQ(exceptions(), QString());
        expectBrowsing();
    }
    void check(form::Field* box, bool on) {
        if (box->checked() != on)
            QTest::mouseClick(box->widget(), Qt::LeftButton, {},
                              QPoint(8, box->widget()->height() / 2));
        ASSERT_EQ(box->checked(), on);
    }
    static QStringList columnOf(const form::ListView* list, int column) {
        QStringList all;
        for (const form::ListRow& row : list->rows()) all << row.texts.value(column);
        return all;
    }
    /// Selects the row with an id and presses the button.
    void take(const form::TwoListEditor& editor, int idColumn, const QString& id,
              QPushButton* button, form::ListView* list) {
        const auto row = static_cast<int>(columnOf(list, idColumn).indexOf(id));
        ASSERT_GE(row, 0) << id.toStdString();
        ASSERT_TRUE(editor.pool->isVisible());
        const QModelIndex index = list->model()->index(row, 1);
        list->scrollTo(index);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(index).center());
        ASSERT_EQ(list->selectedRow(), row);
        press(button);
    }
};

}  // namespace stelvan::test
