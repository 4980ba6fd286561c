#include "links/report_variables.h"

#include <QLineEdit>
#include <algorithm>
#include <set>
#include <utility>

#include "base/number.h"
#include "form/text.h"
#include "links/link_rows.h"
#include "links/navigator_buttons.h"
#include "links/query.h"

namespace stelvan::links {
namespace {

constexpr LinkTable kLinks = {"secs_rpt_var", "rpt_id", "var_id", "var_order"};
constexpr int kIdColumn = 1;
constexpr int kOrderColumn = 4;
constexpr auto kGem = "Y";
constexpr auto kCustom = "N";
constexpr auto kHighestReserved = "100";
const std::vector<int> kPoolWidths = {4, 2, 1, 1};

QString orderOf(const form::ListRow& row) {
    return row.texts.value(kOrderColumn);
}

/// What is no number comes before all numbers.
bool comesBefore(const form::ListRow& left, const form::ListRow& right) {
    const std::string a = form::toUtf8(orderOf(left));
    const std::string b = form::toUtf8(orderOf(right));
    if (!base::isNumeric(b)) return false;
    return !base::isNumeric(a) || base::compareDecimals(a, b) < 0;
}

}  // namespace

bool isReservedReport(const std::string& reportId) {
    return base::isNumeric(reportId) && base::compareDecimals(reportId, "0") >= 0 &&
           base::compareDecimals(reportId, kHighestReserved) <= 0;
}

ReportVariables::ReportVariables(const form::RptFrame& frame, const form::Navigator& navigator,
                                 db::Operations& operations)
    : frame_(frame), navigator_(navigator), operations_(operations), errors_(operations.errors()) {}

void ReportVariables::lDispVarListEditor(bool show) {
    errors_.trap("lDispVarListEditor", [&] {
        frame_.variables.showPool(show);
        if (!show) return;
        form::ListView& pool = *frame_.variables.pool;
        pool.setHeaders({QStringLiteral("Name"), QStringLiteral("ID"), QStringLiteral("Type"),
                         QStringLiteral("GEM")});
        pool.setWidths(kPoolWidths);
        pool.clearRows();
        frame_.variables.poolFilter->clear();
        std::vector<form::ListRow> rows;
        if (readPool("select var_name, var_id, var_type FROM secs_gemvar WHERE var_parentkey = 0",
                     kGem, rows) &&
            readPool("select var_name, var_id, var_type FROM secs_cusvar WHERE var_parentkey = 0",
                     kCustom, rows))
            pool.setRows(rows);
    });
}

bool ReportVariables::readPool(const char* sql, const char* gem, std::vector<form::ListRow>& rows) {
    Query query(operations_, sql);
    if (!query.opened()) return false;
    query.forEach([&](const Query& record) {
        rows.push_back({{record.text("var_name"), record.text("var_id"), record.text("var_type"),
                         QLatin1String(gem)}});
    });
    return true;
}

void ReportVariables::lUpdateRptVarList() {
    errors_.trap("lUpdateRptVarList", [&] {
        if (frame_.txtRptID->text().trimmed().isEmpty()) return;
        clear();
        filled_ = false;
        std::vector<form::ListRow> rows;
        if (!readList("FROM secs_rpt_var rpt, secs_gemvar var ", kGem, rows) ||
            !readList("FROM secs_rpt_var rpt, secs_cusvar var ", kCustom, rows))
            return;
        std::stable_sort(rows.begin(), rows.end(),
                         [](const form::ListRow& left, const form::ListRow& right) {
                             return orderOf(left) < orderOf(right);
                         });
        frame_.variables.selected->setRows(rows);
        filled_ = true;
    });
}

bool ReportVariables::readList(const char* tables, const char* gem,
                               std::vector<form::ListRow>& rows) {
    Query query(operations_,
                std::string("SELECT var.var_name, var.var_id, var.var_type, rpt.var_order ") +
                    tables +
                    "WHERE rpt.rpt_id = " + form::toUtf8(frame_.txtRptID->text().trimmed()) +
                    " AND rpt.var_id = var.var_id ORDER BY rpt.var_order ");
    if (!query.opened()) return false;
    query.forEach([&](const Query& record) {
        rows.push_back({{record.text("var_name"), record.text("var_id"), record.text("var_type"),
                         QLatin1String(gem), record.text("var_order")}});
    });
    return true;
}

void ReportVariables::lRptSetRightByRecord(bool editing) {
    errors_.trap("lRptSetRightByRecord", [&] {
        if (editing) {
            setNavigatorButtons(navigator_, {.inEdit = true});
        } else {
            const bool canChange = !isReservedReport(form::toUtf8(frame_.txtRptID->text()));
            setNavigatorButtons(navigator_,
                                {.canAdd = true, .canEdit = canChange, .canDelete = canChange});
        }
    });
}

void ReportVariables::beginEditing() {
    std::vector<form::ListRow> rows = frame_.variables.selected->rows();
    std::stable_sort(rows.begin(), rows.end(), comesBefore);
    frame_.variables.selected->setRows(rows);
}

void ReportVariables::clear() {
    frame_.variables.selected->clearRows();
    filled_ = true;
}

bool ReportVariables::saveLinks(const std::string& reportId) {
    std::vector<std::string> variables;
    std::set<std::pair<QString, QString>> written;
    for (const form::ListRow& row : frame_.variables.selected->rows()) {
        const QString id = row.texts.value(kIdColumn);
        if (written.emplace(id, orderOf(row)).second) variables.push_back(form::toUtf8(id));
    }
    return replaceLinks(operations_, kLinks, reportId, variables);
}

}  // namespace stelvan::links
