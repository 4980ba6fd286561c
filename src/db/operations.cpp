#include "db/operations.h"

#include <fcntl.h>
#include <unistd.h>

#include <compare>
#include <limits>
#include <utility>

#include "base/number.h"
#include "db/query.h"
#include "db/value_text.h"

namespace stelvan::db {

namespace {

constexpr const char* kConnectionStart =
    "Provider=Microsoft.Jet.OLEDB.4.0;Persist Security Info=False; Mode=Read|Write;Data Source=";

// Lower identifiers are left to the records that come with the standard.
constexpr std::int32_t kFirstCustomId = 101;
constexpr std::int32_t kLargestId = std::numeric_limits<std::int32_t>::max();

/// The identifier after the highest one, from 101 up; empty where the next one has no place in 32
/// bits.
std::string identifierAfter(const std::string& highest) {
    if (!base::isNumeric(highest)) return {};
    if (std::is_gteq(base::compareDecimals(highest, std::to_string(kLargestId)))) return {};
    if (std::is_lteq(base::compareDecimals(highest, "0"))) return std::to_string(kFirstCustomId);
    const std::int32_t value = base::toInt32(highest);
    if (value == kLargestId) return {};
    return std::to_string(value >= kFirstCustomId ? value + 1 : kFirstCustomId);
}

}  // namespace

Operations::Operations(const std::string& path, CurrentRecords& current)
    : path_(path), current_(current) {}

std::string Operations::connectionText() const {
    return kConnectionStart + path_;
}

bool Operations::writable() const {
    return ::faccessat(AT_FDCWD, path_.c_str(), W_OK, AT_EACCESS) == 0;
}

void Operations::lExecCommand(Connection& connection, const std::string& sql) const {
    base::trap("lExecCommand", [&] {
        if (connection.state() == ObjectState::Open) connection.close();
        connection.setConnectionText(connectionText());
        connection.open();
        connection.execute(sql);
    });
}

Recordset& Operations::lGetRecordSet(Connection& connection, Recordset& records,
                                     const std::string& sql) const {
    base::trap("lGetRecordSet", [&] {
        connection.setConnectionText(connectionText());
        connection.open();
        records.open(sql, connection, CursorType::Static, LockType::Optimistic);
    });
    return records;
}

void Operations::lLoadData(const std::string& sql) {
    base::trap("lLoadData", [&] {
        // The old record set goes first: if the new one cannot be had, its rows must not live on
        // under another category, where they would be edited or deleted.
        current_.drop();
        current_.adoGEM = {connectionText(), sql};
        current_.records = current_.adoGEM.refresh();
        current_.position = current_.count() < 1 ? 0 : 1;
    });
    if (onLoaded) onLoaded();
}

std::string Operations::lGetNextID(const std::string& column, const std::string& table) const {
    return base::trap("lGetNextID", [&]() -> std::string {
        // Open to the end: the second query then finds the pages that the first one read.
        Query all(connectionText(), "SELECT " + column + " FROM " + table, Reading::AsReached);
        if (all.records().recordCount() == 0) return std::to_string(kFirstCustomId);
        Query highest(connectionText(), "SELECT MAX(" + column + ")" + " FROM " + table);
        if (highest.records().recordCount() == 0) return {};
        return identifierAfter(toTextOrEmpty(highest.records().field(0)));
    });
}

bool Operations::lCheckDuplicate(const std::string& value, const std::string& column,
                                 const std::string& table) const {
    return base::trap("lCheckDuplicate", [&] {
        Query query(connectionText(),
                    "SELECT " + column + " FROM " + table + " WHERE " + column + " = " + value,
                    Reading::AsReached);
        return query.records().recordCount() >= 1;
    });
}

Recordset& Operations::lFilterField(Recordset& records, const std::string& column,
                                    const std::string& value) {
    base::trap("lFilterField", [&] {
        records.setFilter(base::isNumeric(value) ? column + " = " + value
                                                 : column + " = '" + value + "'");
    });
    return records;
}

}  // namespace stelvan::db
