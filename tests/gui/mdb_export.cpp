#include "tests/gui/mdb_export.h"

#include <QProcess>
#include <QStandardPaths>
#include <QStringList>
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
    reader.start(QStringLiteral("mdb-export"), {"-0", kExportedNull, QString::fromStdString(file), table});
    if (!reader.waitForFinished() || reader.exitCode() != 0) throw std::runtime_error("mdb-export failed");
    const auto records = parse(QString::fromUtf8(reader.readAllStandardOutput()));
    std::vector<ExportedRow> rows;
    for (std::size_t r = 1; r < records.size(); ++r) {
        ExportedRow row;
        for (qsizetype c = 0; c < records[r].size(); ++c) row.insert(records[0].value(c), records[r][c]);
        rows.push_back(row);
    }
    return rows;
}

std::vector<ExportedRow> exportWhere(const std::string& file, const QString& table, const QString& column,
                                     const QString& value) {
    std::vector<ExportedRow> rows = exportTable(file, table);
    std::erase_if(rows, [&](const ExportedRow& row) { return row.value(column) != value; });
    return rows;
}

}  // namespace stelvan::test
