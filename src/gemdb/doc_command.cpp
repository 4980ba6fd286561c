#include "gemdb/commands.h"
#include "gemdb/working.h"
#include "model/publish/publication.h"

namespace stelvan::gemdb {

int docCommand(const std::filesystem::path& file, const DocRequest& request) {
    const model::Model whole = model::read(file);
    model::publishInto(request.out, file, [&](const model::Sink& sink) {
        model::publishManual(whole, request.findings, request.manual, sink, Working::progress());
    });
    return kDone;
}

}  // namespace stelvan::gemdb
