#include "tests/gui/mdb_export.h"

#include <QProcess>
#include <QStandardPaths>
#include <QStringList>
#include <algorithm>
#include <set>
#include <stdexcept>

namespace stelvan::test {
namespace {

/// Records of comma-separated text; quotes around a text, doubled inside it, and line breaks kept.
std::vector<QStringList> parse(const QString& csv) {
    std::vector<QStringList> records;
    QStringList record;
    QString cell;
    bool quoted = false;
    for (qsizetype i = 0; i < csv.size(); ++i) {
        const QChar c = csv[i];
        if (quoted) {
            const bool doubled = c == '"' && i + 1 < csv.size() && csv[i + 1] == '"';
            if (doubled) ++i;
            if (c == '"' && !doubled) {
                quoted = false;
            } else {
                cell += c;
            }
        } else if (c == '"') {
            quoted = true;
        } else if (c == ',' || c == '\n') {
            record << cell;
            cell.clear();
            if (c == '\n') {
                records.push_back(record);
                record.clear();
            }
        } else {
            cell += c;
        }
    }
    return records;
}

}  // namespace

bool hasMdbExport() {
    return !QStandardPaths::findExecutable(QStringLiteral("mdb-export")).isEmpty();
}

std::vector<ExportedRow> exportTable(const std::string& file, const QString& table) {
    QProcess reader;
    reader.start(QStringLiteral("mdb-export"),
                 {"-0", kExportedNull, QString::fromStdString(file), table});
    if (!reader.waitForFinished() || reader.exitCode() != 0)
        throw std::runtime_error("mdb-export failed");
    const auto records = parse(QString::fromUtf8(reader.readAllStandardOutput()));
    std::vector<ExportedRow> rows;
    for (std::size_t r = 1; r < records.size(); ++r) {
        ExportedRow row;
        for (qsizetype c = 0; c < records[r].size(); ++c)
            row.insert(records[0].value(c), records[r][c]);
        rows.push_back(row);
    }
    return rows;
}

std::vector<ExportedRow> exportWhere(const std::string& file, const QString& table,
                                     const QString& column, const QString& value) {
    std::vector<ExportedRow> rows = exportTable(file, table);
    std::erase_if(rows, [&](const ExportedRow& row) { return row.value(column) != value; });
    return rows;
}

Snapshot snapshotOf(const std::string& file) {
    Snapshot all;
    for (const char* table :
         {"secs_alarm", "secs_cusevent", "secs_cusvar", "secs_def_evt_rpt", "secs_gemevent",
          "secs_gemvar", "secs_report", "secs_rpt_var", "secs_setting"})
        for (ExportedRow& row : exportTable(file, table)) all.emplace(table, std::move(row));
    return all;
}

QStringList differences(const Snapshot& before, const Snapshot& after) {
    const auto rowsOf = [](const Snapshot& snapshot, const QString& table) {
        std::map<QString, int> counted;
        for (auto [row, end] = snapshot.equal_range(table); row != end; ++row)
            ++counted[row->second.values().join(QChar(0x1f))];
        return counted;
    };
    const auto missing = [](const std::map<QString, int>& from, const std::map<QString, int>& in) {
        int count = 0;
        for (const auto& [row, times] : from) {
            const auto found = in.find(row);
            count += std::max(0, times - (found == in.end() ? 0 : found->second));
        }
        return count;
    };
    std::set<QString> tables;
    for (const auto& entry : before) tables.insert(entry.first);
    for (const auto& entry : after) tables.insert(entry.first);
    QStringList all;
    for (const QString& table : tables) {
        const auto was = rowsOf(before, table);
        const auto is = rowsOf(after, table);
        const int added = missing(is, was);
        const int removed = missing(was, is);
        if (added + removed > 0)
            all << QStringLiteral("%1 +%2 -%3").arg(table).arg(added).arg(removed);
    }
    return all;
}

}  // namespace stelvan::test
