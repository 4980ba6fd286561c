// gemdb: looks into a GEM database, and changes it, from the command line.
//
// Exit status: 0 done, 1 the file was checked and has faults, 2 it could not be done (one line on
// standard error says why).
#include <CLI/CLI.hpp>
#include <cstdio>

#include "base/text.h"
#include "gemdb/commands.h"

namespace {

using namespace stelvan::gemdb;

struct Arguments {
    std::string file;
    std::string table;
    std::vector<std::string> statements;
    bool structure = false;
    bool strict = false;
    bool demo = false;
};

CLI::App* addCommand(CLI::App& app, const char* name, const char* help, Arguments& arguments) {
    CLI::App* command = app.add_subcommand(name, help);
    command->add_option("FILE", arguments.file, "The Access database (.mdb)")->required();
    return command;
}

void addCommands(CLI::App& app, Arguments& arguments, int& status) {
    constexpr const char* kTableHelp = "One table only; system tables can be named too";
    CLI::App* dump =
        addCommand(app, "dump", "Print the rows of the tables as JSON lines", arguments);
    dump->add_option("TABLE", arguments.table, kTableHelp);
    dump->callback([&] { status = dumpCommand(arguments.file, arguments.table); });

    CLI::App* tables = addCommand(app, "tables", "Print the names of the tables", arguments);
    tables->callback([&] { status = tablesCommand(arguments.file); });

    CLI::App* schema =
        addCommand(app, "schema", "Print columns and indexes as JSON lines", arguments);
    schema->add_option("TABLE", arguments.table, kTableHelp);
    schema->callback([&] { status = schemaCommand(arguments.file, arguments.table); });

    CLI::App* sql = addCommand(app, "sql", "Run SQL statements: all of them, or none", arguments);
    sql->add_option("STATEMENT", arguments.statements, "SELECT rows are printed as JSON lines")
        ->required();
    sql->callback([&] { status = sqlCommand(arguments.file, arguments.statements); });

    CLI::App* check =
        addCommand(app, "check", "Print the faults of the file, one a line", arguments);
    check->add_flag("--structure", arguments.structure, "Check pages, rows, indexes and maps")
        ->required();
    check->add_flag("--strict", arguments.strict,
                    "Count harmless leftovers of other engines as faults");
    check->callback([&] { status = checkCommand(arguments.file, arguments.strict); });

    CLI::App* start =
        app.add_subcommand("new", "Start a model of your own from the shipped template");
    start->add_option("FOLDER", arguments.file, "Where gem.mdb is made")->required();
    start->add_flag("--demo", arguments.demo, "The model of an imaginary wet bench");
    start->callback([&] { status = newCommand(arguments.file, arguments.demo); });
}

/// One line, whatever the text holds.
int fail(const std::string& text) {
    std::fprintf(stderr, "gemdb: %s\n", stelvan::base::onOneLine(text).c_str());
    return kFailed;
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app{"Looks into a GEM database, and changes it, from the command line.", "gemdb"};
    app.set_version_flag("--version", std::to_string(STELVAN_VERSION_MAJOR) + "." +
                                          std::to_string(STELVAN_VERSION_MINOR) + "." +
                                          std::to_string(STELVAN_VERSION_PATCH));
    app.require_subcommand(1);
    Arguments arguments;
    int status = kDone;
    addCommands(app, arguments, status);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& request) {
        return app.exit(request);
    } catch (const CLI::ParseError& mistake) {
        return fail(std::string(mistake.what()) + "; see gemdb --help");
    } catch (const std::exception& failure) {
        const std::string text = failure.what();
        return fail(text.find(arguments.file) == std::string::npos ? arguments.file + ": " + text
                                                                   : text);
    }
    return status;
}
