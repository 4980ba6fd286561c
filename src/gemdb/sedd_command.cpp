#include "gemdb/commands.h"
#include "model/publish/publication.h"

namespace stelvan::gemdb {

int seddCommand(const std::filesystem::path& file, const std::string& out,
                model::SeddHeader header) {
    const model::Model content = model::read(file);
    std::vector<std::string> notes;
    publishTo(out, file, [&](const model::Sink& sink) {
        notes = model::publishSedd(content, std::move(header), sink);
    });
    printNotes(notes);
    return kDone;
}

}  // namespace stelvan::gemdb
