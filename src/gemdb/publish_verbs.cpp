#include <memory>

#include "gemdb/commands.h"
#include "gemdb/verbs.h"

namespace stelvan::gemdb {
namespace {

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
    addDoc(app, status);
}

}  // namespace stelvan::gemdb
