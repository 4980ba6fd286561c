#include "model/text/import_text.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "model/core/refusal.h"
#include "model/text/layout.h"

namespace stelvan::model {
namespace {

void requireParts(jet::Database& database, const ModelText& text) {
    requireModel(database);
    std::vector<std::string> faults;
    for (const PartFacts& facts : parts()) {
        const auto table = tableOf(facts.part, database);
        if (!table || text.model[facts.part].present) continue;
        const std::filesystem::path path = text.folder / fileOf(facts.part).name;
        faults.push_back(path.string() + (std::filesystem::exists(path)
                                              ? ": the columns of " + *table + " are missing: [" +
                                                    std::string(kColumnsSection) + "] lists them"
                                              : ": no such file, but there is the table " + *table +
                                                    " to be filled from it"));
    }
    if (!faults.empty()) throw Refusal(std::move(faults));
}

}  // namespace

WritePlan planImport(jet::Database& database, ModelText text) {
    requireParts(database, text);
    Model wanted = std::move(text.model);
    const auto origin = std::make_shared<const ModelText>(std::move(text));
    return planWrite(database, std::move(wanted),
                     [origin](Part part, std::size_t row) { return origin->where(part, row); });
}

}  // namespace stelvan::model
