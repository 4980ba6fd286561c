#include "links/selection_list.h"

#include <QPushButton>

#include "checks/record_checks.h"

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

SelectionLists::SelectionLists(const form::MainForm& form, const form::MainState& state,
                               base::ErrorInfo& errors, form::Dialogs& dialogs,
                               checks::RecordChecks& recordChecks)
    : form_(form), state_(state), errors_(errors), dialogs_(dialogs), recordChecks_(recordChecks) {}

void SelectionLists::connectControls() {
    connectEditor(form_.evt.reports,
                  {&SelectionLists::cmdRptSelect_Click, &SelectionLists::cmdRptDeselect_Click,
                   &SelectionLists::cmdRptOrderUp_Click, &SelectionLists::cmdRptOrderDown_Click});
    connectEditor(form_.rpt.variables,
                  {&SelectionLists::cmdVarSelect_Click, &SelectionLists::cmdVarDeselect_Click,
                   &SelectionLists::cmdVarOrderUp_Click, &SelectionLists::cmdVarOrderDown_Click});
    connectEditor(form_.var.children,
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
    errors_.trap("lSelectItem", [&] {
        const form::ListRow chosen = pool.row(selectedOf(pool));
        const bool children = form::isCustomVariable(state_.category);
        if (holds(selected, children ? kShiftedId : kPoolId, chosen.texts.value(kPoolId))) {
            dialogs_.message(QLatin1String(kDuplicate));
        } else if (children && holdsChecked(selected)) {
            dialogs_.message(QLatin1String(kHoldsOnlyChild));
        } else {
            const auto columns = pool.headers().size();
            QStringList texts = children ? QStringList{QString()} : QStringList{};
            for (qsizetype c = 0; c < columns; ++c) texts << chosen.texts.value(c);
            selected.appendRow({texts, false});
        }
    });
}

void SelectionLists::lDeselectItem(form::ListView& selected) {
    errors_.trap("lDeselectItem", [&] {
        if (selected.rowCount() > 0) selected.removeRow(selectedOf(selected));
    });
}

void SelectionLists::lOrderUp(form::ListView& selected) {
    errors_.trap("lOrderUp", [&] { moveBy(selected, -1); });
}

void SelectionLists::lOrderDown(form::ListView& selected) {
    errors_.trap("lOrderDown", [&] { moveBy(selected, 1); });
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
    if (state_.editing()) recordChecks_.lVerifyRpt();
}

void SelectionLists::cmdRptSelect_Click() {
    const form::TwoListEditor& reports = form_.evt.reports;
    errors_.trap("cmdRptSelect_Click", [&] { lSelectItem(*reports.selected, *reports.pool); });
}

void SelectionLists::cmdRptDeselect_Click() {
    errors_.trap("cmdRptDeselect_Click", [&] { lDeselectItem(*form_.evt.reports.selected); });
}

void SelectionLists::cmdRptOrderUp_Click() {
    errors_.trap("cmdRptOrderUp_Click", [&] { lOrderUp(*form_.evt.reports.selected); });
}

void SelectionLists::cmdRptOrderDown_Click() {
    errors_.trap("cmdRptOrderDown_Click", [&] { lOrderDown(*form_.evt.reports.selected); });
}

void SelectionLists::cmdVarSelect_Click() {
    const form::TwoListEditor& variables = form_.rpt.variables;
    errors_.trap("cmdVarSelect_Click", [&] {
        lSelectItem(*variables.selected, *variables.pool);
        verifyReport();
    });
}

void SelectionLists::cmdVarDeselect_Click() {
    errors_.trap("cmdVarDeselect_Click", [&] {
        lDeselectItem(*form_.rpt.variables.selected);
        verifyReport();
    });
}

void SelectionLists::cmdVarOrderUp_Click() {
    errors_.trap("cmdVarOrderUp_Click", [&] { lOrderUp(*form_.rpt.variables.selected); });
}

void SelectionLists::cmdVarOrderDown_Click() {
    errors_.trap("cmdVarOrderDown_Click", [&] { lOrderDown(*form_.rpt.variables.selected); });
}

void SelectionLists::cmdSelect_Click() {
    const form::TwoListEditor& children = form_.var.children;
    errors_.trap("cmdSelect_Click", [&] { lSelectItem(*children.selected, *children.pool); });
}

void SelectionLists::cmdDeselect_Click() {
    errors_.trap("cmdDeselect_Click", [&] { lDeselectItem(*form_.var.children.selected); });
}

void SelectionLists::cmdOrderUp_Click() {
    errors_.trap("cmdOrderUp_Click", [&] { lOrderUp(*form_.var.children.selected); });
}

void SelectionLists::cmdOrderDown_Click() {
    errors_.trap("cmdOrderDown_Click", [&] { lOrderDown(*form_.var.children.selected); });
}

}  // namespace stelvan::links
