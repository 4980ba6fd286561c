#include "links/list_children.h"

#include <QLineEdit>
#include <limits>

#include "base/number.h"
#include "form/text.h"
#include "links/query.h"

namespace stelvan::links {
namespace {

constexpr int kIdColumn = 2;
const std::vector<int> kPoolWidths = {3, 1, 2, 0};
const std::vector<int> kListWidths = {-9, 3, 1, 2, 2};
constexpr auto kOthersInList = "Item not allowed to duplicate if the list containing other items.";

const char* typeOf(std::int16_t category) {
    switch (category) {
        case form::CSTVDV:
            return "DV";
        case form::CSTVSV:
            return "SV";
        case form::CSTVEC:
            return "EC";
        default:
            return "";
    }
}

QStringList columns() {
    return {QStringLiteral("Name"), QStringLiteral("ID"), QStringLiteral("Group"),
            QStringLiteral("Value")};
}

std::int16_t placeOf(std::size_t row) {
    if (row >= static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max()))
        throw base::overflow();
    return static_cast<std::int16_t>(row + 1);
}

}  // namespace

ListChildren::ListChildren(const form::VarFrame& frame, const form::MainState& state,
                           db::Operations& operations, form::Dialogs& dialogs)
    : frame_(frame),
      state_(state),
      operations_(operations),
      errors_(operations.errors()),
      dialogs_(dialogs) {}

void ListChildren::lDispChildEditor(bool show) {
    errors_.trap("lDispChildEditor", [&] {
        frame_.children.showPool(show);
        if (!show) return;
        frame_.children.pool->setHeaders(columns());
        frame_.children.pool->setWidths(kPoolWidths);
        if (hasNumericId()) fillPool();
    });
}

void ListChildren::fillPool() {
    Query query(operations_,
                "SELECT var_name, var_id, var_group, var_val FROM secs_cusvar WHERE var_id <> " +
                    form::toUtf8(frame_.txtVarID->text()) + " AND var_type = '" +
                    typeOf(state_.category) + "'  AND var_format <> 'L'  AND var_parentkey = 0 ");
    if (!query.opened()) return;
    std::vector<form::ListRow> rows;
    query.forEach([&](const Query& record) {
        rows.push_back({{record.text("var_name"), record.text("var_id"), record.text("var_group"),
                         record.text("var_val")}});
    });
    frame_.children.poolFilter->clear();
    frame_.children.pool->setRows(rows);
}

void ListChildren::lUpdateVarChild(bool show) {
    errors_.trap("lUpdateVarChild", [&] {
        frame_.children.showSelected(show);
        if (!show && !editing_) filledFor_.reset();
        if (!show) return;
        frame_.children.selected->setHeaders(QStringList(QStringLiteral("Duplicate")) + columns());
        frame_.children.selected->setWidths(kListWidths);
        if (heldInEdit_) return;
        const bool failed = hasNumericId() && !fillList();
        heldInEdit_ = editing_ && !failed;
    });
}

bool ListChildren::fillList() {
    filledFor_.reset();
    frame_.children.selected->clearRows();
    Query query(operations_,
                "SELECT var_name, var_id, var_group, var_val, var_allowduplicates FROM "
                "secs_cusvar WHERE var_parentkey = " +
                    form::toUtf8(frame_.txtVarID->text()) + " ORDER BY var_accessid ");
    if (!query.opened()) return false;
    std::vector<form::ListRow> rows;
    query.forEach([&](Query& record) {
        rows.push_back({{QString(), record.text("var_name"), record.text("var_id"),
                         record.text("var_group"), record.text("var_val")},
                        db::toFlagOrClear(record.records().field("var_allowduplicates"))});
    });
    frame_.children.selected->setRows(rows);
    filledFor_ = frame_.txtVarID->text();
    return true;
}

bool ListChildren::hasNumericId() const {
    return base::isNumeric(form::toUtf8(frame_.txtVarID->text()));
}

void ListChildren::lvwChildItems_ItemCheck(int row) {
    errors_.trap("lvwChildItems_ItemCheck", [&] {
        form::ListView& list = *frame_.children.selected;
        if (!state_.editing() || !list.isChecked(row) || list.rowCount() < 2) return;
        dialogs_.message(QLatin1String(kOthersInList), form::Icon::Exclamation);
        list.setChecked(row, false);
    });
}

void ListChildren::lVarUpdDuplicate(std::int32_t childId, bool allowed) {
    errors_.trap("lVarUpdDuplicate", [&] {
        execute(childId, {std::string("var_allowduplicates=") + (allowed ? "True" : "False")});
    });
}

void ListChildren::lLinkListAndChild(std::int32_t parentId, std::int32_t childId,
                                     std::int16_t position) {
    errors_.trap("lLinkListAndChild", [&] {
        execute(childId, {"var_parentkey=" + std::to_string(parentId),
                          "var_accessid=" + std::to_string(position)});
    });
}

void ListChildren::execute(std::int32_t childId, const std::vector<std::string>& assignments) {
    const std::string child = " WHERE var_id=" + std::to_string(childId);
    db::Connection connection;
    connection.setConnectionText(
        "Provider=Microsoft.Jet.OLEDB.4.0;Persist Security Info=False;Data Source=" +
        operations_.path() + "; Mode=Read|Write");
    connection.open();
    // Opened so that a file without the table is reported before anything is written, and not read:
    // of the one row, since a model may hold a hundred thousand.
    db::Recordset table;
    table.open("SELECT * FROM secs_cusvar" + child, connection);
    for (const std::string& assignment : assignments)
        connection.execute("UPDATE secs_cusvar SET " + assignment + child);
    if (table.state() == db::ObjectState::Open) table.close();
    if (connection.state() == db::ObjectState::Open) connection.close();
}

void ListChildren::beginEditing() {
    frame_.children.pool->clearRows();
    editing_ = true;
    heldInEdit_ = filledFor_ == frame_.txtVarID->text();
    if (!heldInEdit_) clear();
}

void ListChildren::endEditing() {
    editing_ = false;
    heldInEdit_ = false;
}

void ListChildren::clear() {
    frame_.children.selected->clearRows();
    filledFor_.reset();
}

bool ListChildren::releaseChildren(const std::string& listId) {
    std::vector<std::int32_t> children;
    {
        Query query(operations_, "SELECT var_id FROM secs_cusvar WHERE var_parentkey = " + listId);
        if (!query.opened()) return false;
        query.forEach([&](Query& record) {
            const db::Value id = record.records().field("var_id");
            if (!jet::isNull(id)) children.push_back(base::toInt32(db::toText(id)));
        });
    }
    const base::FailureWatch watch(errors_);
    for (const std::int32_t child : children) {
        lLinkListAndChild(0, child, 0);
        if (watch.failed()) return false;
    }
    return true;
}

bool ListChildren::saveLinks(const std::string& listId) {
    if (!releaseChildren(listId)) return false;
    const std::int32_t list = base::toInt32(listId);
    const base::FailureWatch watch(errors_);
    const std::vector<form::ListRow>& rows = frame_.children.selected->rows();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::int32_t child = base::toInt32(form::toUtf8(rows[i].texts.value(kIdColumn)));
        lLinkListAndChild(list, child, placeOf(i));
        if (!watch.failed()) lVarUpdDuplicate(child, rows[i].checked);
        if (watch.failed()) return false;
    }
    return true;
}

}  // namespace stelvan::links
