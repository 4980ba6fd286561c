#include <memory>

#include "gemdb/commands.h"
#include "gemdb/verbs.h"

namespace stelvan::gemdb {
namespace {

constexpr VerbText kCheck = {"check", "Print the faults of the file, one a line",
                             "  gemdb check gem.mdb --structure"};

void addCheck(CLI::App& app, int& status) {
    struct Arguments {
        std::string file;
        bool structure = false;
        bool strict = false;
    };
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* check = addVerb(app, kCheck, arguments->file);
    check->add_flag("--structure", arguments->structure, "Check pages, rows, indexes and maps")
        ->required();
    check->add_flag("--strict", arguments->strict,
                    "Count harmless leftovers of other engines as faults");
    act(check, status, [=] { return checkCommand(arguments->file, arguments->strict); });
}

}  // namespace

void addModelVerbs(CLI::App& app, int& status) {
    addCheck(app, status);
}

}  // namespace stelvan::gemdb
