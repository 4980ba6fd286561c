// A model as tables for spreadsheets: one for each category, a row for each item, cells as the
// editor shows them.
//
// The columns are the editor's fields under the captions of its list of exceptions. Variables have
// their type (SV, DV, EC) besides, events their reports and reports their variables: identifiers
// in order, parted by blanks. Flags are 0 and 1. What stands for "no value" in the file (NULL, a 0
// in some fields) is an empty cell.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "gem/kinds.h"
#include "model/check/record_reader.h"
#include "model/core/cross_reference.h"
#include "model/core/progress.h"

namespace stelvan::model {

struct SheetColumn {
    std::string_view caption;
    const gem::FieldFacts* field = nullptr;  // none for the type and the links
    bool isType = false;
    bool isLinks = false;
};

/// The columns of a kind's sheets; none for kinds without a category.
[[nodiscard]] std::vector<SheetColumn> sheetColumns(gem::Kind kind);

/// The link rows that items of a kind own, or nothing.
[[nodiscard]] std::optional<Part> linksOf(gem::Kind kind);

/// "custom-status-variables.csv".
[[nodiscard]] std::string sheetName(std::int16_t category);

/// The part that holds a category's items.
[[nodiscard]] Part partOf(std::int16_t category);

/// The cells of items; points into the model, which must outlive it.
class SheetCells {
public:
    SheetCells(const Model& model, const CrossReference& references, Part part);

    /// The category of a row, NO_CATEGORY for one that the editor does not show.
    [[nodiscard]] std::int16_t category(const Row& row) { return reader_.category(row); }
    /// One cell for each of sheetColumns(), not guarded yet. A row of a category.
    [[nodiscard]] std::vector<std::string> of(const Row& row);

private:
    Part part_;
    const Table& table_;
    const CrossReference& references_;
    std::vector<SheetColumn> columns_;
    RecordReader reader_;
};

/// Writes the sheets of all categories that the model has a table for into a folder, which is made
/// where it is missing; each is there whole or as it was. Throws what writeWhole throws.
void exportSheets(const Model& model, const std::filesystem::path& folder,
                  const Progress& progress = {});

}  // namespace stelvan::model
