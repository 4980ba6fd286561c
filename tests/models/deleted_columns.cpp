#include "tests/models/deleted_columns.h"

#include <algorithm>

#include "jet/disk/page_file.h"
#include "jet/tables/catalog.h"
#include "jet/tables/definition_format.h"
#include "jet/tables/definition_writer.h"

namespace stelvan::data::test {
namespace {

template <typename Item>
void eraseAt(std::vector<Item>& items, std::size_t position) {
    items.erase(items.begin() + static_cast<std::ptrdiff_t>(position));
}

void moveUp(std::vector<jet::IndexColumn>& parts, std::size_t position) {
    for (jet::IndexColumn& part : parts) part.column -= part.column > position ? 1 : 0;
}

}  // namespace

void deleteColumn(const std::filesystem::path& path, const std::string& table,
                  const std::string& column) {
    const auto file = jet::PageFile::open(path, jet::Access::ReadWrite);
    jet::WriteScope scope(file);
    jet::Catalog catalog(*file);
    jet::TableDef definition = *catalog.definition(*catalog.findTable(table));
    const std::size_t position = definition.info.findColumn(column).value();
    eraseAt(definition.info.columns, position);
    eraseAt(definition.storage, position);
    for (jet::RealIndexDef& tree : definition.trees) moveUp(tree.columns, position);
    const jet::DefinitionBytes before = jet::readDefinitionBytes(*file, definition.page);
    definition.info.rows = jet::u32At(before.bytes, jet::definition::kRows);
    jet::writeDefinition(*file, before.pages,
                         jet::makeDefinition(definition, jet::BlockOrder::ByNumber).join());
    scope.commit();
}

void forgetColumn(jet::TableSpec& table, const std::string& column) {
    const auto found = std::ranges::find(table.columns, column, &jet::ColumnInfo::name);
    const auto position = static_cast<std::size_t>(found - table.columns.begin());
    eraseAt(table.columns, position);
    for (jet::IndexInfo& index : table.indexes) moveUp(index.columns, position);
}

}  // namespace stelvan::data::test
