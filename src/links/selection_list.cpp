#include "links/selection_list.h"

#include <QPushButton>

namespace stelvan::links {
namespace {

constexpr int kPoolId = 1;     // column of the id in every pool, and in lists that have its columns
constexpr int kShiftedId = 2;  // column of the id behind the check box
constexpr auto kDuplicate = "Item already in the selected list.";
constexpr auto kHoldsOnlyChild =
    "Cannot add item. Selected list already containing an item which is allowed to duplicate.";

int selectedOf(const form::ListView& list) {
    const int row = list.selectedRow();
    if (row < 0) throw base::objectNotSet();
    return row;
}

bool holds(const form::ListView& list, int column, const QString& id) {
    for (const form::ListRow& row : list.rows())
        if (row.texts.value(column) == id) return true;
    return false;
}

bool holdsChecked(const form::ListView& list) {
    for (const form::ListRow& row : list.rows())
        if (row.checked) return true;
    return false;
}

}  // namespace

SelectionLists::SelectionLists(checks::Checks& checks)
    : window_(checks.window), recordChecks_(checks.records) {}

void SelectionLists::connectControls() {
    connectEditor(window_.form.reports,
                  {&SelectionLists::cmdRptSelect_Click, &SelectionLists::cmdRptDeselect_Click,
                   &SelectionLists::cmdRptOrderUp_Click, &SelectionLists::cmdRptOrderDown_Click});
    connectEditor(window_.form.variables,
                  {&SelectionLists::cmdVarSelect_Click, &SelectionLists::cmdVarDeselect_Click,
                   &SelectionLists::cmdVarOrderUp_Click, &SelectionLists::cmdVarOrderDown_Click});
    connectEditor(window_.form.children,
                  {&SelectionLists::cmdSelect_Click, &SelectionLists::cmdDeselect_Click,
                   &SelectionLists::cmdOrderUp_Click, &SelectionLists::cmdOrderDown_Click});
}

void SelectionLists::connectEditor(const form::TwoListEditor& editor,
                                   const EditorHandlers& handlers) {
    const auto run = [this](Handler handler) { return [this, handler] { (this->*handler)(); }; };
    connect(editor.select, &QPushButton::clicked, this, run(handlers.select));
    connect(editor.deselect, &QPushButton::clicked, this, run(handlers.deselect));
    connect(editor.orderUp, &QPushButton::clicked, this, run(handlers.orderUp));
    connect(editor.orderDown, &QPushButton::clicked, this, run(handlers.orderDown));
    connect(editor.pool, &form::ListView::rowActivated, this, run(handlers.select));
    connect(editor.selected, &form::ListView::deletePressed, this, run(handlers.deselect));
}

void SelectionLists::lSelectItem(form::ListView& selected, form::ListView& pool) {
    base::trap("lSelectItem", [&] {
        const form::ListRow chosen = pool.row(selectedOf(pool));
        const bool children = gem::isCustomVariable(window_.state.category);
        if (holds(selected, children ? kShiftedId : kPoolId, chosen.texts.value(kPoolId))) {
            window_.dialogs.message(QLatin1String(kDuplicate));
        } else if (children && holdsChecked(selected)) {
            window_.dialogs.message(QLatin1String(kHoldsOnlyChild));
        } else {
            const auto columns = pool.headers().size();
            QStringList texts = children ? QStringList{QString()} : QStringList{};
            for (qsizetype c = 0; c < columns; ++c) texts << chosen.texts.value(c);
            selected.appendRow({texts, false});
        }
    });
}

void SelectionLists::lDeselectItem(form::ListView& selected) {
    base::trap("lDeselectItem", [&] {
        if (selected.rowCount() > 0) selected.removeRow(selectedOf(selected));
    });
}

void SelectionLists::lOrderUp(form::ListView& selected) {
    base::trap("lOrderUp", [&] { moveBy(selected, -1); });
}

void SelectionLists::lOrderDown(form::ListView& selected) {
    base::trap("lOrderDown", [&] { moveBy(selected, 1); });
}

void SelectionLists::moveBy(form::ListView& selected, int step) {
    const int from = selectedOf(selected);
    const int to = from + step;
    if (to >= 0 && to < selected.rowCount()) {
        const auto columns = static_cast<int>(selected.headers().size());
        for (int c = 0; c < columns; ++c) {
            const QString moved = selected.text(from, c);
            selected.setText(from, c, selected.text(to, c));
            selected.setText(to, c, moved);
        }
        selected.selectRow(to);
    }
    selected.setFocus();
}

void SelectionLists::verifyReport() {
    if (window_.state.editing()) recordChecks_.lVerifyRpt();
}

void SelectionLists::cmdRptSelect_Click() {
    const form::TwoListEditor& reports = window_.form.reports;
    window_.errors.handle("cmdRptSelect_Click",
                          [&] { lSelectItem(*reports.selected, *reports.pool); });
}

void SelectionLists::cmdRptDeselect_Click() {
    window_.errors.handle("cmdRptDeselect_Click",
                          [&] { lDeselectItem(*window_.form.reports.selected); });
}

void SelectionLists::cmdRptOrderUp_Click() {
    window_.errors.handle("cmdRptOrderUp_Click", [&] { lOrderUp(*window_.form.reports.selected); });
}

void SelectionLists::cmdRptOrderDown_Click() {
    window_.errors.handle("cmdRptOrderDown_Click",
                          [&] { lOrderDown(*window_.form.reports.selected); });
}

void SelectionLists::cmdVarSelect_Click() {
    const form::TwoListEditor& variables = window_.form.variables;
    window_.errors.handle("cmdVarSelect_Click", [&] {
        lSelectItem(*variables.selected, *variables.pool);
        verifyReport();
    });
}

void SelectionLists::cmdVarDeselect_Click() {
    window_.errors.handle("cmdVarDeselect_Click", [&] {
        lDeselectItem(*window_.form.variables.selected);
        verifyReport();
    });
}

void SelectionLists::cmdVarOrderUp_Click() {
    window_.errors.handle("cmdVarOrderUp_Click",
                          [&] { lOrderUp(*window_.form.variables.selected); });
}

void SelectionLists::cmdVarOrderDown_Click() {
    window_.errors.handle("cmdVarOrderDown_Click",
                          [&] { lOrderDown(*window_.form.variables.selected); });
}

void SelectionLists::cmdSelect_Click() {
    const form::TwoListEditor& children = window_.form.children;
    window_.errors.handle("cmdSelect_Click",
                          [&] { lSelectItem(*children.selected, *children.pool); });
}

void SelectionLists::cmdDeselect_Click() {
    window_.errors.handle("cmdDeselect_Click", [&] {
        const form::TwoListEditor& children = window_.form.children;
        const int row = children.selected->selectedRow();
        const form::ListRow taken = row < 0 ? form::ListRow() : children.selected->row(row);
        lDeselectItem(*children.selected);
        // The pool holds what belongs to no list, so it may lack what has just left this one.
        const QStringList texts = taken.texts.mid(kShiftedId - kPoolId);
        if (row >= 0 && !holds(*children.pool, kPoolId, texts.value(kPoolId)))
            children.pool->appendRow({texts});
    });
}

void SelectionLists::cmdOrderUp_Click() {
    window_.errors.handle("cmdOrderUp_Click", [&] { lOrderUp(*window_.form.children.selected); });
}

void SelectionLists::cmdOrderDown_Click() {
    window_.errors.handle("cmdOrderDown_Click",
                          [&] { lOrderDown(*window_.form.children.selected); });
}

}  // namespace stelvan::links
