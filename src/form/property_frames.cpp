#include "form/property_frames.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "form/form_rows.h"
#include "form/inputs.h"

namespace stelvan::form {
namespace {

using enum gem::Control;

constexpr int kIdCharacters = 12;
constexpr int kNumberCharacters = 22;
constexpr int kUnitCharacters = 16;
constexpr int kGroupCharacters = 48;
constexpr int kComboCharacters = 18;
constexpr int kTextLines = 6;
constexpr int kAlarmTextLines = 12;  // nothing below it needs the room

QString tr(const char* text) {
    return QString::fromUtf8(text);
}

QPushButton* browseButton(const char* name, const QString& what) {
    auto* button = new QPushButton(tr("Browse…"));
    button->setObjectName(QLatin1String(name));
    button->setAccessibleName(tr("Browse for the ") + what);
    button->setAutoDefault(false);
    return button;
}

/// Beside or below the values: what the setting takes, what it means.
QLabel* fact(const char* name) {
    auto* label = new QLabel;
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText);
    return label;
}

/// The three alternatives of one settings value over each other, and its browse button.
struct SettingInput {
    gem::Control text;
    gem::Control combo;
    gem::Control check;
    const char* browse;
};

QPushButton* settingInput(FormRows& rows, MainForm& form, const SettingInput& names,
                          const QString& label, const QString& spoken) {
    auto* combo = new ComboBox;
    combo->setMinimumContentsLength(kComboCharacters);
    auto* browse = browseButton(names.browse, spoken);
    Field* const text = form.add(names.text, new LineBox);
    form.add(names.combo, combo);
    form.add(names.check, new QCheckBox);
    QHBoxLayout* row = rows.sharedRow(label, text->widget());
    for (const gem::Control name : {names.text, names.combo, names.check}) {
        QWidget* const input = form[name].widget();
        row->addWidget(input, name == names.text ? 1 : 0);
        input->setAccessibleName(spoken);
        input->setVisible(name == names.text);
    }
    row->addWidget(browse);
    if (names.text == txtSttValue) row->addWidget(form.lblSttRange = fact("lblSttRange"));
    row->addStretch(0);
    browse->hide();
    return browse;
}

}  // namespace

void buildVarFrame(QGroupBox& frame, MainForm& form) {
    FormRows rows(frame, form);
    rows.beginRow();
    rows.line(txtVarName, tr("Na&me"));
    rows.line(txtVarID, tr("&ID"), kIdCharacters);
    rows.endRow();
    rows.line(txtVarGroup, tr("&Group"), kGroupCharacters);
    rows.text(txtVarDesc, tr("Desc&ription"), kTextLines);
    rows.beginRow();
    rows.combo(cmbVarFormat, tr("F&ormat"));
    rows.line(txtVarMin, tr("Minim&um"), kNumberCharacters);
    rows.line(txtVarMax, tr("Ma&ximum"), kNumberCharacters);
    rows.line(txtVarUnit, tr("Uni&t"), kUnitCharacters);
    rows.endRow();
    rows.line(txtVarDefValue, tr("Defau&lt value"));
    rows.line(txtVarValue, tr("&Value"));
    rows.beginRow();
    rows.line(txtVarLmtCEName, tr("Limit CE name"));
    rows.line(txtVarLmtCEID, tr("Limit CEID"), kIdCharacters);
    rows.endRow();
    for (const gem::Control limit : {txtVarLmtCEID, txtVarLmtCEName})
        form[limit].widget()->setToolTip(tr("Not stored: the database has no column for it."));
    form.children =
        buildEditor({lvwItemSelection, lvwChildItems, "lblExistingItems", "lblChildItems",
                     cmdSelect, cmdDeselect, cmdOrderUp, cmdOrderDown, "fltItemSelection",
                     tr("Existing Variable List:"), tr("Child Items:")});
    form.children.selected->setCheckable(true);
    rows.below(form.children.area);
}

