#include <memory>
#include <vector>

#include "gemdb/commands.h"
#include "gemdb/verbs.h"

namespace stelvan::gemdb {
namespace {

struct Arguments {
    std::string file;
    std::string table;
    std::vector<std::string> statements;
    bool demo = false;
    bool json = false;
};

constexpr const char* kTableHelp = "One table only; system tables can be named too";

constexpr VerbText kNew = {"new", "Start a model of your own from the shipped template",
                           "  gemdb new ~/tools/etcher7\n"
                           "  gemdb new --demo /tmp/look-around"};
constexpr VerbText kInfo = {"info", "Print what a file is, who uses it and how much it holds",
                            "  gemdb info gem.mdb\n"
                            "  gemdb info gem.mdb --json"};
constexpr VerbText kTables = {"tables", "Print the names of the tables", "  gemdb tables gem.mdb"};
constexpr VerbText kSchema = {"schema", "Print columns and indexes as JSON lines",
                              "  gemdb schema gem.mdb secs_cusvar"};
constexpr VerbText kDump = {"dump", "Print the rows of the tables as JSON lines",
                            "  gemdb dump gem.mdb secs_alarm"};
constexpr VerbText kSql = {
    "sql", "Run SQL statements: all of them, or none",
    "  gemdb sql gem.mdb \"SELECT evt_name FROM secs_cusevent WHERE evt_enable <> 0\"\n"
    "  gemdb sql gem.mdb \"UPDATE secs_alarm SET alm_enable = 1\""};

}  // namespace

void addFileVerbs(CLI::App& app, int& status) {
    const auto arguments = std::make_shared<Arguments>();

    CLI::App* start = addVerb(app, kNew);
    start->add_option("FOLDER", arguments->file, "Where gem.mdb is made")->required();
    start->add_flag("--demo", arguments->demo, "The model of an imaginary wet bench");
    act(start, status, [=] { return newCommand(arguments->file, arguments->demo); });

    CLI::App* info = addVerb(app, kInfo, arguments->file);
    info->add_flag("--json", arguments->json, "One object");
    act(info, status, [=] { return infoCommand(arguments->file, arguments->json); });

    CLI::App* tables = addVerb(app, kTables, arguments->file);
    act(tables, status, [=] { return tablesCommand(arguments->file); });

    CLI::App* schema = addVerb(app, kSchema, arguments->file);
    schema->add_option("TABLE", arguments->table, kTableHelp);
    act(schema, status, [=] { return schemaCommand(arguments->file, arguments->table); });

    CLI::App* dump = addVerb(app, kDump, arguments->file);
    dump->add_option("TABLE", arguments->table, kTableHelp);
    act(dump, status, [=] { return dumpCommand(arguments->file, arguments->table); });

    CLI::App* sql = addVerb(app, kSql, arguments->file);
    sql->add_option("STATEMENT", arguments->statements, "SELECT rows are printed as JSON lines")
        ->required();
    act(sql, status, [=] { return sqlCommand(arguments->file, arguments->statements); });
}

}  // namespace stelvan::gemdb
