#include "gemdb/change_json.h"
#include "gemdb/commands.h"
#include "gemdb/model_source.h"
#include "gemdb/terminal.h"
#include "model/compare/change_text.h"
#include "model/core/sink.h"
#include "model/publish/change_page.h"

namespace stelvan::gemdb {

namespace {

int statusOf(const std::vector<model::ItemChange>& changes) {
    return changes.empty() ? kDone : kFaultsFound;
}

}  // namespace

int diffCommand(const std::filesystem::path& before, const std::filesystem::path& after,
                const DiffOptions& options) {
    const std::vector<model::ItemChange> changes =
        model::differences(readModel(before), readModel(after));
    if (!options.html.empty()) {
        const model::ComparedSides sides{before.string(), after.string()};
        model::writeWhole(options.html, [&](const model::Sink& sink) {
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
