#include "gemdb/commands.h"
#include "gemdb/terminal.h"
#include "model/compare/change_text.h"
#include "model/compare/merge_text.h"
#include "model/core/rewrite.h"
#include "model/text/model_source.h"

namespace stelvan::gemdb {
namespace {

/// "2 conflicts; nothing was written, ...".
std::string conflictSummary(std::size_t count, std::optional<model::Side> decide) {
    const std::string conflicts = std::to_string(count) + (count == 1 ? " conflict" : " conflicts");
    if (!decide) return conflicts + "; nothing was written; --ours or --theirs decides\n";
    return conflicts + ", decided as " + (*decide == model::Side::Ours ? "ours" : "theirs") + "\n";
}

}  // namespace

int mergeCommand(const MergeFiles& files, const MergeOptions& options) {
    model::Model base = model::readModel(files.base);
    model::Model theirs = model::readModel(files.theirs);
    std::vector<model::Conflict> conflicts;
    std::vector<model::ItemChange> changes;
    bool undecided = false;
    const auto merged = [&](const model::Model& ours) -> std::optional<model::Model> {
        model::Merge merge = model::merge(std::move(base), ours, std::move(theirs), options.decide);
        conflicts = std::move(merge.conflicts);
        undecided = !conflicts.empty() && !options.decide;
        changes = model::differences(ours, merge.merged);
        return undecided ? std::nullopt : std::optional(std::move(merge.merged));
    };
    if (options.dryRun)
        (void)merged(model::readModel(files.ours));
    else
        model::rewrite(files.ours, files.out, merged);

    Output output;
    const model::Sink sink = [&](std::string_view text) { output.write(text); };
    const bool coloured = wantsColours();
    model::writeConflicts(conflicts, coloured, sink);
    if (!conflicts.empty()) sink(conflictSummary(conflicts.size(), options.decide));
    if (!undecided) {
        model::writeChanges(changes, coloured, sink);
        sink(model::summaryOf(changes, options.dryRun) + "\n");
    }
    output.finish();
    return undecided ? kFaultsFound : kDone;
}

}  // namespace stelvan::gemdb
