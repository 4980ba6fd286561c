
#include "base/text.h"
#include "gemdb/commands.h"
#include "gemdb/json_line.h"
#include "gemdb/terminal.h"
#include "gemdb/working.h"
#include "jet/rows/value_text.h"
#include "model/check/check.h"
#include "model/check/fix.h"

namespace stelvan::gemdb {
namespace {

using model::Finding;
using model::Severity;

std::string jsonLine(const Finding& finding) {
    JsonLine line;
    line.open('{').member("severity").text(model::nameOf(finding.severity));
    line.member("rule").text(finding.rule).member("table").text(finding.table);
    line.member("id").value(jet::toView(finding.id)).member("name").text(finding.name);
    line.member("field").text(finding.field).member("text").text(finding.text);
    return line.member("mend").text(finding.mend).close('}').take();
}

std::string jsonLine(const model::Fix& fix, bool done) {
    JsonLine line;
    line.open('{').member(done ? "fixed" : "wouldFix").text(fix.rule);
    line.member("table").text(fix.table).member("id").value(jet::toView(fix.id));
    return line.member("name").text(fix.name).member("text").text(fix.text).close('}').take();
}

std::string coloured(Severity severity) {
    const std::string name(model::nameOf(severity));
    static const bool kColours = wantsColours();
    if (!kColours || severity == Severity::Note) return name;
    return (severity == Severity::Error ? "\033[31m" : "\033[33m") + name + "\033[0m";
}

/// "secs_cusvar 101 LotID var_min".
std::string placeOf(const std::string& table, const jet::Value& id, const std::string& name,
                    const std::string& field) {
    std::string place;
    for (const std::string& part : {table, jet::textOf(id), name, field})
        if (!part.empty()) place += (place.empty() ? "" : " ") + part;
    return place;
}

std::string plainLine(const Finding& finding) {
    const std::string place = placeOf(finding.table, finding.id, finding.name, finding.field);
    std::string text = coloured(finding.severity) + " " + finding.rule + ": " + place;
    if (!place.empty()) text += ": ";
    text.append(base::withoutTrailingBlanks(finding.text)).append(" ").append(finding.mend);
    return base::onOneLine(text) + "\n";
}

std::string plainLine(const model::Fix& fix, bool done) {
    return base::onOneLine((done ? "fixed " : "would fix ") + fix.rule + ": " +
                           placeOf(fix.table, fix.id, fix.name, "") + ": " + fix.text) +
           "\n";
}

void writeFixes(const std::filesystem::path& file, const CheckRequest& request, Output& output) {
    model::FixResult result;
    if (request.dryRun) {
        result.fixes = model::fixesFor(model::read(file));
    } else {
        result = model::fix(file);
    }
    const bool done = !request.dryRun;
    for (const model::Fix& fix : result.fixes)
        output.write(request.json ? jsonLine(fix, done) : plainLine(fix, done));
    if (result.copy.empty()) return;
    if (request.json) {
        JsonLine line;
        line.open('{').member("copy").text(result.copy.string());
        output.write(line.close('}').take());
    } else {
        output.write("the file as it was: " + result.copy.string() + "\n");
    }
}

/// Scripts read the lines of a check of the structure alone: the faults, and nothing else.
void writeStructure(const std::vector<Finding>& findings, Output& output) {
    for (const Finding& finding : findings)
        if (finding.severity == Severity::Error) output.write(finding.text + "\n");
}

}  // namespace

int checkCommand(const std::filesystem::path& file, const CheckRequest& request) {
    Output output;
    if (request.fix) writeFixes(file, request, output);
    const std::vector<Finding> findings = model::checkFile(
        file, {request.structure, request.model, request.strict, Working::progress()});
    if (!request.model && !request.json) {
        writeStructure(findings, output);
    } else {
        for (const Finding& finding : findings)
            output.write(request.json ? jsonLine(finding) : plainLine(finding));
        if (!request.json) output.write(model::summaryOf(findings) + "\n");
    }
    output.finish();
    return model::needsAction(findings) ? kFaultsFound : kDone;
}

}  // namespace stelvan::gemdb
