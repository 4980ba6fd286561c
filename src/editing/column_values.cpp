#include "editing/column_values.h"

#include "form/main_state.h"
#include "form/text.h"

namespace stelvan::editing {
namespace {

/// "Blank" is empty after trimming.
enum class Rule {
    Flag,           // 0 or 1
    AsTyped,        // whatever stands there
    Trimmed,        // identifiers, names, groups: their checks do not see outer blanks
    TrimmedOrNull,  // the text NULL where blank
    TypedOrNull,
    TrimmedOrZero,   // the text 0 where blank
    ByFormat,        // blank: NULL for texts, booleans and lists, 0 for numbers
    DefaultByFormat  // the same; a boolean in upper case
};

struct ColumnRule {
    const char* column;
    const form::Field* field;
    Rule rule;
};

QString orNull(const QString& text, const QString& trimmed) {
    return trimmed.isEmpty() ? QStringLiteral("NULL") : text;
}

QString byFormat(const QString& text, const QString& trimmed, const QString& format) {
    if (!trimmed.isEmpty()) return text;
    const bool numeric = format != QLatin1String("A") && format != QLatin1String("BL") &&
                         format != QLatin1String("L");
    return numeric ? QStringLiteral("0") : QStringLiteral("NULL");
}

QString storedText(const ColumnRule& rule, const QString& format) {
    const QString text = rule.field->text();
    const QString trimmed = text.trimmed();
    switch (rule.rule) {
        case Rule::Trimmed:
            return trimmed;
        case Rule::TrimmedOrNull:
            return orNull(trimmed, trimmed);
        case Rule::TypedOrNull:
            return orNull(text, trimmed);
        case Rule::TrimmedOrZero:
            return trimmed.isEmpty() ? QStringLiteral("0") : trimmed;
        case Rule::ByFormat:
            return byFormat(text, trimmed, format);
        case Rule::DefaultByFormat:
            return byFormat(format == QLatin1String("BL") ? trimmed.toUpper() : text, trimmed,
                            format);
        case Rule::Flag:
        case Rule::AsTyped:
            break;
    }
    return text;
}

std::vector<ColumnRule> eventRules(const form::EvtFrame& evt) {
    return {{"evt_name", evt.txtEvtName, Rule::Trimmed},
            {"evt_id", evt.txtEvtID, Rule::Trimmed},
            {"evt_group", evt.txtEvtGroup, Rule::Trimmed},
            {"evt_text", evt.txtEvtDesc, Rule::AsTyped},
            {"evt_enable", evt.chkEvtEnable, Rule::Flag}};
}

std::vector<ColumnRule> alarmRules(const form::AlmFrame& alm) {
    return {{"alm_name", alm.txtAlmName, Rule::Trimmed},
            {"alm_id", alm.txtAlmID, Rule::Trimmed},
            {"alm_group", alm.txtAlmGroup, Rule::Trimmed},
            {"alm_text", alm.txtAlmText, Rule::AsTyped},
            {"alm_enable", alm.chkAlmEnable, Rule::Flag},
            {"alm_set_ceid", alm.txtAlmSetCEID, Rule::TrimmedOrZero},
            {"alm_set_cename", alm.txtAlmSetCEName, Rule::TrimmedOrNull},
            {"alm_clr_ceid", alm.txtAlmClrCEID, Rule::TrimmedOrZero},
            {"alm_clr_cename", alm.txtAlmClrCEName, Rule::TrimmedOrNull}};
}

std::vector<ColumnRule> reportRules(const form::RptFrame& rpt) {
    return {{"rpt_name", rpt.txtRptName, Rule::Trimmed},
            {"rpt_id", rpt.txtRptID, Rule::Trimmed},
            {"rpt_desc", rpt.txtRptDesc, Rule::AsTyped},
            {"rpt_default", rpt.chkRptDefault, Rule::Flag}};
}

std::vector<ColumnRule> variableRules(const form::VarFrame& var) {
    return {{"var_name", var.txtVarName, Rule::TrimmedOrNull},
            {"var_id", var.txtVarID, Rule::Trimmed},
            {"var_group", var.txtVarGroup, Rule::TrimmedOrNull},
            {"var_desc", var.txtVarDesc, Rule::TypedOrNull},
            {"var_defaultval", var.txtVarDefValue, Rule::DefaultByFormat},
            {"var_val", var.txtVarValue, Rule::ByFormat},
            {"var_max", var.txtVarMax, Rule::ByFormat},
            {"var_min", var.txtVarMin, Rule::ByFormat},
            {"var_unit", var.txtVarUnit, Rule::TypedOrNull},
            {"var_format", var.cmbVarFormat, Rule::AsTyped}};
}

std::vector<ColumnRule> rulesOf(const form::MainForm& form, std::int16_t category) {
    switch (category) {
        case form::GEMEVT:
            return {{"evt_enable", form.evt.chkEvtEnable, Rule::Flag}};
        case form::CSTEVT:
            return eventRules(form.evt);
        case form::CSTALM:
            return alarmRules(form.alm);
        case form::CSTRPT:
            return reportRules(form.rpt);
        case form::GEMVDV:
        case form::GEMSDV:
        case form::GEMVEC:
            // Everything else about a GEM variable is fixed; its closed fields would not survive
            // the blanks.
            return {{"var_defaultval", form.var.txtVarDefValue, Rule::DefaultByFormat},
                    {"var_val", form.var.txtVarValue, Rule::ByFormat}};
        case form::CSTVDV:
        case form::CSTVSV:
        case form::CSTVEC:
            return variableRules(form.var);
        default:
            return {};
    }
}

const char* typeOf(std::int16_t category) {
    switch (category) {
        case form::CSTVDV:
            return "DV";
        case form::CSTVSV:
            return "SV";
        default:
            return "EC";
    }
}

}  // namespace

QString formatOf(const form::VarFrame& frame) {
    return frame.cmbVarFormat->text().trimmed().toUpper();
}

std::vector<ColumnValue> columnValues(const form::MainForm& form, std::int16_t category) {
    const QString format = formatOf(form.var);
    std::vector<ColumnValue> values;
    for (const ColumnRule& rule : rulesOf(form, category)) {
        if (rule.rule == Rule::Flag) {
            values.push_back({rule.column, rule.field->checked() ? 1 : 0});
        } else {
            values.push_back({rule.column, form::toUtf8(storedText(rule, format))});
        }
    }
    if (form::isCustomVariable(category))
        values.push_back({"var_type", std::string(typeOf(category))});
    return values;
}

}  // namespace stelvan::editing
