#include "model/text/sheets.h"

#include <algorithm>
#include <stdexcept>

#include "model/core/sink.h"
#include "model/text/csv.h"

namespace stelvan::model {
namespace {

using enum gem::Control;

struct Caption {
    gem::Control field;
    std::string_view caption;
};

// Fields that have no caption of their own among the exceptions, or one that says too little.
constexpr Caption kCaptions[] = {
    {chkAlmEnable, "Alarm Enabled"},   {chkEvtEnable, "Event Enabled"},
    {chkRptDefault, "Report Default"}, {txtSttName, "Setting Name"},
    {txtSttValue, "Setting Value"},    {txtSttDefValue, "Setting Default Value"},
};

constexpr std::string_view kTypeCaption = "Variable Type";
constexpr std::string_view kReportsCaption = "Event Reports";
constexpr std::string_view kVariablesCaption = "Report Variables";

std::string_view captionOf(const gem::FieldFacts& field) {
    const auto own = std::ranges::find(kCaptions, field.control, &Caption::field);
    return own != std::end(kCaptions) ? own->caption : field.caption;
}

std::string idsOf(std::span<const Relation::Entry> links, Part part) {
    std::string ids;
    for (const Relation::Entry& link : links)
        ids += (ids.empty() ? "" : " ") + link.item.text(factsOf(part).target);
    return ids;
}

}  // namespace

std::vector<SheetColumn> sheetColumns(gem::Kind kind) {
    std::vector<SheetColumn> columns;
    if (kind == gem::Kind::None || kind == gem::Kind::Limit) return columns;
    const gem::Control id = gem::fieldWith(kind, gem::Check::Id);
    if (id != None) columns.push_back({captionOf(gem::factsOf(id)), &gem::factsOf(id)});
    for (const gem::FieldFacts& field : gem::fieldsOf(kind))
        if (field.control != id && !field.column.empty())
            columns.push_back({captionOf(field), &field});
    if (kind == gem::Kind::Variable)
        columns.insert(columns.begin() + 1, {.caption = kTypeCaption, .isType = true});
    if (kind == gem::Kind::CollectionEvent)
        columns.push_back({.caption = kReportsCaption, .isLinks = true});
    if (kind == gem::Kind::Report)
        columns.push_back({.caption = kVariablesCaption, .isLinks = true});
    return columns;
}

std::optional<Part> linksOf(gem::Kind kind) {
    if (kind == gem::Kind::CollectionEvent) return Part::EventReports;
    if (kind == gem::Kind::Report) return Part::ReportVariables;
    return std::nullopt;
}

std::string sheetName(std::int16_t category) {
    std::string name(gem::categoryAt(category).caption);
    for (char& c : name) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
        if (c == ' ') c = '-';
    }
    return name + ".csv";
}

Part partOf(std::int16_t category) {
    const gem::CategoryInfo& info = gem::categoryAt(category);
    for (const PartFacts& facts : parts())
        if (facts.kind == info.kind && facts.custom == info.custom) return facts.part;
    throw std::logic_error("a category without a part");
}

SheetCells::SheetCells(const Model& model, const CrossReference& references, Part part)
    : part_(part),
      table_(model[part]),
      references_(references),
      columns_(sheetColumns(factsOf(part).kind)),
      reader_(part, table_) {}

std::vector<std::string> SheetCells::of(const Row& row) {
    const gem::Record& record = *reader_.read(row);
    const Item item{part_, &table_, &row};
    const bool ofEvent = record.kind() == gem::Kind::CollectionEvent;
    std::vector<std::string> cells;
    for (const SheetColumn& column : columns_) {
        if (column.isType) {
            cells.emplace_back(gem::categoryAt(record.category()).type);
        } else if (column.isLinks) {
            const auto id = item.id();
            const Relation& links =
                ofEvent ? references_.reportsOfEvent() : references_.variablesOfReport();
            cells.push_back(id ? idsOf(links.of(*id), *linksOf(record.kind())) : std::string());
        } else {
            cells.push_back(record[column.field->control].text);
        }
    }
    return cells;
}

void exportSheets(const Model& model, const std::filesystem::path& folder,
                  const Progress& progress) {
    std::filesystem::create_directories(folder);
    const CrossReference references(model);
    for (std::int16_t category = 1; category <= gem::kCategories; ++category) {
        const Part part = partOf(category);
        if (!model[part].present) continue;
        tell(progress, "writing tables", static_cast<std::size_t>(category), gem::kCategories);
        SheetCells cells(model, references, part);
        writeWhole(folder / sheetName(category), [&](const Sink& sink) {
            std::vector<std::string> line;
            for (const SheetColumn& column : sheetColumns(factsOf(part).kind))
                line.emplace_back(column.caption);
            std::string text(kByteOrderMark);
            appendCsv(text, line);
            sink(text);
            for (const Row& row : model[part].rows) {
                if (cells.category(row) != category) continue;
                line = cells.of(row);
                std::ranges::transform(line, line.begin(), guardedCell);
                text.clear();
                appendCsv(text, line);
                sink(text);
            }
        });
    }
}

}  // namespace stelvan::model
