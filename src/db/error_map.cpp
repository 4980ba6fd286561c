#include "db/error_map.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace stelvan::db {

namespace {

using jet::ErrorKind;

/// How one kind of the file engine's failures is reported. `text` is the provider's sentence with
/// {} for the subject; with `detail` the engine's own sentence follows, since it says more (or
/// stands alone where the provider has none).
struct Report {
    ErrorKind kind;
    std::int32_t number;
    std::int32_t recordSetNumber;
    std::string_view text;
    bool detail;
};

constexpr auto kFailed = provider::kFailed;
constexpr auto kErrors = provider::kErrorsOccurred;
constexpr auto kOverflow = provider::kDataOverflow;
constexpr auto kMismatch = provider::kTypeMismatch;
constexpr std::string_view kRowChangedText =
    "Row cannot be located for updating. Some values may have been changed since it was last "
    "read.";
constexpr std::string_view kNotOurFormat = "Unrecognized database format '{}'.";

constexpr std::array kReports{
    Report{ErrorKind::FileNotFound, kFailed, kFailed, "Could not find file '{}'.", false},
    Report{ErrorKind::BadPath, kFailed, kFailed,
           "'{}' is not a valid path.  Make sure that the path name is spelled correctly and "
           "that you are connected to the server on which the file resides.",
           false},
    Report{ErrorKind::NotADatabase, kFailed, kFailed, kNotOurFormat, true},
    Report{ErrorKind::UnsupportedVersion, kFailed, kFailed, kNotOurFormat, true},
    Report{ErrorKind::Encrypted, kFailed, kFailed, kNotOurFormat, true},
    Report{ErrorKind::PasswordProtected, provider::kBadPassword, provider::kBadPassword,
           "Not a valid password.", true},
    Report{ErrorKind::Corrupt, kFailed, kFailed, "", true},
    Report{ErrorKind::PermissionDenied, kFailed, kFailed,
           "The Microsoft Jet database engine cannot open the file '{}'.  It is already opened "
           "exclusively by another user, or you need permission to view its data.",
           false},
    Report{ErrorKind::Locked, kFailed, kFailed, "Could not use '{}'; file already in use.", false},
    Report{ErrorKind::ReadOnly, kFailed, provider::kReadOnly,
           "Operation must use an updateable query.", true},
    Report{ErrorKind::Io, kFailed, kFailed, "", true},
    Report{ErrorKind::DiskFull, kFailed, kFailed, "Not enough space on disk.", true},
    Report{ErrorKind::NoSuchTable, provider::kNoSuchTable, provider::kNoSuchTable,
           "The Microsoft Jet database engine cannot find the input table or query '{}'.  Make "
           "sure it exists and that its name is spelled correctly.",
           false},
    Report{ErrorKind::NoSuchColumn, provider::kMissingParameter, provider::kMissingParameter,
           "No value given for one or more required parameters.", true},
    Report{ErrorKind::NoSuchIndex, kFailed, kFailed, "", true},
    Report{ErrorKind::TableExists, provider::kSyntax, provider::kSyntax,
           "Table '{}' already exists.", false},
    Report{ErrorKind::InvalidName, provider::kSyntax, provider::kSyntax, "", true},
    Report{ErrorKind::DuplicateKey, kFailed, kFailed,
           "The changes you requested to the table were not successful because they would "
           "create duplicate values in the index, primary key, or relationship.  Change the "
           "data in the field or fields that contain duplicate data, remove the index, or "
           "redefine the index to permit duplicate entries and try again.",
           true},
    Report{ErrorKind::NullInKey, kFailed, kErrors,
           "Index or primary key cannot contain a Null value.", true},
    Report{ErrorKind::NullInRequired, kFailed, kErrors,
           "The field '{}' cannot contain a Null value because the Required property for this "
           "field is set to True.  Enter a value in this field.",
           false},
    Report{ErrorKind::ZeroLength, kFailed, kErrors, "Field '{}' cannot be a zero-length string.",
           false},
    Report{ErrorKind::TextTooLong, kOverflow, kOverflow,
           "The field '{}' is too small to accept the amount of data you attempted to add.  Try "
           "inserting or pasting less data.",
           false},
    Report{ErrorKind::TypeMismatch, kMismatch, kMismatch,
           "Data type conversion error in the field '{}'.", true},
    Report{ErrorKind::NumericOverflow, kOverflow, kOverflow,
           "The value is out of the range of the field '{}'.", true},
    Report{ErrorKind::RowTooLarge, kFailed, kFailed, "Record is too large.", true},
    Report{ErrorKind::MissingParent, kFailed, kFailed,
           "You cannot add or change a record because a related record is required in table '{}'.",
           false},
    Report{ErrorKind::HasChildren, kFailed, kFailed,
           "The record cannot be deleted or changed because table '{}' includes related records.",
           false},
    Report{ErrorKind::UnsupportedOrder, kFailed, kFailed, "", true},
    Report{ErrorKind::RowGone, provider::kRowChanged, provider::kRowChanged, kRowChangedText,
           false},
    Report{ErrorKind::RowChanged, provider::kRowChanged, provider::kRowChanged, kRowChangedText,
           false},
    Report{ErrorKind::Misuse, kFailed, kFailed, "", true},
};

std::string composed(const Report& report, const jet::Error& error) {
    std::string text(report.text);
    if (const std::size_t place = text.find("{}"); place != std::string::npos) {
        text.replace(place, 2, error.subject());
    }
    if (!report.detail) return text;
    return text.empty() ? error.what() : text + "  " + error.what();
}

std::int32_t numberOf(sql::ErrorKind kind) {
    switch (kind) {
        case sql::ErrorKind::UnknownTable:
            return provider::kNoSuchTable;
        case sql::ErrorKind::UnknownColumn:
            return provider::kMissingParameter;
        case sql::ErrorKind::TypeMismatch:
            return provider::kTypeMismatch;
        case sql::ErrorKind::Engine:
            return provider::kFailed;
        default:
            return provider::kSyntax;
    }
}

}  // namespace

