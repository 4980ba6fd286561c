#include <functional>
#include <stdexcept>

#include "gemdb/commands.h"
#include "gemdb/terminal.h"
#include "jet/database.h"
#include "model/compare/change_text.h"
#include "model/compare/plan_differences.h"
#include "model/core/refusal.h"
#include "model/text/import_sheet.h"
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

using Planning = std::function<model::WritePlan(jet::Database&)>;

/// What would be done, or was done.
model::WritePlan run(const fs::path& file, const Planning& planned, bool dryRun) {
    jet::Database database =
        jet::Database::open(file, dryRun ? jet::Access::ReadOnly : jet::Access::ReadWrite);
    if (dryRun) {
        const auto unchanged = database.beginRead();
        return planned(database);
    }
    jet::UnitOfWork unit(database);
    model::WritePlan plan = planned(database);
    model::apply(database, plan);
    unit.commit();
    return plan;
}

/// Each change as it is found, and the summary.
void printChanges(model::WritePlan plan, bool dryRun, Output& output) {
    const bool coloured = wantsColours();
    std::vector<model::ItemChange> counted;  // without what they say
    if (plan.rows() != model::Written{}) {
        model::differences(std::move(plan), [&](model::ItemChange&& change) {
            model::writeChanges({&change, 1}, coloured,
                                [&](std::string_view text) { output.write(text); });
            model::ItemChange& kind = counted.emplace_back();
            kind.change = change.change;
            kind.part = change.part;
        });
    }
    output.write(model::summaryOf(counted, dryRun) + "\n");
}

int printed(model::WritePlan plan, bool dryRun) {
    Output output;
    printChanges(std::move(plan), dryRun, output);
    output.finish();
    return kDone;
}

}  // namespace

int importCommand(const fs::path& folder, const fs::path& file, bool dryRun) {
    model::ModelText text = model::readText(folder);
    return printed(aboutFile(file, folder,
                             [&] {
                                 const auto planned = [&](jet::Database& database) {
                                     return model::planImport(database, std::move(text));
                                 };
                                 return run(file, planned, dryRun);
                             }),
                   dryRun);
}

int importSheetCommand(const fs::path& sheet, const fs::path& file, bool dryRun) {
    const auto planned = [&](jet::Database& database) { return model::planSheet(database, sheet); };
    return printed(aboutFile(file, sheet, [&] { return run(file, planned, dryRun); }), dryRun);
}

}  // namespace stelvan::gemdb
