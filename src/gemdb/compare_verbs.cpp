#include <memory>

#include "gemdb/commands.h"
#include "gemdb/verbs.h"

namespace stelvan::gemdb {
namespace {

constexpr VerbText kDiff = {"diff", "Print what differs between two models, item by item",
                            "  gemdb diff old/gem.mdb gem.mdb\n"
                            "  gemdb diff texts gem.mdb --json\n"
                            "  gemdb diff old/gem.mdb gem.mdb --html changes.html"};

void addDiff(CLI::App& app, int& status) {
    struct Arguments {
        std::string before, after;
        DiffOptions options;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* diff = addVerb(app, kDiff);
    diff->add_option("A", arguments->before, "A model: gem.mdb, or a folder of texts")->required();
    diff->add_option("B", arguments->after, "The one that it is compared with")->required();
    CLI::Option* json =
        diff->add_flag("--json", arguments->options.json, "One JSON object for each item");
    diff->add_option("--html", arguments->options.html, "Write a page instead")->excludes(json);
    act(diff, status,
        [=] { return diffCommand(arguments->before, arguments->after, arguments->options); });
}

}  // namespace

void addCompareVerbs(CLI::App& app, int& status) {
    addDiff(app, status);
}

}  // namespace stelvan::gemdb
