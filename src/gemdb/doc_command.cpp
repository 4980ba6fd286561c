#include "gemdb/commands.h"
#include "gemdb/working.h"
#include "model/check/check.h"
#include "model/core/sink.h"

namespace stelvan::gemdb {
int docCommand(const std::filesystem::path& file, const DocRequest& request) {
    const model::Model whole = model::read(file);
    model::requireModel(whole);
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
