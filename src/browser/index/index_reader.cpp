#include "browser/index/index_reader.h"

#include <algorithm>
#include <array>
#include <limits>

#include "gem/schema.h"
#include "jet/rows/text.h"
#include "jet/rows/value_text.h"
#include "model/core/model.h"
#include "model/core/values.h"

namespace stelvan::browser {

using model::Part;

namespace {

namespace alarm = gem::schema::alarm;
namespace event = gem::schema::event;
namespace report = gem::schema::report;
namespace variable = gem::schema::variable;

/// A column that names another item.
struct Reference {
    std::string_view column = {};
    NumberPairs IndexReader::*usersOf = nullptr;   // what it names -> the row
    NumberPairs IndexReader::*ownersOf = nullptr;  // the row -> what it names
};

/// What is read of a part beside its identifier and name.
struct PartColumns {
    Part part;
    std::string_view type, group, text;
    std::array<Reference, 2> references = {};
};

constexpr PartColumns kParts[] = {
    {Part::StandardVariables, variable::kType, variable::kGroup, variable::kDescription},
    {Part::CustomVariables,
     variable::kType,
     variable::kGroup,
     variable::kDescription,
     {{{variable::kParentKey, &IndexReader::childrenOfList, &IndexReader::listOfChild}}}},
    {Part::StandardEvents, "", event::kGroup, event::kText},
    {Part::CustomEvents, "", event::kGroup, event::kText},
    {Part::Alarms,
     "",
     alarm::kGroup,
     alarm::kText,
     {{{alarm::kSetEventId, &IndexReader::alarmsSetBy},
       {alarm::kClearEventId, &IndexReader::alarmsClearedBy}}}},
    {Part::Reports, "", "", report::kDescription},
    {Part::Settings, "", "", ""},
};

/// The column that a reader wants, or a number that no row has.
constexpr std::size_t kMissing = std::numeric_limits<std::size_t>::max();

std::size_t columnOf(const jet::TableInfo& info, std::string_view name) {
    return name.empty() ? kMissing : info.findColumn(name).value_or(kMissing);
}

jet::ColumnSet present(std::initializer_list<std::size_t> columns) {
    jet::ColumnSet set;
    for (const std::size_t column : columns)
        if (column != kMissing) set.push_back(column);
    return set;
}

/// The text of a value; `held` keeps it where it has to be made.
std::string_view textOf(jet::Cursor& row, std::size_t column, std::string& held) {
    if (column == kMissing) return {};
    const jet::ValueView value = row.value(column);
    if (const auto* text = std::get_if<std::string_view>(&value)) return *text;
    held = jet::textOf(jet::toValue(value));
    return held;
}

std::int64_t numberOf(jet::Cursor& row, std::size_t column) {
    if (column == kMissing) return kNoId;
    const jet::ValueView value = row.value(column);
    if (const auto* number = std::get_if<std::int32_t>(&value)) return *number;
    return model::wholeNumber(jet::toValue(value)).value_or(kNoId);
}

/// Sizes are kept in 16 bits; a name that is longer has been put there by no editor.
std::string_view shortened(std::string_view text) {
    return text.substr(0, std::numeric_limits<std::uint16_t>::max());
}

const PartColumns& columnsOf(Part part) {
    return *std::ranges::find(kParts, part, &PartColumns::part);
}

}  // namespace

jet::Table* IndexReader::tableOf(Part part) {
    const auto name = model::tableOf(part, database_);
    return name ? &database_.table(*name) : nullptr;
}

std::uint32_t IndexReader::add(std::string_view text) {
    const auto begin = static_cast<std::uint32_t>(texts.size());
    texts.append(text);
    return begin;
}

std::uint32_t IndexReader::groupOf(std::string_view group) {
    const auto known = groupNumbers_.find(group);
    if (known != groupNumbers_.end()) return known->second;
    const auto number = static_cast<std::uint32_t>(groups.size());
    groups.push_back(jet::foldName(group));
    groupNumbers_.emplace(group, number);
    return number;
}

void IndexReader::readItems() {
    for (const PartColumns& columns : kParts) {
        jet::Table* const table = tableOf(columns.part);
        if (table != nullptr) readPart(columns.part, *table);
    }
    items.shrink_to_fit();
    texts.shrink_to_fit();
    for (NumberPairs* pairs : {&alarmsSetBy, &alarmsClearedBy, &childrenOfList, &listOfChild})
        pairs->finish();
}

void IndexReader::readPart(Part part, jet::Table& table) {
    const model::PartFacts& facts = model::factsOf(part);
    const PartColumns& wanted = columnsOf(part);
    const jet::TableInfo info = table.info();
    const std::size_t id = columnOf(info, facts.id);
    // Settings have no name but the one that tells them apart.
    const std::size_t name = facts.name.empty() ? id : columnOf(info, facts.name);
    const std::size_t type = columnOf(info, wanted.type);
    const std::size_t group = columnOf(info, wanted.group);
    const std::size_t first = columnOf(info, wanted.references[0].column);
    const std::size_t second = columnOf(info, wanted.references[1].column);
    items.reserve(items.size() + info.rows);
    std::string held, heldType;
    std::uint8_t category = 0;
    for (const auto row = table.scan(present({id, name, type, group, first, second}));
         row->next();) {
        IndexedItem item{.place = row->rowId(), .part = part};
        if (!facts.name.empty()) item.id = numberOf(*row, id);
        const std::string_view shown = shortened(textOf(*row, name, held));
        item.name = add(shown);
        item.nameSize = static_cast<std::uint16_t>(shown.size());
        const std::string folded = jet::foldName(shown);
        item.folded = add(shortened(folded));
        item.foldedSize = static_cast<std::uint16_t>(shortened(folded).size());
        item.group = groupOf(textOf(*row, group, held));
        const std::string_view kind = textOf(*row, type, held);
        if (category == 0 || kind != heldType) {
            heldType = kind;
            category = static_cast<std::uint8_t>(model::categoryOf(part, kind));
        }
        item.category = category;
        items.push_back(item);
        refer(wanted.references[0].usersOf, wanted.references[0].ownersOf, numberOf(*row, first),
              item.id);
        refer(wanted.references[1].usersOf, wanted.references[1].ownersOf, numberOf(*row, second),
              item.id);
    }
}

void IndexReader::refer(NumberPairs IndexReader::*users, NumberPairs IndexReader::*owners,
                        std::int64_t named, std::int64_t row) {
    // 0 names nothing: no list, no event.
    if (users == nullptr || named == kNoId || named == 0 || row == kNoId) return;
    (this->*users).add(named, row);
    if (owners != nullptr) (this->*owners).add(row, named);
}

void IndexReader::readTexts(
    std::span<const IndexedItem> known,
    const std::function<void(std::size_t item, std::string_view text)>& look) {
    std::string held;
    for (std::size_t at = 0; at < known.size();) {
        const Part part = known[at].part;
        jet::Table* const table = tableOf(part);
        const std::size_t text =
            table == nullptr ? kMissing : columnOf(table->info(), columnsOf(part).text);
        if (text == kMissing) {
            while (at < known.size() && known[at].part == part) ++at;
            continue;
        }
        // The same rows in the same order, since the file is as it was.
        for (const auto row = table->scan({text}); row->next(); ++at)
            look(at, textOf(*row, text, held));
    }
}

NumberPairs IndexReader::links(Part part) {
    NumberPairs pairs;
    const model::PartFacts& facts = model::factsOf(part);
    jet::Table* const table = tableOf(part);
    if (table == nullptr) return pairs;
    const jet::TableInfo info = table->info();
    const std::size_t owner = columnOf(info, facts.id);
    const std::size_t target = columnOf(info, facts.target);
    for (const auto row = table->scan(present({owner, target})); row->next();)
        pairs.add(numberOf(*row, target), numberOf(*row, owner));
    pairs.finish();
    return pairs;
}

}  // namespace stelvan::browser
