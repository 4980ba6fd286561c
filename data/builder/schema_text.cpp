#include "data/builder/schema_text.h"

#include <array>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>

#include "base/date.h"
#include "base/number.h"

namespace stelvan::data {
namespace {

struct TypeName {
    std::string_view name;
    jet::ColumnType type;
    std::uint16_t length;  // bytes; 0 where the text gives the size
};

constexpr std::array kTypes = {
    TypeName{"Boolean", jet::ColumnType::Boolean, 1},
    TypeName{"Byte", jet::ColumnType::Byte, 1},
    TypeName{"Integer", jet::ColumnType::Integer, 2},
    TypeName{"Long", jet::ColumnType::Long, 4},
    TypeName{"Single", jet::ColumnType::Single, 4},
    TypeName{"Double", jet::ColumnType::Double, 8},
    TypeName{"Currency", jet::ColumnType::Money, 8},
    TypeName{"Decimal", jet::ColumnType::Numeric, 17},
    TypeName{"DateTime", jet::ColumnType::DateTime, 8},
    TypeName{"Text", jet::ColumnType::Text, 0},
    TypeName{"Memo", jet::ColumnType::Memo, 0},
    TypeName{"Ole", jet::ColumnType::Ole, 0},
};

using Words = std::vector<std::string>;

Words wordsOf(const std::string& line) {
    std::istringstream stream(line.substr(0, line.find('#')));
    Words words;
    for (std::string word; stream >> word;) words.push_back(word);
    return words;
}

/// The words behind the type that give a size; the place of the next word.
std::size_t readSize(const Words& words, jet::ColumnInfo& column) {
    std::size_t next = 3;
    if (column.type == jet::ColumnType::Text) {
        column.length = static_cast<std::uint16_t>(2 * base::toInt32(words.at(next++)));
    } else if (column.type == jet::ColumnType::Numeric) {
        column.precision = static_cast<std::uint8_t>(base::toInt32(words.at(next++)));
        column.scale = static_cast<std::uint8_t>(base::toInt32(words.at(next++)));
    }
    return next;
}

void readTraits(const Words& words, std::size_t next, jet::ColumnInfo& column) {
    for (; next < words.size(); ++next) {
        if (words[next] == "default") {
            column.defaultValue = words.at(++next);
        } else if (words[next] == "uncompressed") {
            column.compressed = false;
        } else if (words[next] == "auto") {
            column.autoNumber = true;
        } else if (words[next] == "nonempty") {
            column.allowZeroLength = false;
        } else {
            throw std::runtime_error("no such trait of a column: " + words[next]);
        }
    }
}

jet::ColumnInfo parseColumn(const Words& words) {
    if (words.size() < 3) throw std::runtime_error("a column has a name and a type");
    jet::ColumnInfo column;
    column.name = words[1];
    const TypeName* known = nullptr;
    for (const TypeName& type : kTypes) {
        if (type.name == words[2]) known = &type;
    }
    if (known == nullptr) throw std::runtime_error("no such type: " + words[2]);
    column.type = known->type;
    column.length = known->length;
    column.compressed =
        column.type == jet::ColumnType::Text || column.type == jet::ColumnType::Memo;
    column.fixedLength = !column.compressed && column.type != jet::ColumnType::Ole;
    readTraits(words, readSize(words, column), column);
    return column;
}

jet::IndexInfo parseIndex(const Words& words, const jet::TableSpec& table) {
    if (words.size() < 3) throw std::runtime_error("an index has a name and columns");
    jet::IndexInfo index;
    index.name = words[1];
    index.primary = index.required = words[0] == "primary";
    index.unique = words[0] != "index";
    for (std::size_t word = 2; word < words.size(); ++word) {
        const bool ascending = !words[word].starts_with('-');
        const std::string name = words[word].substr(ascending ? 0 : 1);
        std::size_t column = 0;
        while (column < table.columns.size() && table.columns[column].name != name) ++column;
        if (column == table.columns.size()) throw std::runtime_error("no such column: " + name);
        index.columns.push_back({column, ascending});
    }
    return index;
}

jet::RelationshipInfo parseRelationship(const Words& words) {
    if (words.size() < 6) {
        throw std::runtime_error("a relationship has a name, and a table and column on both sides");
    }
    jet::RelationshipInfo relationship{words[1], words[2], {words[3]}, words[4], {words[5]}};
    relationship.enforced = true;
    for (std::size_t word = 6; word < words.size(); ++word) {
        bool& cascade =
            words[word] == "updates" ? relationship.cascadeUpdates : relationship.cascadeDeletes;
        if (words[word] != "updates" && words[word] != "deletes") {
            throw std::runtime_error("nothing else cascades: " + words[word]);
        }
        cascade = true;
    }
    return relationship;
}

/// Reads line after line; the tables of the block being read stand last.
class Reader {
public:
    void take(const Words& words) {
        if (words[0] == "created") {
            schema_.created = dateOf(words.at(1));
        } else if (words[0] == "table") {
            beginBlock(words);
        } else if (words[0] == "relationship") {
            schema_.relationships.push_back(parseRelationship(words));
        } else if (block_ == 0) {
            throw std::runtime_error("a table must begin first");
        } else if (words[0] == "column") {
            forBlock([&](jet::TableSpec& table) { table.columns.push_back(parseColumn(words)); });
        } else if (words[0] == "primary" || words[0] == "unique" || words[0] == "index") {
            forBlock(
                [&](jet::TableSpec& table) { table.indexes.push_back(parseIndex(words, table)); });
        } else {
            throw std::runtime_error("no such word: " + words[0]);
        }
    }

    Schema result() { return std::move(schema_); }

private:
    void beginBlock(const Words& words) {
        block_ = words.size() - 1;
        for (std::size_t word = 1; word < words.size(); ++word)
            schema_.tables.push_back({words[word], {}, {}});
    }

    template <typename Change>
    void forBlock(const Change& change) {
        for (std::size_t i = schema_.tables.size() - block_; i < schema_.tables.size(); ++i) {
            change(schema_.tables[i]);
        }
    }

    Schema schema_;
    std::size_t block_ = 0;
};

}  // namespace

jet::DateTime dateOf(const std::string& text) {
    const std::optional<double> serial = base::parseDate(text);
    if (!serial) throw std::runtime_error("a date is written YYYY-MM-DDThh:mm:ss");
    return {*serial};
}

Schema parseSchema(std::string_view text) {
    Reader reader;
    std::istringstream lines{std::string(text)};
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        const Words words = wordsOf(line);
        if (words.empty()) continue;
        try {
            reader.take(words);
        } catch (const std::exception& fault) {
            throw std::runtime_error("schema, line " + std::to_string(number) + ": " +
                                     fault.what());
        }
    }
    return reader.result();
}

}  // namespace stelvan::data
