#include <memory>

#include "gemdb/commands.h"
#include "gemdb/verbs.h"

namespace stelvan::gemdb {
namespace {

constexpr VerbText kExport = {"export", "Write the model as texts, one file for each kind of item",
                              "  gemdb export gem.mdb model/\n"
                              "  gemdb export --csv gem.mdb tables/"};
constexpr VerbText kImport = {"import",
                              "Make a file equal to exported texts, and print each change",
                              "  gemdb import model/ gem.mdb --dry-run\n"
                              "  gemdb import model/ gem.mdb\n"
                              "  gemdb import --csv tables/custom-alarms.csv gem.mdb"};
constexpr VerbText kText = {"text", "Print the model as one text",
                            "  gemdb text gem.mdb\n"
                            "  git config diff.gem.textconv \"gemdb text\""};

struct Arguments {
    std::string file;
    std::string folder;
    bool dryRun = false;
    bool csv = false;
};

void addExport(CLI::App& app, int& status) {
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* verb = addVerb(app, kExport, arguments->file);
    verb->add_option("DIR", arguments->folder, "The folder; made where it is missing")->required();
    verb->add_flag("--csv", arguments->csv, "Tables for spreadsheets, one for each category");
    act(verb, status, [=] {
        return arguments->csv ? exportSheetsCommand(arguments->file, arguments->folder)
                              : exportCommand(arguments->file, arguments->folder);
    });
}

void addImport(CLI::App& app, int& status) {
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* verb = addVerb(app, kImport);
    verb->add_option("DIR", arguments->folder, "What export wrote")->required();
    verb->add_option("FILE", arguments->file, "The Access database (gem.mdb)")->required();
    verb->add_flag("--dry-run", arguments->dryRun, "Only say what would be done");
    verb->add_flag("--csv", arguments->csv,
                   "DIR is one table: add and change its items, judged as the editor judges them");
    act(verb, status, [=] {
        const auto command = arguments->csv ? importSheetCommand : importCommand;
        return command(arguments->folder, arguments->file, arguments->dryRun);
    });
}

}  // namespace

void addTextVerbs(CLI::App& app, int& status) {
    addExport(app, status);
    addImport(app, status);
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* text = addVerb(app, kText, arguments->file);
    act(text, status, [=] { return textCommand(arguments->file); });
}

}  // namespace stelvan::gemdb
