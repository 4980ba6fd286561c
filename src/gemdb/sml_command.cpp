#include "gemdb/commands.h"
#include "model/publish/sml.h"

namespace stelvan::gemdb {

int smlCommand(const std::filesystem::path& file, const std::string& out) {
    const model::Model content = model::read(file);
    const model::CrossReference references(content);
    model::Notes notes;
    const model::Catalogue catalogue = model::catalogueOf(content, references, notes);
    publishTo(out, file, [&](const model::Sink& sink) {
        model::writeSml(catalogue, references, sink, notes);
    });
    printNotes(notes.lines());
    return kDone;
}

}  // namespace stelvan::gemdb
