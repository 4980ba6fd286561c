#include "model/text/read_text.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

#include "base/text.h"
#include "jet/rows/value_text.h"
#include "model/core/refusal.h"
#include "model/core/sink.h"
#include "model/core/values.h"
#include "model/text/layout.h"
#include "model/text/section.h"
#include "model/text/whole.h"

namespace stelvan::model {
namespace {

namespace fs = std::filesystem;

/// Faults of one or more files, in the words of the user's own lines.
class Faults {
public:
    void add(const fs::path& file, std::size_t line, const std::string& what) {
        lines_.push_back(file.string() + ":" + std::to_string(line) + ": " + what);
    }
    void refuseAny() {
        constexpr std::size_t kMost = 20;
        if (lines_.empty()) return;
        const std::size_t count = lines_.size();
        if (count > kMost) {
            lines_.resize(kMost);
            lines_.push_back("and " + std::to_string(count - kMost) + " more faults");
        }
        throw Refusal(std::move(lines_));
    }

private:
    std::vector<std::string> lines_;
};

/// Finds the columns of keys; quick where keys come in the order of the columns.
class Columns {
public:
    explicit Columns(const Table& table) : table_(&table) {}

    [[nodiscard]] std::optional<std::size_t> find(std::string_view key) {
        for (std::size_t at = next_; at < table_->columns.size(); ++at)
            if (table_->columns[at] == key) return found(at);
        const auto at = table_->find(key);
        return at ? found(*at) : std::nullopt;
    }

private:
    std::optional<std::size_t> found(std::size_t at) {
        next_ = at + 1;
        return at;
    }

    const Table* table_;
    std::size_t next_ = 0;
};

/// Reads one file into the model.
class FileReader {
public:
    FileReader(const TextFile& layout, fs::path path, ModelText& result, Faults& faults)
        : layout_(&layout), path_(std::move(path)), result_(&result), faults_(&faults) {}

    void read() {
        const std::string text = readWhole(path_);
        TomlReader reader(text);
        TomlSection section;
        for (bool more = true; more;) {
            try {
                more = reader.next(section);
                if (more) take(section);
            } catch (const TomlFault& fault) {
                add(fault.line(), itemIn(reader.source()) + reasonAt(text, fault));
            }
        }
    }

private:
    void add(std::size_t line, const std::string& what) { faults_->add(path_, line, what); }

    /// A text that two people changed is a common accident, and has no better name in TOML.
    [[nodiscard]] static std::string reasonAt(std::string_view text, const TomlFault& fault) {
        std::size_t begin = 0;
        for (std::size_t line = 1; line < fault.line() && begin < text.size(); ++line)
            begin = std::min(text.find('\n', begin), text.size() - 1) + 1;
        const std::string_view line = text.substr(std::min(begin, text.size()));
        for (const char* mark : {"<<<<<<<", "=======", ">>>>>>>"})
            if (line.starts_with(mark)) return "a conflict of a merge is left here; decide it";
        return fault.what();
    }

    /// "secs_cusevent 101: " as far as the text of a section tells that.
    [[nodiscard]] std::string itemIn(std::string_view source) const {
        for (const Part part : parts()) {
            const std::string header = "[[" + std::string(sectionOf(part)) + "]]";
            if (!source.starts_with(header)) continue;
            const std::string key = "\n" + std::string(factsOf(part).id) + " = ";
            const std::size_t found = source.find(key);
            const std::size_t begin = found + key.size();
            const std::string id =
                found == std::string_view::npos
                    ? std::string()
                    : " " + std::string(source.substr(begin, source.find('\n', begin) - begin));
            return std::string(sectionOf(part)) + id + ": ";
        }
        return {};
    }

    [[nodiscard]] std::vector<Part> parts() const {
        std::vector<Part> all(layout_->items.begin(), layout_->items.end());
        if (layout_->links) all.push_back(*layout_->links);
        return all;
    }

    [[nodiscard]] std::optional<Part> partOf(std::string_view section) const {
        for (const Part part : parts())
            if (base::sameWord(sectionOf(part), section)) return part;
        return std::nullopt;
    }

    void take(TomlSection& section) {
        if (section.name == kColumnsSection && !section.isArray) return takeColumns(section);
        const auto part = partOf(section.name);
        const std::string name(section.name);
        if (!part || !section.isArray)
            return add(section.line, "no table of this file: " +
                                         (section.isArray ? "[[" + name + "]]" : "[" + name + "]"));
        Table& table = result_->model[*part];
        if (!table.present)
            return add(section.line, name + " stands before its columns, or they are missing: [" +
                                         std::string(kColumnsSection) + "] lists them");
        takeItem(*part, table, section);
    }

    void takeColumns(const TomlSection& section) {
        for (const TomlField& field : section.fields) {
            const auto part = partOf(field.key);
            if (!part) {
                add(field.line, "no table of this file: " + std::string(field.key));
            } else if (result_->model[*part].present) {
                add(field.line, "the columns of " + std::string(field.key) + " stand here again");
            } else {
                takeColumns(*part, field);
            }
        }
    }

    void takeColumns(Part part, const TomlField& field) {
        Table& table = result_->model[part];
        table.present = true;
        table.name = sectionOf(part);
        const std::string fault = std::string(field.key) + " wants a list of column names";
        if (!field.isList) return add(field.line, fault);
        for (const TomlEntry& entry : field.list) {
            const auto* name = std::get_if<std::string>(&entry.value);
            if (entry.isTable || name == nullptr) return add(entry.line, fault);
            if (table.find(*name)) return add(entry.line, *name + " is listed twice");
            table.columns.push_back(*name);
        }
    }

