#include <memory>
#include <stdexcept>

#include "gemdb/commands.h"
#include "gemdb/terminal.h"
#include "jet/database.h"
#include "model/compare/change_text.h"
#include "model/core/refusal.h"
#include "model/text/import_text.h"

namespace stelvan::gemdb {
namespace {

namespace fs = std::filesystem;

/// Failures that name neither the texts nor the file are about the file.
template <class Body>
auto aboutFile(const fs::path& file, const fs::path& folder, const Body& body) {
    const auto named = [&](const std::string& text) {
        const bool said =
            text.find(file.string()) != std::string::npos || text.starts_with(folder.string());
        return said ? text : file.string() + ": " + text;
    };
    try {
        return body();
    } catch (const model::Refusal& refusal) {
        std::vector<std::string> lines;
        for (const std::string& line : refusal.lines()) lines.push_back(named(line));
        throw model::Refusal(std::move(lines));
    } catch (const jet::Error& error) {
        throw std::runtime_error(named(error.what()));
    }
}

/// What would be done, or was done.
model::WritePlan run(const fs::path& file, model::ModelText text, bool dryRun) {
    jet::Database database =
        jet::Database::open(file, dryRun ? jet::Access::ReadOnly : jet::Access::ReadWrite);
    if (dryRun) {
        const auto unchanged = database.beginRead();
        return model::planImport(database, std::move(text));
    }
    jet::UnitOfWork unit(database);
    model::WritePlan plan = model::planImport(database, std::move(text));
    model::apply(database, plan);
    unit.commit();
    return plan;
}

/// Each change as it is found, and the summary.
void printChanges(const model::WritePlan& plan, bool dryRun, Output& output) {
    const bool coloured = wantsColours();
    std::vector<model::ItemChange> counted;  // without what they say
    if (plan.rows() != model::Written{}) {
        model::differences(plan.before, plan.after, [&](model::ItemChange&& change) {
            model::writeChanges({&change, 1}, coloured,
                                [&](std::string_view text) { output.write(text); });
            model::ItemChange& kind = counted.emplace_back();
            kind.change = change.change;
            kind.part = change.part;
        });
    }
    output.write(model::summaryOf(counted, dryRun) + "\n");
}

}  // namespace

int importCommand(const fs::path& folder, const fs::path& file, bool dryRun) {
    model::ModelText text = model::readText(folder);
    model::WritePlan plan =
        aboutFile(file, folder, [&] { return run(file, std::move(text), dryRun); });
    model::sortRows(plan.after);
    Output output;
    printChanges(plan, dryRun, output);
    output.finish();
    return kDone;
}

}  // namespace stelvan::gemdb
