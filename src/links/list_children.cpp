#include "links/list_children.h"

#include <QLineEdit>
#include <limits>

#include "base/number.h"
#include "db/error_map.h"
#include "db/query.h"
#include "db/value_text.h"
#include "form/text.h"
#include "gem/queries.h"
#include "gem/schema.h"

namespace stelvan::links {
namespace {

namespace variable = gem::schema::variable;

constexpr int kIdColumn = 2;
constexpr int kPoolIdColumn = 1;
const std::vector<int> kPoolWidths = {3, -10, 2, 0};
const std::vector<int> kListWidths = {-9, 3, -10, 2, 2};
constexpr auto kOthersInList = "Item not allowed to duplicate if the list containing other items.";

QStringList columns() {
    return {QStringLiteral("Name"), QStringLiteral("ID"), QStringLiteral("Group"),
            QStringLiteral("Value")};
}

QStringList textsOf(const db::Query& record) {
    QStringList texts;
    for (const char* column : {variable::kName, variable::kId, variable::kGroup, variable::kValue})
        texts << form::toQt(record.text(column));
    return texts;
}

std::int16_t placeOf(std::size_t row) {
    if (row >= static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max()))
        throw base::overflow();
    return static_cast<std::int16_t>(row + 1);
}

}  // namespace

std::string ListChildren::listId() const {
    return form::toUtf8(window_.form[gem::Control::txtVarID].text());
}

void ListChildren::lDispChildEditor(bool show) {
    window_.errors.handle("lDispChildEditor", [&] {
        const form::TwoListEditor& children = window_.form.children;
        children.showPool(show);
        if (!show) return;
        children.pool->setHeaders(columns());
        children.pool->setWidths(kPoolWidths);
        if (base::isNumeric(listId())) fillPool();
    });
}

void ListChildren::fillPool() {
    const std::string_view type = gem::categoryAt(window_.state.category).type;
    db::Query query(window_.operations, gem::possibleChildren(listId(), type));
    std::vector<form::ListRow> rows;
    query.forEach([&](const db::Query& record) { rows.push_back({textsOf(record)}); });
    // What was taken out of the list in this edit is still a child in the file, and offered all the
    // same.
    for (const form::ListRow& former : window_.form.children.pool->rows())
        if (editing_ && own_.contains(former.texts.value(kPoolIdColumn))) rows.push_back(former);
    window_.form.children.poolFilter->clear();
    window_.form.children.pool->setRows(rows);
}

void ListChildren::lUpdateVarChild(bool show) {
    window_.errors.handle("lUpdateVarChild", [&] {
        const form::TwoListEditor& children = window_.form.children;
        children.showSelected(show);
        if (!show && !editing_) filledFor_.reset();
        if (!show) return;
        children.selected->setHeaders(QStringList(QStringLiteral("Duplicate")) + columns());
        children.selected->setWidths(kListWidths);
        if (heldInEdit_) return;
        if (base::isNumeric(listId())) fillList();
        heldInEdit_ = editing_;
    });
}

void ListChildren::fillList() {
    form::ListView& selected = *window_.form.children.selected;
    filledFor_.reset();
    own_.clear();
    selected.clearRows();
    db::Query query(window_.operations, gem::childrenOf(listId()));
    std::vector<form::ListRow> rows;
    query.forEach([&](db::Query& record) {
        rows.push_back({QStringList(QString()) + textsOf(record),
                        db::toFlagOrClear(record.records().field(variable::kAllowDuplicates))});
    });
    for (const form::ListRow& row : rows) own_ << row.texts.value(kIdColumn);
    selected.setRows(rows);
    filledFor_ = window_.form[gem::Control::txtVarID].text();
}

void ListChildren::lvwChildItems_ItemCheck(int row) {
    window_.errors.handle("lvwChildItems_ItemCheck", [&] {
        form::ListView& list = *window_.form.children.selected;
        if (!window_.state.editing() || !list.isChecked(row) || list.rowCount() < 2) return;
        window_.dialogs.message(QLatin1String(kOthersInList), form::Icon::Exclamation);
        list.setChecked(row, false);
    });
}

