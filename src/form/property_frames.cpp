#include "form/property_frames.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>

#include "form/form_rows.h"
#include "form/inputs.h"

namespace stelvan::form {
namespace {

constexpr int kIdCharacters = 12;
constexpr int kNumberCharacters = 22;
constexpr int kUnitCharacters = 16;
constexpr int kGroupCharacters = 48;
constexpr int kComboCharacters = 18;
constexpr int kTextLines = 5;

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

/// The three alternatives of one settings value over each other, and its browse button.
struct SettingInput {
    Field* text;
    Field* combo;
    Field* check;
    QPushButton* browse;
};

SettingInput settingInput(FormRows& rows, const QString& label, const QString& suffix,
                          const QString& spoken) {
    auto* text = new LineBox;
    text->setObjectName(tr("txtStt") + suffix);
    auto* combo = new ComboBox;
    combo->setObjectName(tr("cmbStt") + suffix);
    combo->setMinimumContentsLength(kComboCharacters);
    auto* check = new QCheckBox;
    check->setObjectName(tr("chkStt") + suffix);
    auto* browse =
        browseButton(suffix.startsWith(tr("Def")) ? "cmdSttDefBrowse" : "cmdSttBrowse", spoken);
    QHBoxLayout* row = rows.sharedRow(label, text);
    row->addWidget(text, 1);
    row->addWidget(combo);
    row->addWidget(check);
    row->addWidget(browse);
    row->addStretch(0);
    for (QWidget* input : {static_cast<QWidget*>(text), static_cast<QWidget*>(combo),
                           static_cast<QWidget*>(check)}) {
        input->setAccessibleName(spoken);
        input->setVisible(input == text);
    }
    browse->hide();
    return {new Field(text), new Field(combo), new Field(check), browse};
}

}  // namespace

VarFrame buildVarFrame(QGroupBox& frame) {
    FormRows rows(frame);
    VarFrame var;
    rows.beginRow();
    var.txtVarName = rows.line("txtVarName", tr("Na&me"));
    var.txtVarID = rows.line("txtVarID", tr("&ID"), kIdCharacters);
    rows.endRow();
    var.txtVarGroup = rows.line("txtVarGroup", tr("&Group"), kGroupCharacters);
    var.txtVarDesc = rows.text("txtVarDesc", tr("Desc&ription"), kTextLines);
    rows.beginRow();
    var.cmbVarFormat = rows.combo("cmbVarFormat", tr("F&ormat"));
    var.txtVarMin = rows.line("txtVarMin", tr("Minim&um"), kNumberCharacters);
    var.txtVarMax = rows.line("txtVarMax", tr("Ma&ximum"), kNumberCharacters);
    var.txtVarUnit = rows.line("txtVarUnit", tr("Uni&t"), kUnitCharacters);
    rows.endRow();
    var.txtVarDefValue = rows.line("txtVarDefValue", tr("Defau&lt value"));
    var.txtVarValue = rows.line("txtVarValue", tr("&Value"));
    rows.beginRow();
    var.txtVarLmtCEName = rows.line("txtVarLmtCEName", tr("Limit CE name"));
    var.txtVarLmtCEID = rows.line("txtVarLmtCEID", tr("Limit CEID"), kIdCharacters);
    rows.endRow();
    for (Field* limit : {var.txtVarLmtCEID, var.txtVarLmtCEName})
        limit->widget()->setToolTip(tr("Not stored: the database has no column for it."));
    var.children =
        buildEditor({"lvwItemSelection", "lvwChildItems", "lblExistingItems", "lblChildItems",
                     "cmdSelect", "cmdDeselect", "cmdOrderUp", "cmdOrderDown", "fltItemSelection",
                     tr("Existing Variable List:"), tr("Child Items:")});
    var.children.selected->setCheckable(true);
    rows.below(var.children.area);
    return var;
}

AlmFrame buildAlmFrame(QGroupBox& frame) {
    FormRows rows(frame);
    AlmFrame alm;
    rows.beginRow();
    alm.txtAlmName = rows.line("txtAlmName", tr("Na&me"));
    alm.txtAlmID = rows.line("txtAlmID", tr("&ID"), kIdCharacters);
    rows.endRow();
    alm.txtAlmGroup = rows.line("txtAlmGroup", tr("&Group"), kGroupCharacters);
    alm.txtAlmText = rows.text("txtAlmText", tr("Alarm &text"), kTextLines);
    alm.chkAlmEnable = rows.check("chkAlmEnable", tr("Ena&bled"));
    rows.beginRow();
    alm.txtAlmSetCEName = rows.line("txtAlmSetCEName", tr("Set CE name"));
    alm.txtAlmSetCEID = rows.line("txtAlmSetCEID", tr("Set CEID"), kIdCharacters);
    rows.endRow();
    rows.beginRow();
    alm.txtAlmClrCEName = rows.line("txtAlmClrCEName", tr("Clear CE name"));
    alm.txtAlmClrCEID = rows.line("txtAlmClrCEID", tr("Clear CEID"), kIdCharacters);
    rows.endRow();
    return alm;
}

EvtFrame buildEvtFrame(QGroupBox& frame) {
    FormRows rows(frame);
    EvtFrame evt;
    rows.beginRow();
    evt.txtEvtName = rows.line("txtEvtName", tr("Na&me"));
    evt.txtEvtID = rows.line("txtEvtID", tr("&ID"), kIdCharacters);
    rows.endRow();
    evt.txtEvtGroup = rows.line("txtEvtGroup", tr("&Group"), kGroupCharacters);
    evt.txtEvtDesc = rows.text("txtEvtDesc", tr("Desc&ription"), kTextLines);
    evt.chkEvtEnable = rows.check("chkEvtEnable", tr("Ena&bled"));
    evt.reports = buildEditor({"lvwRptPool", "lvwRptList", "lblRptPool", "lblRptList",
                               "cmdRptSelect", "cmdRptDeselect", "cmdRptOrderUp", "cmdRptOrderDown",
                               "fltRptPool", tr("Existing reports:"), tr("Linked reports:")});
    rows.below(evt.reports.area);
    return evt;
}

RptFrame buildRptFrame(QGroupBox& frame) {
    FormRows rows(frame);
    RptFrame rpt;
    rows.beginRow();
    rpt.txtRptName = rows.line("txtRptName", tr("Na&me"));
    rpt.txtRptID = rows.line("txtRptID", tr("&ID"), kIdCharacters);
    rows.endRow();
    rpt.txtRptDesc = rows.text("txtRptDesc", tr("Desc&ription"), kTextLines);
    rpt.chkRptDefault = rows.check("chkRptDefault", tr("Defau&lt report"));
    rpt.variables =
        buildEditor({"lvwVarPool", "lvwVarList", "lblVarPool", "lblVarList", "cmdVarSelect",
                     "cmdVarDeselect", "cmdVarOrderUp", "cmdVarOrderDown", "fltVarPool",
                     tr("Existing variables:"), tr("Associated variables:")});
    rows.below(rpt.variables.area);
    return rpt;
}

SttFrame buildSttFrame(QGroupBox& frame) {
    FormRows rows(frame);
    SttFrame stt;
    stt.txtSttName = rows.line("txtSttName", tr("Na&me"), kGroupCharacters);
    const SettingInput value = settingInput(rows, tr("&Value"), tr("Value"), tr("Value"));
    stt.txtSttValue = value.text;
    stt.cmbSttValue = value.combo;
    stt.chkSttValue = value.check;
    stt.cmdSttBrowse = value.browse;
    const SettingInput byDefault =
        settingInput(rows, tr("Defau&lt value"), tr("DefValue"), tr("Default value"));
    stt.txtSttDefValue = byDefault.text;
    stt.cmbSttDefValue = byDefault.combo;
    stt.chkSttDefValue = byDefault.check;
    stt.cmdSttDefBrowse = byDefault.browse;
    rows.fillUp();
    return stt;
}

LmtFrame buildLmtFrame(QGroupBox& frame) {
    FormRows rows(frame);
    LmtFrame lmt;
    lmt.txtLmtID = rows.line("txtLmtID", tr("Limit &ID"), kIdCharacters);
    lmt.txtLmtVarID = rows.line("txtLmtVarID", tr("&Variable ID"), kIdCharacters);
    lmt.txtLmtUBound = rows.line("txtLmtUBound", tr("&Upper bound"), kNumberCharacters);
    lmt.txtLmtLBound = rows.line("txtLmtLBound", tr("&Lower bound"), kNumberCharacters);
    lmt.txtLmtTransType = rows.line("txtLmtTransType", tr("&Transition type"), kNumberCharacters);
    rows.fillUp();
    return lmt;
}

}  // namespace stelvan::form