base::RunTimeError badArgument() {
    return {3001,
            "Arguments are of the wrong type, are out of acceptable range, or are in conflict "
            "with one another."};
}
base::RunTimeError noCurrentRecord() {
    return {3021,
            "Either BOF or EOF is True, or the current record has been deleted. Requested "
            "operation requires a current record."};
}
base::RunTimeError notAllowedHere() {
    return {3219, "Operation is not allowed in this context."};
}
base::RunTimeError notUpdatable() {
    return {3251,
            "Current Recordset does not support updating. This may be a limitation of the "
            "provider, or of the selected locktype."};
}
base::RunTimeError noSuchItem(const std::string& name) {
    const std::string text =
        "Item cannot be found in the collection corresponding to the requested name or ordinal.";
    return {3265, name.empty() ? text : text + "  '" + name + "'"};
}
base::RunTimeError objectClosed() {
    return {3704, "Operation is not allowed when the object is closed."};
}
base::RunTimeError objectOpen() {
    return {3705, "Operation is not allowed when the object is open."};
}
base::RunTimeError noSuchProvider() {
    return {3706, "Provider cannot be found. It may not be properly installed."};
}
base::RunTimeError connectionUnusable() {
    return {3709,
            "The connection cannot be used to perform this operation. It is either closed or "
            "invalid in this context."};
}
base::RunTimeError rowChanged() {
    return {provider::kRowChanged,
            "Row cannot be located for updating. Some values may have been changed since it was "
            "last read."};
}

base::RunTimeError asProviderError(const jet::Error& error, Through through) {
    const auto found =
        std::find_if(kReports.begin(), kReports.end(),
                     [&error](const Report& report) { return report.kind == error.kind(); });
    if (found == kReports.end()) return {provider::kFailed, error.what()};
    return {through == Through::RecordSet ? found->recordSetNumber : found->number,
            composed(*found, error)};
}

base::RunTimeError asProviderError(const sql::Error& error) {
    return {numberOf(error.kind()), error.what()};
}

}  // namespace stelvan::db
