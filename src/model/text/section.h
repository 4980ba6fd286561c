// The sections of a TOML text, one after the other: what follows a header [name] or [[name]] up to
// the next, with its keys and values as they stand in it.
//
// Texts as export writes them are read by a short procedure of our own, since a general reader
// takes many times as long and holds the whole text; every section that has any other form goes to
// the TOML library alone. Both take and give the same.
#pragma once

#include <cstddef>
#include <deque>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "jet/rows/value.h"

namespace stelvan::model {

struct TomlField;

/// An entry of a list: a value, or the fields of an inline table.
struct TomlEntry {
    std::size_t line = 0;
    bool isTable = false;
    jet::Value value;
    std::vector<TomlField> fields;
};

/// A key with its value or its list. Integers beyond 32 bits are decimals, dates DateTime.
struct TomlField {
    std::string_view key;  // lives as long as the text and its section
    std::size_t line = 0;
    bool isList = false;
    jet::Value value;
    std::vector<TomlEntry> list;
};

struct TomlSection {
    std::string_view name;
    std::size_t line = 0;  // of the header
    bool isArray = false;  // [[name]]
    std::vector<TomlField> fields;
    std::deque<std::string> spelt;  // keys that do not stand in the text as they are
};

/// A section that cannot be read; the next one can be asked for.
class TomlFault : public std::runtime_error {
public:
    TomlFault(std::size_t line, const std::string& why) : std::runtime_error(why), line_(line) {}
    [[nodiscard]] std::size_t line() const { return line_; }

private:
    std::size_t line_;
};

enum class TomlWay { Short, Library };

class TomlReader {
public:
    /// `text` must outlive the reader. With TomlWay::Library nothing goes the short way.
    explicit TomlReader(std::string_view text, TomlWay way = TomlWay::Short);

    /// Reads the next section; false behind the last. Throws TomlFault where it is no TOML or holds
    /// what no model does, and stands behind it then.
    bool next(TomlSection& section);

    /// The text of the section that was read, or not read, last.
    [[nodiscard]] std::string_view source() const { return source_; }

private:
    std::string_view text_;
    TomlWay way_;
    std::size_t at_ = 0;
    std::size_t line_ = 1;
    std::string_view source_;
};

}  // namespace stelvan::model
