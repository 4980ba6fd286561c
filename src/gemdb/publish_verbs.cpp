#include <memory>

#include "gemdb/commands.h"
#include "gemdb/verbs.h"

namespace stelvan::gemdb {
namespace {

struct DocArguments {
    std::string file;
    std::string out;
    model::ManualOptions options;
};

constexpr VerbText kDoc = {
    "doc", "Write the equipment's GEM interface manual as one HTML page",
    "  gemdb doc gem.mdb -o manual.html\n"
    "  gemdb doc gem.mdb -o manual.html --maker \"Wet Works\" --model \"Bench 7\" --version 2.4"};

void addDoc(CLI::App& app, int& status) {
    const auto arguments = std::make_shared<DocArguments>();
    model::ManualOptions& options = arguments->options;
    CLI::App* doc = addVerb(app, kDoc, arguments->file);
    doc->add_option("-o,--output", arguments->out, "The page to write")->required();
    doc->add_option("--title", options.title, "Title; else made of the equipment's name");
    doc->add_option("--maker", options.maker, "Who makes the equipment");
    doc->add_option("--model", options.model, "Name of the equipment; else its MDLN");
    doc->add_option("--version", options.version, "Version of the equipment");
    doc->add_option("--date", options.date, "Date on the cover; else none");
    act(doc, status,
        [=] { return docCommand(arguments->file, arguments->out, arguments->options); });
}

}  // namespace

void addPublishVerbs(CLI::App& app, int& status) {
    addDoc(app, status);
}

}  // namespace stelvan::gemdb
