#include "model/check/check.h"

#include <algorithm>
#include <functional>
#include <iterator>

#include "base/text.h"
#include "gem/kinds.h"
#include "jet/check/check.h"
#include "model/check/links.h"
#include "model/check/survey.h"

namespace stelvan::model {
namespace {

/// The columns that the editor cannot do without.
void checkColumns(Survey& survey, const PartFacts& facts) {
    const Table& table = survey.model[facts.part];
    const auto require = [&](std::string_view column) {
        if (column.empty() || table.find(column)) return;
        survey.addAbsent(facts.part, {}, "",
                         {Severity::Error, "structure", column, "The table has no such column.",
                          "Add the column, as the shipped template has it."});
    };
    if (isLinks(facts.part))
        for (const std::string_view column : {facts.id, facts.target, facts.order}) require(column);
    for (const gem::FieldFacts& field : gem::fieldsOf(facts.kind)) require(field.column);
}

std::vector<Finding> asFindings(const std::vector<jet::Finding>& structure) {
    std::vector<Finding> findings;
    for (const jet::Finding& found : structure) {
        Finding& finding = findings.emplace_back();
        finding.severity = found.isNote ? Severity::Note : Severity::Error;
        finding.rule = "structure";
        finding.text = "page " + std::to_string(found.page) + ": " + found.text;
        finding.mend = found.isNote ? "Nothing; it does no harm."
                                    : "Restore the file from a sound copy, or repair it with "
                                      "Access.";
    }
    return findings;
}

std::vector<Finding> checkBoth(const FileCheckOptions& options,
                               const std::function<std::vector<Finding>()>& structure,
                               const std::function<Model()>& readModel) {
    std::vector<Finding> findings;
    if (options.structure) {
        tell(options.progress, "checking the structure", 0, 1);
        findings = structure();
    }
    if (!options.model) return findings;
    try {
        tell(options.progress, "reading", 0, 1);
        std::vector<Finding> more = check(readModel(), {.progress = options.progress});
        std::ranges::move(more, std::back_inserter(findings));
    } catch (const jet::Error& error) {
        if (error.kind() != jet::ErrorKind::Corrupt || !needsAction(findings)) throw;
    }
    return findings;
}

}  // namespace

void checkTables(Survey& survey) {
    for (const PartFacts& facts : parts()) {
        if (facts.part == Part::Limits) continue;  // no statement needs them
        if (survey.model[facts.part].present) {
            checkColumns(survey, facts);
        } else {
            survey.addAbsent(facts.part, {}, "",
                             {Severity::Error, "structure", "", "The table is not there.",
                              "Add the table, as the shipped template has it."});
        }
    }
}

std::vector<Finding> check(const Model& model, const CheckOptions& options) {
    Survey survey(model, options.progress);
    for (const auto& rules :
         {checkTables, checkFields, checkIdentities, checkSettings, checkStandard})
        rules(survey);
    if (canFollow(model))
        for (const auto& rules : {checkLinks, checkReports, checkLists, checkAlarms}) rules(survey);
    return survey.take();
}

std::vector<Finding> checkStructure(const std::filesystem::path& file, bool strict) {
    return asFindings(jet::check(file, {.strict = strict}));
}

std::vector<Finding> checkFile(const std::filesystem::path& file, const FileCheckOptions& options) {
    return checkBoth(
        options, [&] { return checkStructure(file, options.strict); }, [&] { return read(file); });
}

std::vector<Finding> checkFile(jet::Database& database, const FileCheckOptions& options) {
    return checkBoth(
        options,
        [&] { return asFindings(jet::check(database.pages(), {.strict = options.strict})); },
        [&] { return read(database); });
}

std::size_t count(const std::vector<Finding>& findings, Severity severity) {
    return static_cast<std::size_t>(std::ranges::count(findings, severity, &Finding::severity));
}

bool needsAction(const std::vector<Finding>& findings) {
    return std::ranges::any_of(
        findings, [](const Finding& finding) { return finding.severity >= Severity::Warning; });
}

std::string summaryOf(const std::vector<Finding>& findings) {
    return base::counted(count(findings, Severity::Error), "error") + ", " +
           base::counted(count(findings, Severity::Warning), "warning") + ", " +
           base::counted(count(findings, Severity::Note), "note");
}

}  // namespace stelvan::model
