#include "links/event_reports.h"

#include <QLineEdit>

#include "base/number.h"
#include "form/text.h"
#include "links/link_rows.h"
#include "links/query.h"

namespace stelvan::links {
namespace {

constexpr LinkTable kLinks = {"secs_def_evt_rpt", "evt_id", "rpt_id", "rpt_order"};
constexpr int kIdColumn = 1;
const std::vector<int> kWidths = {2, 1};

std::vector<form::ListRow> readReports(Query& query) {
    std::vector<form::ListRow> rows;
    query.forEach([&](const Query& record) {
        rows.push_back({{record.text("rpt_name"), record.text("rpt_id")}});
    });
    return rows;
}

}  // namespace

EventReports::EventReports(const form::EvtFrame& frame, db::Operations& operations)
    : frame_(frame), operations_(operations), errors_(operations.errors()) {}

void EventReports::lDispRptListEditor(bool show) {
    errors_.trap("lDispRptListEditor", [&] {
        frame_.reports.showPool(show);
        if (!show) return;
        form::ListView& pool = *frame_.reports.pool;
        pool.setHeaders({QStringLiteral("Name"), QStringLiteral("ID")});
        pool.setWidths(kWidths);
        Query query(operations_, "SELECT rpt_name, rpt_id FROM secs_report");
        if (!query.opened()) return;
        frame_.reports.poolFilter->clear();
        pool.setRows(readReports(query));
    });
}

void EventReports::lUpdateEvtRptList(bool /*gem*/) {
    errors_.trap("lUpdateEvtRptList", [&] {
        clear();
        const std::string id = form::toUtf8(frame_.txtEvtID->text());
        if (!base::isNumeric(id) || id.find('.') != std::string::npos) return;
        filled_ = false;
        Query query(operations_, "SELECT rpt.rpt_name, rpt.rpt_id, evt.rpt_order FROM " +
                                     std::string(kLinks.name) +
                                     " evt, secs_report rpt WHERE evt.evt_id = " + id +
                                     " AND evt.rpt_id = rpt.rpt_id  ORDER BY evt.rpt_order ");
        if (!query.opened()) return;
        frame_.reports.selected->setRows(readReports(query));
        filled_ = true;
    });
}

void EventReports::clear() {
    frame_.reports.selected->clearRows();
    filled_ = true;
}

bool EventReports::saveLinks(const std::string& eventId) {
    std::vector<std::string> reports;
    for (const form::ListRow& row : frame_.reports.selected->rows())
        reports.push_back(form::toUtf8(row.texts.value(kIdColumn)));
    return replaceLinks(operations_, kLinks, eventId, reports);
}

}  // namespace stelvan::links
