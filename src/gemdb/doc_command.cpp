#include "gemdb/commands.h"
#include "gemdb/working.h"
#include "model/check/check.h"
#include "model/core/refusal.h"
#include "model/core/sink.h"

namespace stelvan::gemdb {
namespace {

/// A manual of a file that is no model would be an empty book with a cover.
void requireModel(const model::Model& model) {
    for (const model::Table& table : model.tables)
        if (table.present) return;
    throw model::Refusal("none of the tables of a GEM model is there");
}

}  // namespace

int docCommand(const std::filesystem::path& file, const DocRequest& request) {
    const model::Model whole = model::read(file);
    requireModel(whole);
    std::vector<model::Finding> findings;
    if (request.findings) findings = model::check(whole, {Working::progress()});
    model::writeWhole(request.out, [&](const model::Sink& sink) {
        model::writeManual(whole,
                           request.findings
                               ? std::optional(std::span<const model::Finding>(findings))
                               : std::nullopt,
                           request.manual, sink);
    });
    return kDone;
}

}  // namespace stelvan::gemdb
