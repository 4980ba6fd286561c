#include <memory>

#include "gemdb/commands.h"
#include "gemdb/verbs.h"

namespace stelvan::gemdb {
namespace {

constexpr VerbText kDiff = {"diff", "Print what differs between two models, item by item",
                            "  gemdb diff old/gem.mdb gem.mdb\n"
                            "  gemdb diff texts gem.mdb --json\n"
                            "  gemdb diff old/gem.mdb gem.mdb --html changes.html"};

constexpr VerbText kMerge = {"merge", "Bring together what two sides made of one model",
                             "  gemdb merge base.mdb gem.mdb theirs.mdb -o merged.mdb\n"
                             "  gemdb merge base.mdb gem.mdb theirs.mdb -o gem.mdb --theirs\n"
                             "  gemdb merge base.mdb gem.mdb theirs.mdb --dry-run"};

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

void addMerge(CLI::App& app, int& status) {
    struct Arguments {
        MergeFiles files;
        MergeOptions options;
        bool ours = false;
        bool theirs = false;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* merge = addVerb(app, kMerge);
    merge->add_option("BASE", arguments->files.base, "The model that both sides began with")
        ->required();
    merge->add_option("OURS", arguments->files.ours, "What one side made of it: gem.mdb")
        ->required();
    merge->add_option("THEIRS", arguments->files.theirs, "What the other side made of it")
        ->required();
    CLI::Option* out = merge->add_option("-o,--output", arguments->files.out,
                                         "The file to write, a copy of OURS or OURS itself");
    CLI::Option* ours = merge->add_flag("--ours", arguments->ours, "In a conflict OURS is right");
    merge->add_flag("--theirs", arguments->theirs, "In a conflict THEIRS is right")->excludes(ours);
    merge->add_flag("--dry-run", arguments->options.dryRun, "Only print what would be done");
    act(merge, status, [=] {
        MergeOptions options = arguments->options;
        if (out->count() == 0 && !options.dryRun) throw CLI::RequiredError("-o or --dry-run");
        if (arguments->ours) options.decide = model::Side::Ours;
        if (arguments->theirs) options.decide = model::Side::Theirs;
        return mergeCommand(arguments->files, options);
    });
}

}  // namespace

void addCompareVerbs(CLI::App& app, int& status) {
    addDiff(app, status);
    addMerge(app, status);
}

}  // namespace stelvan::gemdb
