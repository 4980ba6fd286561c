#include "links/report_variables.h"

#include <QLineEdit>
#include <algorithm>
#include <set>
#include <utility>

#include "base/number.h"
#include "base/text.h"
#include "db/query.h"
#include "form/text.h"
#include "gem/schema.h"

namespace stelvan::links {
namespace {

namespace variable = gem::schema::variable;

constexpr int kIdColumn = 1;
constexpr int kOrderColumn = 4;
const std::vector<int> kPoolWidths = {1, -10, -6, -3};

/// Both variable tables, the standard's first, and what their rows say under "GEM".
constexpr std::pair<gem::Origin, const char*> kOrigins[] = {{gem::Origin::Standard, "Y"},
                                                            {gem::Origin::Custom, "N"}};

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

/// Name, identifier, type and origin of a variable.
form::ListRow rowOf(const db::Query& record, const char* isGem) {
    return {{form::toQt(record.text(variable::kName)), form::toQt(record.text(variable::kId)),
             form::toQt(record.text(variable::kType)), QLatin1String(isGem)}};
}

}  // namespace

void ReportVariables::lDispVarListEditor(bool show) {
    window_.errors.handle("lDispVarListEditor", [&] {
        const form::TwoListEditor& variables = window_.form.variables;
        variables.showPool(show);
        if (!show) return;
        variables.pool->setHeaders({QStringLiteral("Name"), QStringLiteral("ID"),
                                    QStringLiteral("Type"), QStringLiteral("GEM")});
        variables.pool->setWidths(kPoolWidths);
        variables.pool->clearRows();
        variables.poolFilter->clear();
        std::vector<form::ListRow> rows;
        for (const auto& [origin, isGem] : kOrigins) {
            db::Query query(window_.operations, gem::topLevelVariables(origin));
            query.forEach([&](const db::Query& record) { rows.push_back(rowOf(record, isGem)); });
        }
        variables.pool->setRows(rows);
    });
}

void ReportVariables::lUpdateRptVarList() {
    window_.errors.handle("lUpdateRptVarList", [&] {
        const std::string text = form::toUtf8(window_.form[gem::Control::txtRptID].text());
        const std::string_view report = base::trimBlanks(text);
        if (report.empty()) return;
        clear();
        filled_ = false;
        std::vector<form::ListRow> rows;
        for (const auto& [origin, isGem] : kOrigins) {
            db::Query query(window_.operations, gem::variablesOf(report, origin));
            query.forEach([&](const db::Query& record) {
                rows.push_back(rowOf(record, isGem));
                rows.back().texts << form::toQt(record.text(gem::schema::report_variable::kOrder));
            });
        }
        std::stable_sort(rows.begin(), rows.end(),
                         [](const form::ListRow& left, const form::ListRow& right) {
                             return orderOf(left) < orderOf(right);
                         });
        window_.form.variables.selected->setRows(rows);
        filled_ = true;
    });
}

void ReportVariables::lRptSetRightByRecord(bool editing) {
    base::trap("lRptSetRightByRecord", [&] { window_.showButtons(gem::CSTRPT, editing); });
}

void ReportVariables::beginEditing() {
    lUpdateRptVarList();
    const std::string id = form::toUtf8(window_.form[gem::Control::txtRptID].text());
    if (filled_ && base::isNumeric(id))
        shown_ = linkRowsOf(window_.operations, gem::kReportVariables, id);
    sortByNumber();
}

void ReportVariables::sortByNumber() {
    form::ListView& selected = *window_.form.variables.selected;
    std::vector<form::ListRow> rows = selected.rows();
    std::stable_sort(rows.begin(), rows.end(), comesBefore);
    selected.setRows(rows);
}

void ReportVariables::clear() {
    window_.form.variables.selected->clearRows();
    filled_ = true;
    shown_.reset();
}

void ReportVariables::saveLinks(const std::string& reportId) {
    std::vector<std::string> variables;
    std::set<std::pair<QString, QString>> written;
    for (const form::ListRow& row : window_.form.variables.selected->rows()) {
        const QString id = row.texts.value(kIdColumn);
        if (written.emplace(id, orderOf(row)).second) variables.push_back(form::toUtf8(id));
    }
    if (shown_)
        requireUnchanged(*shown_, linkRowsOf(window_.operations, gem::kReportVariables, reportId));
    replaceLinks(window_.operations, gem::kReportVariables, reportId, variables);
}

}  // namespace stelvan::links
