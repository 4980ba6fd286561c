// What an independent reader (mdb-export of mdbtools) finds in a file.
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <map>
#include <string>
#include <vector>

namespace stelvan::test {

using ExportedRow = QMap<QString, QString>;  // column to text; Null is kExportedNull

inline const QString kExportedNull = QStringLiteral("<null>");

[[nodiscard]] bool hasMdbExport();

/// All rows of a table. Throws when the reader fails.
[[nodiscard]] std::vector<ExportedRow> exportTable(const std::string& file, const QString& table);

/// The rows in which a column has a value.
[[nodiscard]] std::vector<ExportedRow> exportWhere(const std::string& file, const QString& table,
                                                   const QString& column, const QString& value);

/// All rows of the model's tables, for telling what a change touched.
using Snapshot = std::multimap<QString, ExportedRow>;
[[nodiscard]] Snapshot snapshotOf(const std::string& file);

/// How many rows of each table are in `after` but not in `before`, as "secs_alarm +1 -1", tables in
/// alphabetical order.
[[nodiscard]] QStringList differences(const Snapshot& before, const Snapshot& after);

}  // namespace stelvan::test

#define STELVAN_NEEDS_MDB_EXPORT() \
    if (!stelvan::test::hasMdbExport()) GTEST_SKIP() << "mdb-export is absent"
