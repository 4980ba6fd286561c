// A row of the file as the window would hold it while the user edits it: texts as they are shown,
// placeholders blank, fields closed that the category, the record or its format closes.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "gem/kinds.h"
#include "gem/record.h"
#include "model/core/model.h"

namespace stelvan::model {

/// Positions of a kind's columns are found once, so that reading a row is quick.
class RecordReader {
public:
    /// `table` must outlive the object. A part whose rows have fields.
    RecordReader(Part part, const Table& table);

    struct Column {
        const gem::FieldFacts* field;
        std::optional<std::size_t> at;  // in Table::columns; nothing where the table has none
    };
    /// The fields that have a column, in the order in which they are shown.
    [[nodiscard]] const std::vector<Column>& columns() const { return columns_; }

    /// categoryOf() of a row, remembered by its type.
    [[nodiscard]] std::int16_t category(const Row& row);

    /// The row under edit; nothing where the editor shows it in no category. A Null is an empty
    /// text. An existing record's identifier is open, too, so that it can be judged. Lives until
    /// the next call.
    [[nodiscard]] gem::Record* read(const Row& row);

private:
    void fill(gem::Record& record, const Row& row) const;
    void follow(gem::Record& record, const Row& row) const;

    Part part_;
    const Table& table_;
    std::vector<Column> columns_;
    std::optional<std::size_t> type_, parent_;
    std::map<std::string, std::int16_t> categories_;  // by the type
    std::array<std::optional<gem::Record>, gem::LIMIT + 1> records_;
};

}  // namespace stelvan::model
