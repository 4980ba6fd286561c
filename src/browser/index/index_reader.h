// Reads from the file what a ModelIndex keeps: a few columns of every table, each in one pass.
//
// Files may lack tables and columns; what is missing is left out.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "browser/index/model_index.h"

namespace stelvan::browser {

class IndexReader {
public:
    /// `database` must outlive the object, and stay as it is (a read scope).
    explicit IndexReader(jet::Database& database) : database_(database) {}

    /// Fills what follows.
    void readItems();
    std::vector<IndexedItem> items;
    std::string texts;
    std::vector<std::string> groups;
    NumberPairs alarmsSetBy, alarmsClearedBy;
    NumberPairs childrenOfList, listOfChild;

    /// The owners of what is linked, by what is linked.
    [[nodiscard]] NumberPairs links(model::Part part);

    /// The descriptions of items that were read at the same moment.
    void readTexts(std::span<const IndexedItem> known,
                   const std::function<void(std::size_t item, std::string_view text)>& look);

private:
    [[nodiscard]] jet::Table* tableOf(model::Part part);
    void readPart(model::Part part, jet::Table& table);
    void refer(NumberPairs IndexReader::*users, NumberPairs IndexReader::*owners,
               std::int64_t named, std::int64_t row);
    std::uint32_t add(std::string_view text);
    [[nodiscard]] std::uint32_t groupOf(std::string_view group);

    jet::Database& database_;
    std::map<std::string, std::uint32_t, std::less<>> groupNumbers_;
};

}  // namespace stelvan::browser
