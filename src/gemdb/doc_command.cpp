#include "gemdb/commands.h"
#include "model/core/sink.h"

namespace stelvan::gemdb {

int docCommand(const std::filesystem::path& file, const std::filesystem::path& out,
               const model::ManualOptions& options) {
    const model::Model whole = model::read(file);
    model::writeWhole(out, [&](const model::Sink& sink) {
        model::writeManual(whole, std::nullopt, options, sink);
    });
    return kDone;
}

}  // namespace stelvan::gemdb