void ListChildren::lVarUpdDuplicate(std::int32_t childId, bool allowed) {
    base::trap("lVarUpdDuplicate", [&] {
        const std::string statements[] = {gem::setDuplicates(childId, allowed)};
        execute(childId, statements);
    });
}

void ListChildren::lLinkListAndChild(std::int32_t parentId, std::int32_t childId,
                                     std::int16_t position) {
    base::trap("lLinkListAndChild", [&] {
        const std::string statements[] = {gem::setParent(childId, parentId),
                                          gem::setPlace(childId, position)};
        execute(childId, statements);
    });
}

void ListChildren::execute(std::int32_t childId, std::span<const std::string> statements) const {
    db::Connection connection;
    connection.setConnectionText(
        "Provider=Microsoft.Jet.OLEDB.4.0;Persist Security Info=False;Data Source=" +
        window_.operations.path() + "; Mode=Read|Write");
    connection.open();
    // Opened so that a file without the table is reported before anything is written, and not read:
    // of the one row, since a model may hold a hundred thousand.
    db::Recordset table;
    table.open(gem::customVariable(childId), connection);
    for (const std::string& statement : statements) connection.execute(statement);
    table.close();
    connection.close();
}

void ListChildren::beginEditing() {
    window_.form.children.pool->clearRows();
    const bool wasShown = filledFor_ == window_.form[gem::Control::txtVarID].text();
    clear();
    editing_ = true;
    heldInEdit_ = false;
    const bool existing = gem::isCustomVariable(window_.state.category) &&
                          window_.state.editMode == form::EditMode::Editing;
    if (!existing || !base::isNumeric(listId())) return;
    shown_ = childRowsOf(listId());
    if (wasShown) lUpdateVarChild(true);
}

LinkRows ListChildren::childRowsOf(const std::string& list) const {
    LinkRows rows;
    db::Query query(window_.operations, gem::childrenOf(list));
    query.forEach([&](const db::Query& row) {
        rows.emplace_back(row.text(variable::kId), row.text(variable::kAllowDuplicates));
    });
    return rows;
}

void ListChildren::requireFree(std::int32_t childId) const {
    db::Query query(window_.operations, gem::customVariable(childId));
    const bool gone = query.records().eof();
    const std::string parent = gone ? std::string() : query.text(variable::kParentKey);
    if (gone || (base::isNumeric(parent) && base::toDouble(parent) != 0)) throw db::rowChanged();
}

void ListChildren::endEditing() {
    editing_ = false;
    heldInEdit_ = false;
}

void ListChildren::clear() {
    window_.form.children.selected->clearRows();
    filledFor_.reset();
    shown_.reset();
    own_.clear();
}

void ListChildren::releaseChildren(const std::string& listId) {
    if (shown_) requireUnchanged(*shown_, childRowsOf(listId));
    std::vector<std::int32_t> children;
    db::Query query(window_.operations, gem::childIdsOf(listId));
    query.forEach([&](const db::Query& record) {
        const std::string id = record.text(variable::kId);
        if (!id.empty()) children.push_back(base::toInt32(id));
    });
    for (const std::int32_t child : children) lLinkListAndChild(0, child, 0);
}

void ListChildren::saveLinks(const std::string& listId) {
    releaseChildren(listId);
    const std::int32_t list = base::toInt32(listId);
    const std::vector<form::ListRow>& rows = window_.form.children.selected->rows();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::int32_t child = base::toInt32(form::toUtf8(rows[i].texts.value(kIdColumn)));
        requireFree(child);
        lLinkListAndChild(list, child, placeOf(i));
        lVarUpdDuplicate(child, rows[i].checked);
    }
}

}  // namespace stelvan::links
