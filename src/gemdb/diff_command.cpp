#include "gemdb/change_json.h"
#include "gemdb/commands.h"
#include "gemdb/terminal.h"
#include "model/compare/change_text.h"
#include "model/publish/change_page.h"
#include "model/publish/publication.h"
#include "model/text/model_source.h"

namespace stelvan::gemdb {

namespace {

int statusOf(const std::vector<model::ItemChange>& changes) {
    return changes.empty() ? kDone : kFaultsFound;
}

}  // namespace

int diffCommand(const std::filesystem::path& before, const std::filesystem::path& after,
                const DiffOptions& options) {
    const std::vector<model::ItemChange> changes =
        model::differences(model::readModel(before), model::readModel(after));
    if (!options.html.empty()) {
        const model::ComparedSides sides{before.string(), after.string()};
        model::requireOther(options.html, before);
        model::publishInto(options.html, after, [&](const model::Sink& sink) {
            model::writeChangePage(changes, sides, sink);
        });
        return statusOf(changes);
    }
    Output output;
    const model::Sink sink = [&](std::string_view text) { output.write(text); };
    if (options.json) {
        for (const model::ItemChange& change : changes) sink(changeJson(change));
    } else {
        model::writeChanges(changes, wantsColours(), sink);
        if (!changes.empty()) sink(model::summaryOf(changes) + "\n");
    }
    output.finish();
    return statusOf(changes);
}

}  // namespace stelvan::gemdb