void buildAlmFrame(QGroupBox& frame, MainForm& form) {
    FormRows rows(frame, form);
    rows.beginRow();
    rows.line(txtAlmName, tr("Na&me"));
    rows.line(txtAlmID, tr("&ID"), kIdCharacters);
    rows.endRow();
    rows.line(txtAlmGroup, tr("&Group"), kGroupCharacters);
    rows.text(txtAlmText, tr("Alarm &text"), kAlarmTextLines);
    rows.check(chkAlmEnable, tr("Ena&bled"));
    rows.beginRow();
    rows.line(txtAlmSetCEName, tr("Set CE name"));
    rows.line(txtAlmSetCEID, tr("Set CEID"), kIdCharacters);
    rows.endRow();
    rows.beginRow();
    rows.line(txtAlmClrCEName, tr("Clear CE name"));
    rows.line(txtAlmClrCEID, tr("Clear CEID"), kIdCharacters);
    rows.endRow();
    rows.fillUp();
}

void buildEvtFrame(QGroupBox& frame, MainForm& form) {
    FormRows rows(frame, form);
    rows.beginRow();
    rows.line(txtEvtName, tr("Na&me"));
    rows.line(txtEvtID, tr("&ID"), kIdCharacters);
    rows.endRow();
    rows.line(txtEvtGroup, tr("&Group"), kGroupCharacters);
    rows.text(txtEvtDesc, tr("Desc&ription"), kTextLines);
    rows.check(chkEvtEnable, tr("Ena&bled"));
    form.reports = buildEditor({lvwRptPool, lvwRptList, "lblRptPool", "lblRptList", cmdRptSelect,
                                cmdRptDeselect, cmdRptOrderUp, cmdRptOrderDown, "fltRptPool",
                                tr("Existing reports:"), tr("Linked reports:")});
    form.eventLower = new QWidget;
    auto* const lower = new QHBoxLayout(form.eventLower);
    lower->setContentsMargins(0, 0, 0, 0);
    lower->addWidget(form.reports.area, 1);
    rows.below(form.eventLower);
}

void buildRptFrame(QGroupBox& frame, MainForm& form) {
    FormRows rows(frame, form);
    rows.beginRow();
    rows.line(txtRptName, tr("Na&me"));
    rows.line(txtRptID, tr("&ID"), kIdCharacters);
    rows.endRow();
    rows.text(txtRptDesc, tr("Desc&ription"), kTextLines);
    rows.check(chkRptDefault, tr("Defau&lt report"));
    form.variables = buildEditor({lvwVarPool, lvwVarList, "lblVarPool", "lblVarList", cmdVarSelect,
                                  cmdVarDeselect, cmdVarOrderUp, cmdVarOrderDown, "fltVarPool",
                                  tr("Existing variables:"), tr("Associated variables:")});
    rows.below(form.variables.area);
}

void buildSttFrame(QGroupBox& frame, MainForm& form) {
    FormRows rows(frame, form);
    rows.line(txtSttName, tr("Na&me"), kGroupCharacters);
    form.cmdSttBrowse =
        settingInput(rows, form, {txtSttValue, cmbSttValue, chkSttValue, "cmdSttBrowse"},
                     tr("&Value"), tr("Value"));
    form.cmdSttDefBrowse = settingInput(
        rows, form, {txtSttDefValue, cmbSttDefValue, chkSttDefValue, "cmdSttDefBrowse"},
        tr("Defau&lt value"), tr("Default value"));
    form.lblSttMeaning = fact("lblSttMeaning");
    form.lblSttMeaning->setWordWrap(true);
    rows.beside(form.lblSttMeaning);
    rows.fillUp();
}

void buildLmtFrame(QGroupBox& frame, MainForm& form) {
    FormRows rows(frame, form);
    rows.line(txtLmtID, tr("Limit &ID"), kIdCharacters);
    rows.line(txtLmtVarID, tr("&Variable ID"), kIdCharacters);
    rows.line(txtLmtUBound, tr("&Upper bound"), kNumberCharacters);
    rows.line(txtLmtLBound, tr("&Lower bound"), kNumberCharacters);
    rows.line(txtLmtTransType, tr("&Transition type"), kNumberCharacters);
    rows.fillUp();
}

}  // namespace stelvan::form
