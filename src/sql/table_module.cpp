#include "sql/table_module.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

#include "base/text.h"
#include "jet/rows/conversion.h"
#include "sql/default_value.h"
#include "sql/dialect.h"
#include "sql/sqlite_handle.h"
#include "sql/sqlite_values.h"

namespace stelvan::sql {

namespace {

struct TableView : sqlite3_vtab {
    TableModule* module = nullptr;
};

/// A walk over the rows that one plan yields.
struct RowWalk : sqlite3_vtab_cursor {
    TableModule* module = nullptr;
    jet::ColumnSet wanted;
    std::unique_ptr<jet::Cursor> rows;  // null at the end
    std::vector<jet::RowId>
        places;  // rows still to come, last first, where the index order is not stored order
};

TableModule& moduleOf(sqlite3_vtab* table) {
    return *static_cast<TableView*>(table)->module;
}
RowWalk& walkOf(sqlite3_vtab_cursor* cursor) {
    return *static_cast<RowWalk*>(cursor);
}

/// Runs a callback's body; an exception is kept and becomes SQLITE_ERROR.
template <typename Body>
int guarded(TableModule& module, Body body) noexcept {
    try {
        body();
        return SQLITE_OK;
    } catch (...) {
        module.failure().exception = std::current_exception();
        return SQLITE_ERROR;
    }
}

std::string declarationOf(const jet::TableInfo& table) {
    std::string text = "CREATE TABLE t(";
    for (const jet::ColumnInfo& column : table.columns) {
        if (text.back() != '(') text += ',';
        text += quotedName(column.name) + ' ' + declaredType(column.type);
        const bool isText =
            column.type == jet::ColumnType::Text || column.type == jet::ColumnType::Memo;
        if (isText) text.append(" COLLATE ").append(kTextOrder);
    }
    return text + ")";
}

int connect(sqlite3* handle, void* module, int, const char* const*, sqlite3_vtab** table, char**) {
    auto& owner = *static_cast<TableModule*>(module);
    const int declared = sqlite3_declare_vtab(handle, owner.declaration().c_str());
    if (declared != SQLITE_OK) return declared;
    auto* view = new (std::nothrow) TableView();
    if (view == nullptr) return SQLITE_NOMEM;
    view->module = &owner;
    *table = view;
    return SQLITE_OK;
}

int disconnect(sqlite3_vtab* table) {
    delete static_cast<TableView*>(table);
    return SQLITE_OK;
}

int bestIndex(sqlite3_vtab* table, sqlite3_index_info* request) {
    TableModule& module = moduleOf(table);
    return guarded(module, [&] {
        request->idxNum = module.remember(chooseAccess(module.table().info(), *request));
    });
}

int openWalk(sqlite3_vtab* table, sqlite3_vtab_cursor** cursor) {
    auto* walk = new (std::nothrow) RowWalk();
    if (walk == nullptr) return SQLITE_NOMEM;
    walk->module = &moduleOf(table);
    *cursor = walk;
    return SQLITE_OK;
}

int closeWalk(sqlite3_vtab_cursor* cursor) {
    delete static_cast<RowWalk*>(cursor);
    return SQLITE_OK;
}

void advance(RowWalk& walk) {
    if (walk.rows != nullptr && walk.rows->next()) return;
    walk.rows.reset();
    while (walk.rows == nullptr && !walk.places.empty()) {
        walk.rows = walk.module->table().row(walk.places.back(), walk.wanted);
        walk.places.pop_back();
    }
}

/// The rows of an index lookup by part of its key, in stored order.
void gatherPlaces(RowWalk& walk, jet::Cursor& found) {
    while (found.next()) walk.places.push_back(found.rowId());
    std::sort(walk.places.begin(), walk.places.end(), std::greater<>());
}

/// False where an argument equals no stored value.
bool keyOf(const jet::TableInfo& table, const AccessPlan& plan, sqlite3_value** arguments,
           std::vector<jet::Value>& key) {
    for (std::size_t at = 0; at < plan.keyColumns; ++at) {
        const std::size_t column = table.indexes[plan.index].columns[at].column;
        std::optional<jet::Value> value = keyValue(arguments[at], table.columns[column]);
        if (!value) return false;
        key.push_back(std::move(*value));
    }
    return true;
}

void startIndexWalk(RowWalk& walk, const AccessPlan& plan, sqlite3_value** arguments) {
    jet::Table& table = walk.module->table();
    std::vector<jet::Value> key;
    if (!keyOf(table.info(), plan, arguments, key)) return;
    const jet::ColumnSet none;
    std::unique_ptr<jet::Cursor> found =
        table.find(plan.index, key, plan.wholeKey ? plan.wanted : none);
    if (plan.wholeKey) {
        walk.rows = std::move(found);
    } else {
        gatherPlaces(walk, *found);
    }
    advance(walk);
}

int startWalk(sqlite3_vtab_cursor* cursor, int planNumber, const char*, int,
              sqlite3_value** arguments) {
    RowWalk& walk = walkOf(cursor);
    return guarded(*walk.module, [&] {
        const AccessPlan& plan = walk.module->plan(planNumber);
        jet::Table& table = walk.module->table();
        walk.wanted = plan.wanted;
        walk.rows.reset();
        walk.places.clear();
        if (plan.way == AccessPlan::Way::Index) return startIndexWalk(walk, plan, arguments);
        if (plan.way == AccessPlan::Way::Place) {
            const jet::RowId place = jet::RowId::unpack(sqlite3_value_int64(arguments[0]));
            walk.rows = table.row(place, walk.wanted);  // stands on the row already
            return;
        }
        walk.rows = table.scan(walk.wanted);
        advance(walk);
    });
}

int nextRow(sqlite3_vtab_cursor* cursor) {
    RowWalk& walk = walkOf(cursor);
    return guarded(*walk.module, [&walk] { advance(walk); });
}

int atEnd(sqlite3_vtab_cursor* cursor) {
    return walkOf(cursor).rows == nullptr ? 1 : 0;
}

int columnValue(sqlite3_vtab_cursor* cursor, sqlite3_context* context, int column) {
    RowWalk& walk = walkOf(cursor);
    // A column that an UPDATE leaves as it is: not read, and recognised as such when the row is
    // written.
    if (sqlite3_vtab_nochange(context) != 0) return SQLITE_OK;
    return guarded(*walk.module, [&] {
        giveResult(context, walk.rows->value(static_cast<std::size_t>(column)));
    });
}

int rowNumber(sqlite3_vtab_cursor* cursor, sqlite3_int64* number) {
    *number = walkOf(cursor).rows->rowId().packed();
    return SQLITE_OK;
}

int writeRow(sqlite3_vtab* table, int count, sqlite3_value** values, sqlite3_int64* number) {
    TableModule& module = moduleOf(table);
    return guarded(module, [&] {
        if (count == 1)
            return module.table().erase(jet::RowId::unpack(sqlite3_value_int64(values[0])));
        const bool isNew = sqlite3_value_type(values[0]) == SQLITE_NULL;
        if (isNew) {
            *number = module.insert(values + 2, count - 2);
        } else {
            module.update(sqlite3_value_int64(values[0]), values + 2, count - 2);
        }
    });
}

const sqlite3_module& callbacks() {
    // Without xCreate the table exists by its module's name alone.
    static const sqlite3_module module = [] {
        sqlite3_module made{};
        made.xConnect = connect;
        made.xBestIndex = bestIndex;
        made.xDisconnect = disconnect;
        made.xDestroy = disconnect;
        made.xOpen = openWalk;
        made.xClose = closeWalk;
        made.xFilter = startWalk;
        made.xNext = nextRow;
        made.xEof = atEnd;
        made.xColumn = columnValue;
        made.xRowid = rowNumber;
        made.xUpdate = writeRow;
        return made;
    }();
    return module;
}

}  // namespace

void TableModule::declareTo(sqlite3* handle) {
    plans_.clear();
    inserted_.reset();
    const jet::TableInfo& info = table_.info();
    std::string declaration = declarationOf(info);
    if (declaration == declaration_) return;
    declaration_ = std::move(declaration);
    if (sqlite3_create_module_v2(handle, info.name.c_str(), &callbacks(), this, nullptr) !=
        SQLITE_OK) {
        throw std::bad_alloc();
    }
}

int TableModule::remember(AccessPlan plan) {
    plans_.push_back(std::move(plan));
    return static_cast<int>(plans_.size()) - 1;
}

bool TableModule::isInserted(const std::string& column) const {
    return !inserted_ ||
           std::any_of(inserted_->begin(), inserted_->end(),
                       [&column](const std::string& name) { return base::sameWord(name, column); });
}

sqlite3_int64 TableModule::insert(sqlite3_value** values, int count) {
    const jet::TableInfo& info = table_.info();
    std::vector<jet::ColumnValue> row;
    for (std::size_t column = 0; column < static_cast<std::size_t>(count); ++column) {
        const jet::ColumnInfo& definition = info.columns[column];
        if (!isInserted(definition.name)) {
            row.emplace_back(column, defaultValue(definition));
        } else {
            row.emplace_back(column, jet::convertTo(info, column, takeValue(values[column])));
        }
    }
    return table_.insert(row).packed();
}

void TableModule::update(sqlite3_int64 place, sqlite3_value** values, int count) {
    const jet::TableInfo& info = table_.info();
    std::vector<jet::ColumnValue> changes;
    for (std::size_t column = 0; column < static_cast<std::size_t>(count); ++column) {
        if (sqlite3_value_nochange(values[column]) != 0) continue;
        changes.emplace_back(column, jet::convertTo(info, column, takeValue(values[column])));
    }
    table_.update(jet::RowId::unpack(place), changes);
}

}  // namespace stelvan::sql