    /// "secs_cusevent 101: ".
    [[nodiscard]] static std::string nameOf(Part part, const Table& table, const Row& row) {
        const std::string id = table.text(row, factsOf(part).id);
        return std::string(sectionOf(part)) + (id.empty() ? "" : " ") + id + ": ";
    }

    void takeItem(Part part, Table& table, TomlSection& section) {
        Row row = emptyRow(table);
        const bool holdsLinks = layout_->links && part != *layout_->links;
        const std::string linkKey = holdsLinks ? linkKeyOf(*layout_, table) : std::string();
        TomlField* links = nullptr;
        Columns columns(table);
        std::vector<std::pair<std::size_t, std::string>> wrong;
        for (TomlField& field : section.fields) {
            if (holdsLinks && field.key == linkKey) {
                links = &field;
            } else if (const auto why = put(row, columns, field)) {
                wrong.emplace_back(field.line, *why);
            }
        }
        const std::string item = nameOf(part, table, row);
        for (const auto& [line, why] : wrong) add(line, item + why);
        if (links != nullptr) takeLinks(*links, item, table.number(row, factsOf(part).id));
        addRow(part, section.line, std::move(row));
    }

    [[nodiscard]] static Row emptyRow(const Table& table) {
        return {{}, std::vector<jet::Value>(table.columns.size())};
    }

    /// Moves a value into its column, or says why not.
    static std::optional<std::string> put(Row& row, Columns& columns, TomlField& field) {
        const std::string key(field.key);
        const auto column = columns.find(field.key);
        if (!column)
            return key + " is no column; correct it, or list it under [" +
                   std::string(kColumnsSection) + "]";
        if (field.isList) return key + " takes one value, not a list";
        if (!jet::isNull(row.values[*column])) return key + " stands here twice";
        row.values[*column] = std::move(field.value);
        return std::nullopt;
    }

    void addRow(Part part, std::size_t line, Row&& row) {
        std::vector<std::uint32_t>& lines = result_->lines[indexOf(part)];
        result_->model[part].rows.push_back(std::move(row));
        lines.push_back(static_cast<std::uint32_t>(line));
    }

    void takeLinks(TomlField& links, const std::string& item, std::optional<std::int64_t> owner) {
        const Part part = *layout_->links;
        Table& table = result_->model[part];
        const std::string key(links.key);
        if (!table.present)
            return add(links.line, item + "the columns of " + std::string(sectionOf(part)) +
                                       " are missing: [" + std::string(kColumnsSection) +
                                       "] lists them");
        if (!table.find(factsOf(part).id) || !owner)
            return add(links.line, item + key + " need an owner with a whole number");
        if (!links.isList) return add(links.line, item + key + " wants a list");
        std::int64_t place = 0;
        for (TomlEntry& entry : links.list) takeLink(part, table, entry, item, *owner, ++place);
    }

    void takeLink(Part part, Table& table, TomlEntry& entry, const std::string& item,
                  std::int64_t owner, std::int64_t place) {
        const PartFacts& facts = factsOf(part);
        const auto target = table.find(facts.target);
        const auto order = table.find(facts.order);
        Row row = emptyRow(table);
        Columns columns(table);
        if (!entry.isTable) {
            if (!target || !wholeNumberAsWritten(entry.value))
                return add(entry.line, item + "a link is a whole number or a table");
            row.values[*target] = entry.value;
        }
        row.values[*table.find(facts.id)] = wholeValue(owner);
        for (TomlField& field : entry.fields)
            if (const auto why = put(row, columns, field)) add(field.line, item + *why);
        if (order && jet::isNull(row.values[*order])) row.values[*order] = wholeValue(place);
        addRow(part, entry.line, std::move(row));
    }

    const TextFile* layout_;
    fs::path path_;
    ModelText* result_;
    Faults* faults_;
};

/// Puts rows in their order, and their lines with them.
void sortWithLines(ModelText& text) {
    for (const PartFacts& facts : parts()) {
        std::vector<Row>& rows = text.model[facts.part].rows;
        for (std::size_t at = 0; at < rows.size(); ++at)
            rows[at].id.page = static_cast<jet::PageNumber>(at);
    }
    sortRows(text.model);
    for (const PartFacts& facts : parts()) {
        std::vector<std::uint32_t> lines;
        for (Row& row : text.model[facts.part].rows) {
            lines.push_back(text.lines[indexOf(facts.part)][row.id.page]);
            row.id = {};
        }
        text.lines[indexOf(facts.part)] = std::move(lines);
    }
}

}  // namespace

std::string ModelText::where(Part part, std::size_t row) const {
    return (folder / fileOf(part).name).string() + ":" + std::to_string(lines[indexOf(part)][row]);
}

ModelText readText(const std::filesystem::path& folder, const Progress& progress) {
    if (!fs::is_directory(folder)) throw Refusal(folder.string() + ": no such folder");
    ModelText result;
    result.folder = folder;
    Faults faults;
    std::size_t done = 0;
    for (const TextFile& file : textFiles()) {
        tell(progress, "reading texts", done++, textFiles().size());
        const fs::path path = folder / file.name;
        if (file.onlyWherePresent && !fs::exists(path)) continue;
        FileReader(file, path, result, faults).read();
    }
    faults.refuseAny();
    sortWithLines(result);
    return result;
}

}  // namespace stelvan::model
