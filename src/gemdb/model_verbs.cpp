#include <memory>
#include <stdexcept>

#include "gemdb/commands.h"
#include "gemdb/verbs.h"

namespace stelvan::gemdb {
namespace {

constexpr VerbText kCheck = {
    "check", "Print what is wrong with a model, and mend what has one right answer",
    "  gemdb check gem.mdb\n"
    "  gemdb check gem.mdb --json | jq -r 'select(.rule == \"null-field\") | .id'\n"
    "  gemdb check gem.mdb --fix --dry-run\n"
    "  gemdb check gem.mdb --structure"};

void addCheck(CLI::App& app, int& status) {
    struct Arguments {
        std::string file;
        CheckRequest request{.structure = false, .model = false};
    };
    const auto arguments = std::make_shared<Arguments>();
    CheckRequest& request = arguments->request;
    CLI::App* check = addVerb(app, kCheck, arguments->file);
    CLI::Option* structure =
        check->add_flag("--structure", request.structure, "Only pages, rows, indexes and maps");
    CLI::Option* whole =
        check->add_flag("--model", request.model, "Only records, links and settings");
    check->add_flag("--json", request.json, "One object a line");
    CLI::Option* fix = check->add_flag("--fix", request.fix,
                                       "Mend links to nothing, doubled links, gaps in orders and "
                                       "children without a list; the file as it was is kept "
                                       "beside it");
    check->add_flag("--dry-run", request.dryRun, "Say what --fix would do")->needs(fix);
    check->add_flag("--strict", request.strict,
                    "Count harmless leftovers of other engines as faults");
    act(check, status, [=] {
        CheckRequest wanted = arguments->request;
        if (structure->empty() && whole->empty()) wanted.structure = wanted.model = true;
        if (wanted.fix && !wanted.model)
            throw std::runtime_error("--fix mends the model; leave --structure away");
        return checkCommand(arguments->file, wanted);
    });
}

constexpr VerbText kCopies = {"copies", "List the earlier copies of a model, or put one back",
                              "  gemdb copies gem.mdb\n"
                              "  gemdb copies gem.mdb --restore 1"};

void addCopies(CLI::App& app, int& status) {
    struct Arguments {
        std::string file;
        std::size_t restored = 0;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* copies = addVerb(app, kCopies, arguments->file);
    copies
        ->add_option("--restore", arguments->restored,
                     "Replace the model by the copy with this number; the file as it is now is "
                     "kept as a copy first")
        ->check(CLI::PositiveNumber);
    act(copies, status, [=] { return copiesCommand(arguments->file, arguments->restored); });
}

}  // namespace

void addModelVerbs(CLI::App& app, int& status) {
    addCheck(app, status);
    addCopies(app, status);
}

}  // namespace stelvan::gemdb
