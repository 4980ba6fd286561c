// The one exception type of the file engine.
//
// A kind says what went wrong, the subject what it is about (file, table, column); a detail is
// added only where the engine knows more: which page, and why. db/ owns the sentences that users
// read and makes them of kind and subject; what() is for those who use the engine without it.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>

namespace stelvan::jet {

enum class ErrorKind {
    FileNotFound,        // no such file
    BadPath,             // folder missing, or the path is a folder
    NotADatabase,        // not a Jet file at all
    UnsupportedVersion,  // Access 97, .accdb, Money
    Encrypted,           // page encryption
    PasswordProtected,   // a database password is set
    Corrupt,             // the bytes break a rule of the format
    PermissionDenied,
    Locked,    // another process holds the file
    ReadOnly,  // file, folder or medium cannot be written
    Io,        // read, write or sync failed
    DiskFull,
    NoSuchTable,
    NoSuchColumn,
    NoSuchIndex,
    TableExists,
    InvalidName,
    DuplicateKey,
    NullInKey,       // null in a primary key or required index
    NullInRequired,  // null in a column whose Required property is set
    ZeroLength,      // empty text in a column that forbids it
    TextTooLong,
    TypeMismatch,     // the value cannot become one of the column's type
    NumericOverflow,  // outside the range of the column's type
    RowTooLarge,
    MissingParent,     // enforced relationship: no such parent row
    HasChildren,       // enforced relationship: child rows exist
    UnsupportedOrder,  // a text index of a sort order that cannot be written
    RowGone,           // the row was deleted since its id was taken
    RowChanged,        // the row is not as it was when it was read
    Misuse             // a call in the wrong state: a fault of the caller
};

class Error : public std::runtime_error {
public:
    Error(ErrorKind kind, const std::string& detail,
          std::optional<std::uint32_t> page = std::nullopt)
        : std::runtime_error(detail), kind_(kind), page_(page) {}

    /// For kinds that say all there is to say, see kLabels in error.cpp.
    [[nodiscard]] static Error of(ErrorKind kind, const std::string& subject);

    [[nodiscard]] ErrorKind kind() const { return kind_; }
    [[nodiscard]] std::optional<std::uint32_t> page() const { return page_; }

    /// The name of what it is about (table, column, file).
    [[nodiscard]] const std::string& subject() const { return subject_; }
    Error& about(std::string subject) {
        subject_ = std::move(subject);
        return *this;
    }

private:
    ErrorKind kind_;
    std::optional<std::uint32_t> page_;
    std::string subject_;
};

}  // namespace stelvan::jet
