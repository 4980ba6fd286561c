// Builds a GEM database from the texts of this folder. A step of the build; see build.cmake.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <iterator>

#include "data/builder/build_model.h"
#include "data/builder/generated_model.h"

namespace {

using namespace stelvan::data;

struct Arguments {
    std::string output;
    std::string schema;
    std::vector<std::string> rows;
    std::string shareDir = "/usr/share/stelvan";
    std::string stateDir = "/var/lib/stelvan";
    ModelSize generated;
    bool replace = false;
};

void build(const Arguments& arguments) {
    const Replacements folders = {{"@SHARE_DIR@", arguments.shareDir},
                                  {"@STATE_DIR@", arguments.stateDir}};
    std::vector<TableRows> tables;
    for (const std::string& folder : arguments.rows) {
        std::vector<TableRows> more = readTables(folder, folders);
        std::move(more.begin(), more.end(), std::back_inserter(tables));
    }
    std::vector<TableRows> more = generateModel(arguments.generated);
    std::move(more.begin(), more.end(), std::back_inserter(tables));
    if (arguments.replace) std::filesystem::remove(arguments.output);
    buildModel(arguments.output, parseSchema(readText(arguments.schema)), tables);
}

}  // namespace

int main(int argc, char** argv) {
    Arguments arguments;
    CLI::App app{"Builds a GEM database from text, with generated rows of any number."};
    app.add_option("OUTPUT", arguments.output, "The file to make")->required();
    app.add_option("--schema", arguments.schema, "The tables")->required();
    app.add_option("--rows", arguments.rows, "Folder with TABLE.tsv; may be given again");
    app.add_option("--share-dir", arguments.shareDir,
                   "Folder of the shipped files, for the settings");
    app.add_option("--state-dir", arguments.stateDir, "Folder of model and log, for the settings");
    app.add_option("--variables", arguments.generated.variables, "Generated custom variables");
    app.add_option("--events", arguments.generated.events, "Generated custom events");
    app.add_option("--alarms", arguments.generated.alarms, "Generated alarms");
    app.add_option("--reports", arguments.generated.reports, "Generated reports");
    app.add_flag("--replace", arguments.replace, "Replace a file that is there");
    CLI11_PARSE(app, argc, argv);
    try {
        build(arguments);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s: %s\n", arguments.output.c_str(), failure.what());
        return 1;
    }
    return 0;
}
