#include "links/event_reports.h"

#include <QLineEdit>

#include "base/number.h"
#include "base/text.h"
#include "db/query.h"
#include "form/text.h"
#include "gem/schema.h"

namespace stelvan::links {
namespace {

namespace report = gem::schema::report;

constexpr int kIdColumn = 1;
const std::vector<int> kPoolWidths = {1, -10};

std::vector<form::ListRow> readReports(db::Query& query) {
    std::vector<form::ListRow> rows;
    query.forEach([&](const db::Query& record) {
        rows.push_back(
            {{form::toQt(record.text(report::kName)), form::toQt(record.text(report::kId))}});
    });
    return rows;
}

}  // namespace

void EventReports::lDispRptListEditor(bool show) {
    window_.errors.handle("lDispRptListEditor", [&] {
        const form::TwoListEditor& reports = window_.form.reports;
        reports.showPool(show);
        if (!show) return;
        reports.pool->setHeaders({QStringLiteral("Name"), QStringLiteral("ID")});
        reports.pool->setWidths(kPoolWidths);
        db::Query query(window_.operations, gem::allReports());
        reports.poolFilter->clear();
        reports.pool->setRows(readReports(query));
    });
}

void EventReports::lUpdateEvtRptList(bool /*gem*/) {
    window_.errors.handle("lUpdateEvtRptList", [&] {
        clear();
        const std::string id = form::toUtf8(window_.form[gem::Control::txtEvtID].text());
        if (!base::isNumeric(id) || base::contains(id, '.')) return;
        filled_ = false;
        db::Query query(window_.operations, gem::reportsOf(id));
        window_.form.reports.selected->setRows(readReports(query));
        filled_ = true;
    });
}

void EventReports::beginEditing() {
    lUpdateEvtRptList(false);
    const std::string id = form::toUtf8(window_.form[gem::Control::txtEvtID].text());
    if (filled_ && base::isNumeric(id))
        shown_ = linkRowsOf(window_.operations, gem::kEventReports, id);
}

void EventReports::clear() {
    window_.form.reports.selected->clearRows();
    filled_ = true;
    shown_.reset();
}

void EventReports::saveLinks(const std::string& eventId) {
    std::vector<std::string> reports;
    for (const form::ListRow& row : window_.form.reports.selected->rows())
        reports.push_back(form::toUtf8(row.texts.value(kIdColumn)));
    if (shown_)
        requireUnchanged(*shown_, linkRowsOf(window_.operations, gem::kEventReports, eventId));
    replaceLinks(window_.operations, gem::kEventReports, eventId, reports);
}

}  // namespace stelvan::links
