// The shipped models as tables of text, with the few questions that the tests ask of them.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "data/builder/table_text.h"

namespace stelvan::test {

using Row = std::map<std::string, std::string>;

/// A model as the builder puts it together: the rows of several folders, one after the other.
class ModelTexts {
public:
    ModelTexts(const std::vector<std::string>& folders,
               const data::Replacements& replacements = {}) {
        for (const std::string& folder : folders) {
            const auto tables =
                data::readTables(std::string(STELVAN_SOURCE_DIR "/data/") + folder, replacements);
            for (const data::TableRows& table : tables) append(table);
        }
    }

    void append(const data::TableRows& table) {
        for (const auto& cells : table.rows) {
            Row row;
            for (std::size_t i = 0; i < cells.size(); ++i) row[table.columns[i]] = cells[i].value();
            tables_[table.table].push_back(std::move(row));
        }
    }

    [[nodiscard]] const std::vector<Row>& rows(const std::string& table) const {
        static const std::vector<Row> kNone;
        const auto found = tables_.find(table);
        return found == tables_.end() ? kNone : found->second;
    }

    /// Rows of several tables, one table after the other.
    [[nodiscard]] std::vector<Row> rowsOf(const std::vector<std::string>& tables) const {
        std::vector<Row> all;
        for (const std::string& table : tables) {
            all.insert(all.end(), rows(table).begin(), rows(table).end());
        }
        return all;
    }

    [[nodiscard]] const std::map<std::string, std::vector<Row>>& tables() const { return tables_; }

private:
    std::map<std::string, std::vector<Row>> tables_;
};

}  // namespace stelvan::test
