// What all chapters of the manual share: the page being written, places and links of items, tables
// in sheets.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/core/cross_reference.h"
#include "model/publish/html.h"
#include "model/publish/manual.h"
#include "model/publish/manual/outline.h"

namespace stelvan::model::manual {

/// A column of a table; the class sets its width.
struct Column {
    std::string_view title;
    std::string_view cssClass;
};

/// Points into the model and the options, which outlive it.
class Page {
public:
    Page(const Model& model, const ManualOptions& options, std::vector<Chapter> chapters,
         const Sink& sink, const Progress& progress);

    const Model& model;
    const ManualOptions& options;
    const CrossReference references;
    const std::vector<Chapter> chapters;
    std::span<const Finding> findings;
    Html html;

    /// Where an item stands on the page: one place for each item, whatever identifiers are missing
    /// or doubled.
    [[nodiscard]] std::string anchorOf(const Item& item) const;

    /// The first item with an identifier in a table, whose name is in any letter case; of link rows
    /// the item that owns them. Nothing where there is none.
    [[nodiscard]] std::optional<Item> itemOf(std::string_view table, const jet::Value& id) const;

    /// "101 LotStarted", leading there.
    void link(const Item& item);
    /// The same for the first item of a relation with an identifier; says so where there is none.
    void link(const Relation& relation, const std::string& id);
    /// A line "label: link, link"; folded where there are many, nothing where there are none.
    void links(std::string_view label, std::span<const Item> items);

    /// The attributes of an element that is an item, which was begun just now.
    void markItem(const Item& item);
    /// The first two cells' usual content: the identifier; then name, group and description.
    void idCell(const Item& item);
    void nameAndText(std::string_view name, std::string_view group, std::string_view text);

    /// Calls `row` for each number below `rows` inside tables with these columns. A long table
    /// comes in several sheets, so that a browser need not lay out all of it.
    void table(std::string_view title, std::string_view cssClass, std::span<const Column> columns,
               std::size_t rows, const std::function<void(std::size_t)>& row);
    void table(const Chapter& chapter, const Section& section, std::string_view cssClass,
               std::span<const Column> columns, const std::function<void(const Item&)>& row);

    /// An item was written; tells whoever follows the work.
    void wroteItem();

private:
    [[nodiscard]] const Relation* relationOf(gem::Kind kind) const;

    const Progress& progress_;
    std::size_t written_ = 0;
    std::size_t total_ = 0;
};

/// What link rows lead to by one of their columns and is there; once where rows that follow each
/// other lead to the same.
[[nodiscard]] std::vector<Item> targetsOf(std::span<const Relation::Entry> links,
                                          std::string_view column, const Relation& targets);

}  // namespace stelvan::model::manual
