#include "model/text/known_items.h"

#include <algorithm>

#include "base/text.h"
#include "gem/ids_and_names.h"
#include "jet/index/collation.h"
#include "model/core/values.h"

namespace stelvan::model {
namespace {

/// Equal for names that the file takes for the same, and for few others.
std::vector<std::uint8_t> keyOfName(std::string_view name) {
    std::vector<std::uint8_t> key;
    jet::appendTextKey(key, base::trimBlanks(name), true);
    return key;
}

const Table* tableOf(const Model& model, std::string_view name) {
    for (const PartFacts& facts : parts())
        if (facts.table == name) return &model[facts.part];
    return nullptr;
}

}  // namespace

KnownItems::KnownItems(const Model& model, gem::Kind kind) {
    const gem::RecordRules& rules = gem::rulesOf(kind);
    for (const gem::SearchedColumn& searched : rules.ids) {
        const Table* table = tableOf(model, searched.table);
        for (const Row& row : table->rows)
            if (const auto id = table->number(row, searched.column)) ++ids_[*id];
    }
    for (const gem::SearchedColumn& searched : rules.names) {
        const Table* table = tableOf(model, searched.table);
        for (const Row& row : table->rows) {
            std::string name = table->text(row, searched.column);
            names_[keyOfName(name)].push_back(std::move(name));
        }
    }
}

bool KnownItems::idExists(gem::Kind, const std::string& id) {
    const auto number = wholeNumber(jet::Value(id));
    const auto found = number ? ids_.find(*number) : ids_.end();
    return found != ids_.end() && found->second > 1;
}

bool KnownItems::nameExists(gem::Kind, const std::string& name) {
    const auto found = names_.find(keyOfName(name));
    if (found == names_.end()) return false;
    const auto same = [&](const std::string& other) { return gem::sameName(other, name); };
    return std::ranges::count_if(found->second, same) > 1;
}

}  // namespace stelvan::model
