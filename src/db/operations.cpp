#include "db/operations.h"

#include <compare>
#include <limits>
#include <utility>

#include "base/number.h"
#include "db/value_text.h"

namespace stelvan::db {

namespace {

constexpr const char* kConnectionStart =
    "Provider=Microsoft.Jet.OLEDB.4.0;Persist Security Info=False; Mode=Read|Write;Data Source=";

// Lower identifiers are left to the records that come with the standard.
constexpr std::int32_t kFirstCustomId = 101;
constexpr std::int32_t kLargestId = std::numeric_limits<std::int32_t>::max();

/// A connection and a record set for the length of one operation; closed record set first.
class Query {
public:
    Query(const std::string& connectionText, const std::string& sql) {
        connection_.setConnectionText(connectionText);
        connection_.open();
        records_.open(sql, connection_);
    }
    [[nodiscard]] Recordset& records() { return records_; }

private:
    Connection connection_;
    Recordset records_;
};

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

void DataSource::refresh() {
    recordset.reset();
    Connection connection;
    connection.setConnectionText(connectionText);
    connection.open();
    auto opened = std::make_shared<Recordset>();
    opened->open(recordSource, connection, cursorType, lockType);
    recordset = std::move(opened);
}

Operations::Operations(base::ErrorInfo& errors, const std::string& path, DataSource& adoGEM,
                       CurrentRecords& current)
    : errors_(errors), path_(path), adoGEM_(adoGEM), current_(current) {}

std::string Operations::connectionText() const {
    return kConnectionStart + path_;
}

void Operations::lExecCommand(Connection& connection, const std::string& sql) {
    errors_.trap("lExecCommand", [&] {
        if (connection.state() == ObjectState::Open) connection.close();
        connection.setConnectionText(connectionText());
        connection.open();
        connection.execute(sql);
    });
}

Recordset* Operations::lGetRecordSet(Connection& connection, Recordset& records,
                                     const std::string& sql) {
    const bool opened = errors_.trap("lGetRecordSet", [&] {
        connection.setConnectionText(connectionText());
        connection.open();
        records.open(sql, connection, CursorType::Static, LockType::Optimistic);
    });
    return opened ? &records : nullptr;
}

bool Operations::lLoadData(const std::string& sql) {
    const bool loaded = errors_.trap("lLoadData", [&] {
        // The old record set goes first: if the new one cannot be had, its rows must not live on
        // under another category, where they would be edited or deleted.
        adoGEM_.recordset.reset();
        current_.drop();
        adoGEM_.connectionText = connectionText();
        adoGEM_.cursorType = CursorType::Static;
        adoGEM_.lockType = LockType::Optimistic;
        adoGEM_.recordSource = sql;
        adoGEM_.refresh();
        current_.records = adoGEM_.recordset;
        current_.position = current_.records->recordCount() < 1 ? 0 : 1;
    });
    if (!loaded) {
        adoGEM_.recordset.reset();
        current_.records.reset();
        current_.position = 0;
        return false;
    }
    if (onLoaded) onLoaded();
    return true;
}

std::string Operations::lGetNextID(const std::string& column, const std::string& table) {
    std::string next;
    errors_.trap("lGetNextID", [&] {
        // Open to the end: the second query then finds the pages that the first one read.
        Query all(connectionText(), "SELECT " + column + " FROM " + table);
        if (all.records().recordCount() == 0) {
            next = std::to_string(kFirstCustomId);
            return;
        }
        Query highest(connectionText(), "SELECT MAX(" + column + ")" + " FROM " + table);
        if (highest.records().recordCount() > 0) {
            next = identifierAfter(toTextOrEmpty(highest.records().field(0)));
        }
    });
    return next;
}

bool Operations::lCheckDuplicate(const std::string& value, const std::string& column,
                                 const std::string& table) {
    bool found = false;
    errors_.trap("lCheckDuplicate", [&] {
        Query query(connectionText(),
                    "SELECT " + column + " FROM " + table + " WHERE " + column + " = " + value);
        found = query.records().recordCount() >= 1;
    });
    return found;
}

Recordset& Operations::lFilterField(Recordset& records, const std::string& column,
                                    const std::string& value) {
    errors_.trap("lFilterField", [&] {
        records.setFilter(base::isNumeric(value) ? column + " = " + value
                                                 : column + " = '" + value + "'");
    });
    return records;
}

}  // namespace stelvan::db
