#include "model/text/library_way.h"

#include <toml++/toml.h>

#include <algorithm>
#include <cstdio>
#include <optional>

#include "base/date.h"
#include "base/text.h"
#include "model/text/layout.h"
#include "model/text/toml_text.h"
#include "model/text/whole.h"

namespace stelvan::model {
namespace {

class LibraryWay {
public:
    LibraryWay(std::size_t line, TomlSection& section) : before_(line - 1), section_(&section) {}

    void read(const toml::table& root) {
        if (root.size() != 1)
            throw TomlFault(before_ + 1, "the section holds tables of another name");
        const auto only = root.begin();  // keeps what the next lines look at
        section_->name = kept(only->first.str());
        const toml::node& node = only->second;
        const toml::array* entries = node.as_array();
        section_->isArray = entries != nullptr;
        const toml::table* table =
            section_->isArray ? entries->front().as_table() : node.as_table();
        readFields(*table, section_->fields);
    }

private:
    [[nodiscard]] std::size_t lineOf(const toml::node& node) const {
        return before_ + node.source().begin.line;
    }

    std::string_view kept(std::string_view key) { return section_->spelt.emplace_back(key); }

    void readFields(const toml::table& table, std::vector<TomlField>& fields) {
        for (const auto& [key, node] : table) {
            TomlField& field = fields.emplace_back();
            field.key = kept(key.str());
            field.line = before_ + key.source().begin.line;
            const toml::array* list = node.as_array();
            field.isList = list != nullptr;
            if (list != nullptr) {
                readList(*list, field.list);
            } else {
                field.value = valueOf(node);
            }
        }
    }

    void readList(const toml::array& list, std::vector<TomlEntry>& entries) {
        for (const toml::node& node : list) {
            TomlEntry& entry = entries.emplace_back();
            entry.line = lineOf(node);
            const toml::table* table = node.as_table();
            entry.isTable = table != nullptr;
            if (table == nullptr) {
                entry.value = valueOf(node);
                continue;
            }
            readFields(*table, entry.fields);
            for (const TomlField& field : entry.fields)
                if (field.isList) throw TomlFault(field.line, "a list within a list");
        }
    }

    [[nodiscard]] jet::Value valueOf(const toml::node& node) const {
        if (const auto* flag = node.as_boolean()) return flag->get();
        if (const auto* number = node.as_integer()) return wholeValue(number->get());
        if (const auto* number = node.as_floating_point()) return number->get();
        if (const auto* text = node.as_string()) return text->get();
        if (const auto* date = node.as_date()) return momentOf(node, date->get(), {});
        if (const auto* moment = node.as_date_time()) {
            if (moment->get().offset)
                throw TomlFault(lineOf(node), "a date has no time zone in a model");
            return momentOf(node, moment->get().date, moment->get().time);
        }
        if (const auto* table = node.as_table()) return escapedText(*table);
        throw TomlFault(lineOf(node), node.is_time() ? "a time of day needs its date"
                                                     : "a list stands where a value should");
    }

    [[nodiscard]] jet::Value momentOf(const toml::node& node, const toml::date& date,
                                      const toml::time& time) const {
        char text[64];
        std::snprintf(text, sizeof(text), "%04u-%02u-%02uT%02u:%02u:%02u", date.year, date.month,
                      date.day, time.hour, time.minute, time.second);
        const std::optional<double> days = base::parseDate(text);
        if (!days) throw TomlFault(lineOf(node), "a date outside the years 100 to 9999");
        if (time.nanosecond != 0)
            throw TomlFault(lineOf(node), "a time of day with fractions of a second");
        return jet::DateTime{*days};
    }

    [[nodiscard]] jet::Value escapedText(const toml::table& table) const {
        const toml::node* escaped = table.size() == 1 ? table.get(kEscapedKey) : nullptr;
        std::string text;
        if (escaped == nullptr || !escaped->is_string())
            throw TomlFault(lineOf(table), "a table stands where a value should");
        if (!unescape(escaped->as_string()->get(), text))
            throw TomlFault(lineOf(table),
                            "a backslash in an escaped text that is none of \\\\ "
                            "and \\uXXXX");
        return text;
    }

    std::size_t before_;  // lines before the section
    TomlSection* section_;
};

/// The library's words, without those that say where.
std::string reasonOf(const toml::parse_error& error) {
    return base::onOneLine(error.description());
}

bool hasHeader(std::string_view source) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (source.starts_with(kByteOrderMark)) source.remove_prefix(kByteOrderMark.size());
    const std::size_t first = source.find_first_not_of(" \t");
    return first != std::string_view::npos && source[first] == '[';
}

}  // namespace

bool readByLibrary(std::string_view source, std::size_t line, TomlSection& section) {
    section.line = line;
    toml::table root;
    try {
        root = toml::parse(source);
    } catch (const toml::parse_error& error) {
        throw TomlFault(line - 1 + error.source().begin.line, reasonOf(error));
    }
    if (!hasHeader(source)) {
        if (root.empty()) return false;
        throw TomlFault(line - 1 + root.begin()->second.source().begin.line,
                        "a key before the first section");
    }
    LibraryWay(line, section).read(root);
    return true;
}

}  // namespace stelvan::model
