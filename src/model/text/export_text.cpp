#include "model/text/export_text.h"

#include <algorithm>

#include "jet/rows/value_text.h"
#include "model/core/cross_reference.h"
#include "model/core/refusal.h"
#include "model/core/values.h"
#include "model/text/layout.h"
#include "model/text/toml_text.h"
#include "model/text/whole.h"

namespace stelvan::model {
namespace {

/// Which link rows stand in which items.
class LinkLists {
public:
    LinkLists(const Model& model, const CrossReference& references, Part part)
        : table_(&model[part]),
          facts_(&factsOf(part)),
          owners_(part == Part::EventReports ? &references.events() : &references.reports()),
          links_(part == Part::EventReports ? &references.reportsOfEvent()
                                            : &references.variablesOfReport()),
          order_(table_->find(facts_->order)) {}

    [[nodiscard]] const Table& table() const { return *table_; }

    /// The links of an item in their order; none where another of its number comes first.
    [[nodiscard]] std::vector<const Row*> of(const Row& item,
                                             std::optional<std::int64_t> id) const {
        std::vector<const Row*> rows;
        if (!id || links_->of(*id).empty()) return rows;
        if (owners_->of(*id).front().item.row != &item) return rows;
        for (const Relation::Entry& link : links_->of(*id))
            if (standsInOwner(*link.item.row)) rows.push_back(link.item.row);
        return rows;
    }

    /// Whether its owner and its place are all that a list can tell of them.
    [[nodiscard]] bool standsInOwner(const Row& link) const {
        const jet::Value& owner = table_->value(link, facts_->id);
        const auto id = wholeNumberAsWritten(owner);
        return id && !owners_->of(*id).empty() && !(order_ && jet::isNull(link.values[*order_]));
    }

private:
    const Table* table_;
    const PartFacts* facts_;
    const Relation* owners_;
    const Relation* links_;
    std::optional<std::size_t> order_;
};

class TextWriter {
public:
    TextWriter(const Model& model, const CrossReference& references, const Sink& sink)
        : model_(&model), references_(&references), sink_(&sink) {}

    void openColumns() { out_ += "[" + std::string(kColumnsSection) + "]\n"; }

    void columnsOf(const TextFile& file) {
        for (const Part part : file.items) columnsOf(part);
        if (file.links) columnsOf(*file.links);
    }

    void itemsOf(const TextFile& file) {
        std::optional<LinkLists> links;
        if (file.links) links.emplace(*model_, *references_, *file.links);
        for (const Part part : file.items) itemsOf(file, part, links);
        if (links) loneLinks(*file.links, *links);
        flush();
    }

private:
    void columnsOf(Part part) {
        const Table& table = (*model_)[part];
        if (!table.present) return;
        appendTomlKey(out_, sectionOf(part));
        out_ += " = [";
        for (const std::string& column : table.columns) {
            if (&column != &table.columns.front()) out_ += ", ";
            appendTomlString(out_, column);
        }
        out_ += "]\n";
    }

    void itemsOf(const TextFile& file, Part part, const std::optional<LinkLists>& links) {
        const Table& table = (*model_)[part];
        useColumns(table);
        const auto id = table.find(factsOf(part).id);
        const std::string linkKey = links ? linkKeyOf(file, table) : std::string();
        for (const Row& row : table.rows) {
            appendRow(part, row);
            if (!links || !id) continue;
            const auto list = links->of(row, wholeNumber(row.values[*id]));
            if (!list.empty()) appendLinks(linkKey, *file.links, list);
        }
    }

    void loneLinks(Part part, const LinkLists& links) {
        useColumns(links.table());
        for (const Row& row : links.table().rows)
            if (!links.standsInOwner(row)) appendRow(part, row);
    }

    /// Keys are spelt once, not for every row.
    void useColumns(const Table& table) {
        keys_.clear();
        for (const std::string& column : table.columns) keys_.push_back(spelt(column));
    }
    [[nodiscard]] static std::string spelt(std::string_view name) {
        std::string key;
        appendTomlKey(key, name);
        return key + " = ";
    }

    void appendRow(Part part, const Row& row) {
        out_ += "\n[[";
        out_ += sectionOf(part);
        out_ += "]]\n";
        for (std::size_t column = 0; column < keys_.size(); ++column) {
            if (jet::isNull(row.values[column])) continue;
            out_ += keys_[column];
            appendTomlValue(out_, row.values[column]);
            out_ += '\n';
        }
        constexpr std::size_t kEnough = 1 << 16;
        if (out_.size() >= kEnough) flush();
    }

    void appendLinks(const std::string& key, Part part, const std::vector<const Row*>& links) {
        const Table& table = (*model_)[part];
        const auto order = table.find(factsOf(part).order);
        bool inOrder = true;
        for (std::size_t at = 0; at < links.size() && order; ++at) {
            const auto place = wholeNumberAsWritten(links[at]->values[*order]);
            inOrder &= place == static_cast<std::int64_t>(at + 1);
        }
        out_ += key + " = [\n";
        for (const Row* link : links) appendLink(table, factsOf(part), *link, !order || inOrder);
        out_ += "]\n";
    }

    /// A number where target and place say all.
    void appendLink(const Table& table, const PartFacts& facts, const Row& link, bool inOrder) {
        std::string fields;
        bool targetAlone = inOrder;
        for (std::size_t column = 0; column < table.columns.size(); ++column) {
            const jet::Value& value = link.values[column];
            const std::string& name = table.columns[column];
            const bool told =
                column == table.find(facts.id) || (inOrder && column == table.find(facts.order));
            if (told || jet::isNull(value)) continue;
            fields += (fields.empty() ? " " : ", ") + spelt(name);
            appendTomlValue(fields, value);
            targetAlone &=
                column == table.find(facts.target) && wholeNumberAsWritten(value).has_value();
        }
        if (targetAlone && !fields.empty()) {
            out_ += "  " + jet::textOf(table.value(link, facts.target)) + ",\n";
        } else {
            out_ += "  {" + fields + (fields.empty() ? "},\n" : " },\n");
        }
    }

    void flush() {
        (*sink_)(out_);
        out_.clear();
    }

    const Model* model_;
    const CrossReference* references_;
    const Sink* sink_;
    std::vector<std::string> keys_;
    std::string out_;
};

bool isLeftOut(const TextFile& file, const Model& model) {
    return file.onlyWherePresent && !model[file.items.front()].present;
}

}  // namespace

void exportText(const Model& model, const std::filesystem::path& folder, const Progress& progress) {
    requireModel(model);
    std::filesystem::create_directories(folder);
    const CrossReference references(model);
    std::size_t done = 0;
    for (const TextFile& file : textFiles()) {
        tell(progress, "writing texts", done++, textFiles().size());
        if (isLeftOut(file, model)) {
            std::filesystem::remove(folder / file.name);
            continue;
        }
        writeWhole(folder / file.name, [&](const Sink& sink) {
            TextWriter writer(model, references, sink);
            writer.openColumns();
            writer.columnsOf(file);
            writer.itemsOf(file);
        });
    }
}

void streamText(const Model& model, const Sink& sink) {
    requireModel(model);
    const CrossReference references(model);
    TextWriter writer(model, references, sink);
    writer.openColumns();
    for (const TextFile& file : textFiles()) writer.columnsOf(file);
    for (const TextFile& file : textFiles()) writer.itemsOf(file);
}

}  // namespace stelvan::model
