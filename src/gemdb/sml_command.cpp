#include "gemdb/commands.h"
#include "model/publish/publication.h"

namespace stelvan::gemdb {

int smlCommand(const std::filesystem::path& file, const std::string& out) {
    const model::Model content = model::read(file);
    std::vector<std::string> notes;
    publishTo(out, file,
              [&](const model::Sink& sink) { notes = model::publishSml(content, sink); });
    printNotes(notes);
    return kDone;
}

}  // namespace stelvan::gemdb
