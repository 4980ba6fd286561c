#include <memory>

#include "gemdb/commands.h"
#include "gemdb/verbs.h"

namespace stelvan::gemdb {
namespace {

constexpr VerbText kSedd = {
    "sedd", "Write the model as SEMI E172 equipment data dictionary (edition 0225)",
    "  gemdb sedd gem.mdb -o etcher7.xml --supplier \"Example Tools\" --equipment-id ETCH07\n"
    "  gemdb sedd gem.mdb --date 2026-01-31 --mdln ETCHER-3 --softrev 2.4.1"};
constexpr VerbText kSml = {
    "sml", "Write the messages that define, enable and send the model's reports, as SML",
    "  gemdb sml gem.mdb -o etcher7.sml\n"
    "  gemdb sml gem.mdb | less"};

void addOutput(CLI::App* verb, std::string& out) {
    verb->add_option("-o,--output", out, "The file to write; standard output without it, or for -");
}

void addSedd(CLI::App& app, int& status) {
    struct Arguments {
        std::string file;
        std::string out;
        model::SeddHeader header;
    };
    const auto arguments = std::make_shared<Arguments>();
    model::SeddHeader& header = arguments->header;
    CLI::App* sedd = addVerb(app, kSedd, arguments->file);
    addOutput(sedd, arguments->out);
    sedd->add_option("--mdln", header.mdln,
                     "Equipment model, at most 20 characters; else the variable MDLN");
    sedd->add_option("--softrev", header.softrev,
                     "Software revision, at most 20 characters; else the variable SOFTREV");
    sedd->add_option("--equipment-id", header.equipmentId, "Identifier of this one equipment");
    sedd->add_option("--supplier", header.supplier, "Who makes it, at most 80 characters");
    sedd->add_option("--date", header.date, "Date of the dictionary, YYYY-MM-DD; else today");
    sedd->add_option("--description", header.description,
                     "What the equipment is, at most 4096 characters");
    sedd->add_option("--alcd", header.alarmCode, "Alarm code of every alarm, -128 to 127; else 0")
        ->check(CLI::Range(-128, 127));
    act(sedd, status,
        [=] { return seddCommand(arguments->file, arguments->out, arguments->header); });
}

void addSml(CLI::App& app, int& status) {
    struct Arguments {
        std::string file;
        std::string out;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* sml = addVerb(app, kSml, arguments->file);
    addOutput(sml, arguments->out);
    act(sml, status, [=] { return smlCommand(arguments->file, arguments->out); });
}

struct DocArguments {
    std::string file;
    DocRequest request;
};

constexpr VerbText kDoc = {
    "doc", "Write the equipment's GEM interface manual as one HTML page",
    "  gemdb doc gem.mdb -o manual.html\n"
    "  gemdb doc gem.mdb -o manual.html --maker \"Wet Works\" --model \"Bench 7\" --version 2.4"};

void addDoc(CLI::App& app, int& status) {
    const auto arguments = std::make_shared<DocArguments>();
    DocRequest& request = arguments->request;
    model::ManualOptions& manual = request.manual;
    CLI::App* doc = addVerb(app, kDoc, arguments->file);
    doc->add_option("-o,--output", request.out, "The page to write")->required();
    doc->add_option("--title", manual.title, "Title; else made of the equipment's name");
    doc->add_option("--maker", manual.maker, "Who makes the equipment");
    doc->add_option("--model", manual.model, "Name of the equipment; else its MDLN");
    doc->add_option("--version", manual.version, "Version of the equipment");
    doc->add_option("--date", manual.date, "Date on the cover; else none");
    doc->add_flag("!--no-findings", request.findings, "Leave out the annex with check's findings");
    act(doc, status, [=] { return docCommand(arguments->file, arguments->request); });
}

}  // namespace

void addPublishVerbs(CLI::App& app, int& status) {
    addSedd(app, status);
    addSml(app, status);
    addDoc(app, status);
}

}  // namespace stelvan::gemdb
