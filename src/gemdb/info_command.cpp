#include <optional>

#include "base/date.h"
#include "base/text.h"
#include "gemdb/commands.h"
#include "gemdb/json_line.h"
#include "jet/disk/page.h"
#include "model/core/file_facts.h"
#include "model/core/summary.h"

namespace stelvan::gemdb {
namespace {

constexpr const char* kFormat = "Jet 4.0 (Access 2000 to 2003)";

std::string_view textOf(jet::Use use) {
    switch (use) {
        case jet::Use::Reading:
            return "reading";
        case jet::Use::Writing:
            return "writing";
        case jet::Use::None:
            break;
    }
    return "no";
}

std::string usersText(const model::FileFacts& facts) {
    std::string text;
    for (const jet::User& user : facts.users)
        text += (text.empty() ? "" : ", ") + user.name + " at " + user.machine;
    if (facts.use != jet::Use::None)
        text += (text.empty() ? "" : "; ") + ("a program is " + std::string(textOf(facts.use)));
    return text.empty() ? "nobody" : text;
}

std::string makerText(const model::Making& making) {
    return making.accessVersion.empty()
               ? "not told by the file"
               : model::programOf(making.accessVersion) + " (" + making.accessVersion + ")";
}

void writeLine(Output& output, std::string_view label, std::string_view text) {
    constexpr std::size_t kWidth = 28;
    std::string line(label);
    line.resize(std::max(kWidth, line.size() + 1), ' ');
    output.write(line.append(base::onOneLine(text)).append("\n"));
}

void writePlain(Output& output, const std::string& file, const model::FileFacts& facts,
                const std::optional<model::Summary>& summary) {
    writeLine(output, "File", file);
    writeLine(output, "Format", kFormat);
    if (facts.making) {
        writeLine(output, "Last opened by", makerText(*facts.making));
        writeLine(output, "Engine build", std::to_string(facts.making->engineBuild));
        if (facts.making->created)
            writeLine(output, "Created", base::dateText(facts.making->created->days));
    }
    writeLine(output, "Size",
              std::to_string(facts.bytes) + " bytes, " +
                  std::to_string(facts.bytes / jet::kPageSize) + " pages");
    writeLine(output, "In use by", usersText(facts));
    writeLine(output, "Journal",
              facts.journalWaits ? "waits: a program ended in the middle of a change; whoever "
                                   "opens the file next puts it right, and then its content "
                                   "can be told"
                                 : "none");
    if (!summary) return;
    for (const model::Summary::Count& count : summary->counts)
        writeLine(output, count.what, std::to_string(count.rows));
    for (const auto& [name, value] : summary->settings) writeLine(output, name, value);
}

std::string jsonLine(const std::string& file, const model::FileFacts& facts,
                     const std::optional<model::Summary>& summary) {
    JsonLine line;
    line.open('{').member("file").text(file).member("format").text("Jet 4.0");
    if (facts.making) {
        line.member("accessVersion").text(facts.making->accessVersion);
        line.member("engineBuild").number(facts.making->engineBuild);
        if (facts.making->created) line.member("created").value(*facts.making->created);
    }
    line.member("bytes").number(static_cast<long long>(facts.bytes));
    line.member("users").open('[');
    for (const jet::User& user : facts.users)
        line.open('{')
            .member("machine")
            .text(user.machine)
            .member("name")
            .text(user.name)
            .close('}');
    line.close(']').member("inUse").text(textOf(facts.use));
    line.member("journalWaits").flag(facts.journalWaits);
    if (summary) {
        line.member("rows").open('{');
        for (const model::Summary::Count& count : summary->counts)
            line.member(count.what).number(static_cast<long long>(count.rows));
        line.close('}').member("settings").open('{');
        for (const auto& [name, value] : summary->settings) line.member(name).text(value);
        line.close('}');
    }
    return line.close('}').take();
}

}  // namespace

int infoCommand(const std::filesystem::path& file, bool json) {
    const model::FileFacts facts = model::factsOf(file);
    std::optional<model::Summary> summary;
    if (facts.making) summary = model::summaryOf(model::read(file));
    Output output;
    if (json) {
        output.write(jsonLine(file.string(), facts, summary));
    } else {
        writePlain(output, file.string(), facts, summary);
    }
    output.finish();
    return kDone;
}

}  // namespace stelvan::gemdb
