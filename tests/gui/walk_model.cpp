#include "tests/gui/walk_model.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <stdexcept>

#include "db/value_text.h"
#include "jet/database.h"

namespace stelvan::test {
namespace {

struct FieldColumn {
    const char* field;
    const char* column;
};

constexpr std::array kEvent{
    FieldColumn{"txtEvtName", "evt_name"}, FieldColumn{"txtEvtID", "evt_id"},
    FieldColumn{"txtEvtGroup", "evt_group"}, FieldColumn{"txtEvtDesc", "evt_text"},
    FieldColumn{"chkEvtEnable", "evt_enable"}};
constexpr std::array kVariable{FieldColumn{"txtVarName", "var_name"},
                               FieldColumn{"txtVarID", "var_id"},
                               FieldColumn{"txtVarGroup", "var_group"},
                               FieldColumn{"txtVarDesc", "var_desc"},
                               FieldColumn{"cmbVarFormat", "var_format"},
                               FieldColumn{"txtVarMin", "var_min"},
                               FieldColumn{"txtVarMax", "var_max"},
                               FieldColumn{"txtVarUnit", "var_unit"},
                               FieldColumn{"txtVarDefValue", "var_defaultval"},
                               FieldColumn{"txtVarValue", "var_val"}};
constexpr std::array kAlarm{FieldColumn{"txtAlmName", "alm_name"},
                            FieldColumn{"txtAlmID", "alm_id"},
                            FieldColumn{"txtAlmGroup", "alm_group"},
                            FieldColumn{"txtAlmText", "alm_text"},
                            FieldColumn{"chkAlmEnable", "alm_enable"},
                            FieldColumn{"txtAlmSetCEID", "alm_set_ceid"},
                            FieldColumn{"txtAlmSetCEName", "alm_set_cename"},
                            FieldColumn{"txtAlmClrCEID", "alm_clr_ceid"},
                            FieldColumn{"txtAlmClrCEName", "alm_clr_cename"}};
constexpr std::array kSetting{FieldColumn{"txtSttName", "set_field"},
                              FieldColumn{"txtSttValue", "set_value"},
                              FieldColumn{"txtSttDefValue", "set_defaultval"}};
constexpr std::array kReport{
    FieldColumn{"txtRptID", "rpt_id"}, FieldColumn{"txtRptName", "rpt_name"},
    FieldColumn{"txtRptDesc", "rpt_desc"}, FieldColumn{"chkRptDefault", "rpt_default"}};

template <std::size_t N>
std::vector<FieldColumn> listed(const std::array<FieldColumn, N>& all) {
    return {all.begin(), all.end()};
}

std::vector<FieldColumn> fieldsOf(const WalkKind& kind) {
    const QString table = kind.table;
    if (table == "secs_alarm") return listed(kAlarm);
    if (table == "secs_setting") return listed(kSetting);
    if (table == "secs_report") return listed(kReport);
    return table.endsWith("event") ? listed(kEvent) : listed(kVariable);
}

bool isOneOf(const QString& text, const QStringList& values) {
    return values.contains(text.trimmed(), Qt::CaseInsensitive);
}

void cleanVariable(QMap<QString, QString>& f) {
    const QStringList nothing{"NULL", "0", ""};
    if (isOneOf(f["txtVarMin"], nothing) && isOneOf(f["txtVarMax"], nothing))
        f["txtVarMin"] = f["txtVarMax"] = QString();
    if (isOneOf(f["txtVarUnit"], {"NULL", "0"})) f["txtVarUnit"] = QString();
    for (const char* name : {"txtVarValue", "txtVarDefValue"})
        if (isOneOf(f[name], {"NULL"})) f[name] = QString();
}

void cleanAlarm(QMap<QString, QString>& f) {
    for (const char* name :
         {"txtAlmSetCEID", "txtAlmSetCEName", "txtAlmClrCEID", "txtAlmClrCEName"})
        if (isOneOf(f[name], {"NULL", "0"})) f[name] = QString();
}

QString orNull(const QString& text) {
    return text.trimmed().isEmpty() ? QString("NULL") : text;
}

/// A value, default, minimum or maximum as it is written.
QString limit(const QString& text, const QString& format) {
    if (!text.trimmed().isEmpty()) return text;
    return isOneOf(format, {"A", "BL", "L"}) ? QString("NULL") : QString("0");
}

WalkRow storedVariable(const WalkKind& kind, WalkRow row, const QMap<QString, QString>& f) {
    const QString format = f["cmbVarFormat"];
    row["var_val"] = limit(f["txtVarValue"], format);
    row["var_defaultval"] = limit(f["txtVarDefValue"], format);
    if (format.trimmed().toUpper() == "BL" && row["var_defaultval"] != "NULL")
        row["var_defaultval"] = row["var_defaultval"].trimmed().toUpper();
    if (!kind.custom) return row;
    row["var_name"] = orNull(f["txtVarName"].trimmed());
    row["var_id"] = f["txtVarID"].trimmed();
    row["var_group"] = orNull(f["txtVarGroup"].trimmed());
    row["var_desc"] = orNull(f["txtVarDesc"]);
    row["var_max"] = limit(f["txtVarMax"], format);
    row["var_min"] = limit(f["txtVarMin"], format);
    row["var_unit"] = orNull(f["txtVarUnit"]);
    row["var_format"] = format;
    row["var_type"] = kind.type;
    return row;
}

QString textOf(const jet::Value& value) {
    if (jet::isNull(value)) return kWalkNull;
    if (const bool* flag = std::get_if<bool>(&value)) return *flag ? "1" : "0";
    return QString::fromStdString(db::toText(value));
}

std::vector<WalkRow> readTable(jet::Table& table) {
    const jet::TableInfo info = table.info();
    jet::ColumnSet all(info.columns.size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    std::vector<WalkRow> rows;
    const auto cursor = table.scan(all);
    while (cursor->next()) {
        WalkRow row;
        for (const std::size_t c : all)
            row[QString::fromStdString(info.columns[c].name)] =
                textOf(jet::toValue(cursor->value(c)));
        rows.push_back(std::move(row));
    }
    return rows;
}

constexpr std::array kTables{"secs_gemvar",      "secs_cusvar",  "secs_gemevent",
                             "secs_cusevent",    "secs_alarm",   "secs_report",
                             "secs_def_evt_rpt", "secs_rpt_var", "secs_setting"};

struct Links {
    const char* table;
    const char* owner;
    const char* item;
    const char* order;
};

Links linksOf(const WalkKind& kind) {
    if (QString(kind.table) == "secs_report")
        return {"secs_rpt_var", "rpt_id", "var_id", "var_order"};
    return {"secs_def_evt_rpt", "evt_id", "rpt_id", "rpt_order"};
}

bool holds(const std::vector<WalkRow>& rows, const QString& column, const QString& value) {
    return std::any_of(rows.begin(), rows.end(),
                       [&](const WalkRow& r) { return r[column] == value; });
}

QStringList sortedIds(std::vector<WalkRow> rows, const QString& order, const QString& id) {
    std::stable_sort(rows.begin(), rows.end(), [&](const WalkRow& a, const WalkRow& b) {
        return a[order].toDouble() < b[order].toDouble();
    });
    QStringList ids;
    for (const WalkRow& row : rows) ids << row[id];
    return ids;
}

}  // namespace

const std::vector<WalkKind>& walkKinds() {
    static const std::vector<WalkKind> kinds{
        {1, "secs_gemevent", "", "txtEvtID", "evt_id", false},
        {2, "secs_gemvar", "DV", "txtVarID", "var_id", false},
        {3, "secs_gemvar", "SV", "txtVarID", "var_id", false},
        {4, "secs_gemvar", "EC", "txtVarID", "var_id", false},
        {5, "secs_alarm", "", "txtAlmID", "alm_id", true},
        {6, "secs_cusevent", "", "txtEvtID", "evt_id", true},
        {7, "secs_cusvar", "DV", "txtVarID", "var_id", true},
        {8, "secs_cusvar", "SV", "txtVarID", "var_id", true},
        {9, "secs_cusvar", "EC", "txtVarID", "var_id", true},
        {10, "secs_setting", "", "txtSttName", "set_field", false},
        {11, "secs_report", "", "txtRptID", "rpt_id", true}};
    return kinds;
}

const WalkKind& walkKind(std::int16_t category) {
    return walkKinds().at(static_cast<std::size_t>(category) - 1);
}

WalkModel::WalkModel(const std::string& file) {
    jet::Database database = jet::Database::open(file, jet::Access::ReadOnly);
    for (const char* name : kTables) tables_[name] = readTable(database.table(name));
}

QStringList WalkModel::content() const {
    QStringList lines;
    for (auto table = tables_.begin(); table != tables_.end(); ++table) {
        for (const WalkRow& row : table.value()) {
            QString line = table.key();
            for (auto cell = row.begin(); cell != row.end(); ++cell)
                line += " | " + cell.key() + "=" + cell.value();
            lines << line;
        }
    }
    lines.sort();
    return lines;
}

std::vector<WalkRow> WalkModel::rowsOf(const WalkKind& kind) const {
    std::vector<WalkRow> rows;
    for (const WalkRow& row : tables_[kind.table])
        if (*kind.type == '\0' || row["var_type"] == kind.type) rows.push_back(row);
    return rows;
}

bool WalkModel::has(const WalkKind& kind, const QString& id) const {
    return holds(tables_[kind.table], kind.idColumn, id);
}

WalkRow WalkModel::find(const WalkKind& kind, const QString& id) const {
    for (const WalkRow& row : tables_[kind.table])
        if (row[kind.idColumn] == id) return row;
    throw std::logic_error("the model has no " + id.toStdString());
}

QMap<QString, QString> WalkModel::shown(const WalkKind& kind, const WalkRow& row) {
    QMap<QString, QString> fields;
    for (const FieldColumn& pair : fieldsOf(kind)) fields[pair.field] = row[pair.column];
    if (fields.contains("txtVarMin")) cleanVariable(fields);
    if (fields.contains("txtAlmSetCEID")) cleanAlarm(fields);
    return fields;
}

WalkRow WalkModel::stored(const WalkKind& kind, const WalkRow& before,
                          const QMap<QString, QString>& f) {
    WalkRow row = before;
    if (f.contains("txtVarMin")) return storedVariable(kind, row, f);
    if (kind.category == 1) {
        row["evt_enable"] = f["chkEvtEnable"];
        return row;
    }
    const QStringList asTyped{"txtEvtDesc", "txtRptDesc", "txtAlmText", "txtSttValue",
                              "txtSttDefValue"};
    for (const FieldColumn& pair : fieldsOf(kind)) {
        const QString text = f[pair.field];
        row[pair.column] = asTyped.contains(pair.field) ? text : text.trimmed();
    }
    for (const char* column : {"alm_set_ceid", "alm_clr_ceid"})
        if (row.contains(column) && row[column].isEmpty()) row[column] = "0";
    for (const char* column : {"alm_set_cename", "alm_clr_cename"})
        if (row.contains(column) && row[column].isEmpty()) row[column] = "NULL";
    return row;
}

void WalkModel::put(const WalkKind& kind, const QString& id, const WalkRow& row) {
    for (WalkRow& old : tables_[kind.table])
        if (old[kind.idColumn] == id) old = row;
}

void WalkModel::add(const WalkKind& kind, const WalkRow& row) {
    tables_[kind.table].push_back(row);
}

void WalkModel::remove(const WalkKind& kind, const QString& id) {
    const bool freesChildren =
        (kind.category == 7 || kind.category == 8) && find(kind, id)["var_format"].toUpper() == "L";
    const auto drop = [&](const char* table, const char* column) {
        std::erase_if(tables_[table], [&](const WalkRow& row) { return row[column] == id; });
    };
    drop(kind.table, kind.idColumn);
    if (kind.category == 6) drop("secs_def_evt_rpt", "evt_id");
    if (kind.category == 11) {
        drop("secs_def_evt_rpt", "rpt_id");
        drop("secs_rpt_var", "rpt_id");
    }
    if (!freesChildren) return;
    for (WalkRow& row : tables_["secs_cusvar"])
        if (row["var_parentkey"] == id) row["var_parentkey"] = "0";
}

QStringList WalkModel::linked(const WalkKind& kind, const QString& id) const {
    const Links links = linksOf(kind);
    std::vector<WalkRow> rows;
    for (const WalkRow& row : tables_[links.table]) {
        if (row[links.owner] != id) continue;
        const QString item = row[links.item];
        const bool exists = kind.category == 11 ? holds(tables_["secs_gemvar"], "var_id", item) ||
                                                      holds(tables_["secs_cusvar"], "var_id", item)
                                                : holds(tables_["secs_report"], "rpt_id", item);
        if (exists) rows.push_back(row);
    }
    return sortedIds(std::move(rows), links.order, links.item);
}

void WalkModel::relink(const WalkKind& kind, const QString& id, const QStringList& ids) {
    const Links links = linksOf(kind);
    std::vector<WalkRow>& table = tables_[links.table];
    std::erase_if(table, [&](const WalkRow& row) { return row[links.owner] == id; });
    for (qsizetype i = 0; i < ids.size(); ++i)
        table.push_back(
            {{links.owner, id}, {links.item, ids[i]}, {links.order, QString::number(i + 1)}});
}

QStringList WalkModel::children(const QString& id) const {
    std::vector<WalkRow> rows;
    for (const WalkRow& row : tables_["secs_cusvar"])
        if (row["var_parentkey"] == id) rows.push_back(row);
    return sortedIds(std::move(rows), "var_accessid", "var_id");
}

void WalkModel::rechild(const QString& id, const QStringList& ids) {
    for (WalkRow& row : tables_["secs_cusvar"]) {
        if (row["var_parentkey"] == id) row["var_parentkey"] = row["var_accessid"] = "0";
        const auto place = ids.indexOf(row["var_id"]);
        if (place < 0) continue;
        row["var_parentkey"] = id;
        row["var_accessid"] = QString::number(place + 1);
    }
}

}  // namespace stelvan::test
