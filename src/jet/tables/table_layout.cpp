#include "jet/tables/table_layout.h"

#include <algorithm>
#include <set>

#include "base/utf.h"
#include "jet/index/index_keys.h"
#include "jet/rows/column_facts.h"
#include "jet/rows/row_layout.h"
#include "jet/rows/text.h"
#include "jet/tables/definition_format.h"

namespace stelvan::jet {

namespace {

constexpr std::uint16_t kMaxVariable = 510;
constexpr std::uint8_t kMaxPrecision = 28;
constexpr std::uint8_t kUsualPrecision = 18;

[[noreturn]] void refuse(ErrorKind kind, const std::string& subject, const std::string& why) {
    throw Error(kind, "'" + subject + "' " + why).about(subject);
}

template <typename Named>
void checkNames(const std::vector<Named>& named) {
    std::set<std::string> seen;
    for (const Named& one : named) {
        checkName(one.name);
        if (!seen.insert(foldName(one.name)).second)
            refuse(ErrorKind::InvalidName, one.name, "is there twice.");
    }
}

bool isFixed(const ColumnInfo& column) {
    if (column.type == ColumnType::Text || column.type == ColumnType::Binary)
        return column.fixedLength;
    return !isLongValue(column.type);
}

void setLength(ColumnInfo& column) {
    if (isLongValue(column.type)) {
        column.length = 0;
    } else if (const auto natural = naturalSize(column.type)) {
        column.length = *natural;
    } else if (column.length == 0) {
        column.length = kMaxVariable;
    }
    const bool odd = column.type == ColumnType::Text && column.length % 2 != 0;
    if (odd || (column.length > kMaxVariable && column.type != ColumnType::FixedBinary)) {
        refuse(ErrorKind::TypeMismatch, column.name, "has a length that no column can have.");
    }
}

void settle(ColumnInfo& column, std::size_t number) {
    column.number = static_cast<std::uint16_t>(number);
    column.fixedLength = isFixed(column);
    column.compressed = column.compressed && isText(column.type);
    setLength(column);
    if (column.type != ColumnType::Numeric) return;
    if (column.precision == 0) column.precision = kUsualPrecision;
    if (column.precision > kMaxPrecision || column.scale > column.precision) {
        refuse(ErrorKind::TypeMismatch, column.name, "has more places than a decimal can have.");
    }
}

void placeColumns(TableDef& table) {
    std::size_t autoNumbers = 0;
    for (std::size_t i = 0; i < table.info.columns.size(); ++i) {
        ColumnInfo& column = table.info.columns[i];
        settle(column, i);
        ColumnStorage storage;
        storage.flags = column_flag::kUpdatable;
        if (column.autoNumber) {
            if (column.type != ColumnType::Long || ++autoNumbers > 1) {
                refuse(ErrorKind::TypeMismatch, column.name, "cannot be an AutoNumber.");
            }
            storage.flags |= column_flag::kAutoNumber;
        }
        if (column.fixedLength) {
            storage.flags |= column_flag::kFixed;
            if (column.type != ColumnType::Boolean)
                storage.fixedOffset = static_cast<std::uint16_t>(table.fixedSize);
            storage.size = column.type == ColumnType::Boolean ? std::uint16_t{0} : column.length;
            table.fixedSize += storage.size;
        } else {
            storage.variableIndex = table.variableColumns++;
        }
        if (table.fixedSize > row::kMaxSize)
            refuse(ErrorKind::RowTooLarge, table.info.name, "has rows that are too large.");
        table.storage.push_back(storage);
    }
    table.maxColumns = static_cast<std::uint16_t>(table.info.columns.size());
}

std::uint8_t flagsOf(const IndexInfo& index) {
    std::uint8_t flags = real_index::kAlways;
    if (index.unique || index.primary) flags |= real_index::kUnique;
    if (index.ignoreNulls) flags |= real_index::kIgnoreNulls;
    if (index.required || index.primary) flags |= real_index::kRequired;
    return flags;
}

void checkIndex(const TableDef& table, const IndexInfo& index) {
    if (index.columns.empty() || index.columns.size() > real_index::kColumnCount) {
        refuse(ErrorKind::InvalidName, index.name, "has no columns, or too many.");
    }
    for (const IndexColumn& part : index.columns) {
        if (part.column >= table.info.columns.size()) {
            refuse(ErrorKind::NoSuchColumn, index.name,
                   "is an index over a column that does not exist.");
        }
        if (table.info.columns[part.column].type == ColumnType::Ole) {
            refuse(ErrorKind::TypeMismatch, index.name,
                   "is an index over a column that cannot have one.");
        }
    }
    if (!KeyEncoder::canEncode(table.info.columns, index.columns)) {
        refuse(ErrorKind::UnsupportedOrder, index.name,
               "is an index of an order that is not known.");
    }
}

void placeIndexes(TableDef& table) {
    std::size_t primaries = 0;
    for (std::size_t i = 0; i < table.info.indexes.size(); ++i) {
        IndexInfo& index = table.info.indexes[i];
        checkIndex(table, index);
        if (index.primary && ++primaries > 1)
            refuse(ErrorKind::InvalidName, index.name, "is a second primary key.");
        RealIndexDef tree;
        tree.columns = index.columns;
        tree.flags = flagsOf(index);
        table.trees.push_back(std::move(tree));
        LogicalIndexDef logical;
        logical.number = static_cast<std::uint32_t>(i);
        logical.real = static_cast<std::uint32_t>(i);
        logical.kind = index.primary ? logical_index::kPrimary : logical_index::kPlain;
        table.logical.push_back(logical);
    }
}

}  // namespace

void checkName(std::string_view name) {
    const bool badLength = name.empty() || base::utf16Length(name) > definition::kMaxNameLength;
    const bool badCharacter = std::ranges::any_of(name, [](char c) {
        return static_cast<unsigned char>(c) < ' ' ||
               std::string_view(".!`[]").find(c) != std::string_view::npos;
    });
    if (badLength || badCharacter || name.front() == ' ') {
        refuse(ErrorKind::InvalidName, std::string(name), "is not a valid name.");
    }
}

TableDef layOut(const TableSpec& spec) {
    checkName(spec.name);
    checkNames(spec.columns);
    checkNames(spec.indexes);
    if (spec.columns.empty() || spec.columns.size() > row::kMaxColumns) {
        refuse(ErrorKind::InvalidName, spec.name, "has no columns, or more than 255.");
    }
    if (spec.indexes.size() > definition::kMaxIndexes)
        refuse(ErrorKind::InvalidName, spec.name, "has too many indexes.");
    TableDef table;
    table.info.name = spec.name;
    table.info.columns = spec.columns;
    table.info.indexes = spec.indexes;
    placeColumns(table);
    placeIndexes(table);
    return table;
}

}  // namespace stelvan::jet
