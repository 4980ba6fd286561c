// The verbs of gemdb as the command line knows them: names, options, help and examples. What a verb
// does stands in commands.h.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <string>
#include <string_view>

namespace stelvan::gemdb {

struct VerbText {
    const char* name;
    const char* help;      // one line, in the list of verbs and above its own help
    const char* examples;  // one a line, each a whole command
};

/// Adds a verb. `file` belongs to the caller and outlives the parsing, as all variables that
/// options are bound to; what the verb's failures are about is named by it.
CLI::App* addVerb(CLI::App& app, const VerbText& text);
/// The same with the model file as its first argument.
CLI::App* addVerb(CLI::App& app, const VerbText& text, std::string& file);

/// What a verb does once all arguments are known; its result is the exit status.
void act(CLI::App* verb, int& status, std::function<int()> action);

// Groups of verbs; `status` outlives the parsing.
void addFileVerbs(CLI::App& app, int& status);     // new, info, tables, schema, dump, sql
void addModelVerbs(CLI::App& app, int& status);    // check, copies
void addCompareVerbs(CLI::App& app, int& status);  // diff, merge
void addTextVerbs(CLI::App& app, int& status);     // export, import, text
void addPublishVerbs(CLI::App& app, int& status);  // sedd, sml, doc

}  // namespace stelvan::gemdb
