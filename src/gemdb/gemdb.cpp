// gemdb: looks into a GEM database, and changes it, from the command line.
//
// Exit status: 0 fine, 1 findings or differences, 2 it could not be done (standard error says why).
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "base/text.h"
#include "gemdb/commands.h"
#include "gemdb/verbs.h"
#include "model/core/refusal.h"

namespace {

using namespace stelvan::gemdb;

/// One line, whatever the text holds.
int fail(const std::string& text) {
    std::fprintf(stderr, "gemdb: %s\n", stelvan::base::onOneLine(text).c_str());
    return kFailed;
}

/// The files that the verb was given, for failures that do not name theirs.
std::vector<std::string> filesOf(const CLI::App& app) {
    std::vector<std::string> files;
    for (const CLI::App* verb : app.get_subcommands())
        for (const CLI::Option* option : verb->get_options())
            if (option->get_positional() && option->count() > 0)
                files.push_back(option->results().front());
    return files;
}

std::string withFile(const std::string& text, const std::vector<std::string>& files) {
    const bool named = files.empty() || std::ranges::any_of(files, [&](const std::string& file) {
                           return text.find(file) != std::string::npos;
                       });
    return named ? text : files.front() + ": " + text;
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app{"Looks into a GEM database, and changes it, from the command line.", "gemdb"};
    app.set_version_flag("--version", std::to_string(STELVAN_VERSION_MAJOR) + "." +
                                          std::to_string(STELVAN_VERSION_MINOR) + "." +
                                          std::to_string(STELVAN_VERSION_PATCH));
    app.footer(
        "Exit status: 0 fine, 1 findings or differences, 2 it could not be done.\n"
        "gemdb VERB --help shows the options of a verb, and examples.");
    app.require_subcommand(1);
    int status = kDone;
    addFileVerbs(app, status);
    addModelVerbs(app, status);
    addCompareVerbs(app, status);
    addTextVerbs(app, status);
    addPublishVerbs(app, status);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& request) {
        return app.exit(request);
    } catch (const CLI::ParseError& mistake) {
        return fail(std::string(mistake.what()) + "; see gemdb --help");
    } catch (const stelvan::model::Refusal& refusal) {
        for (const std::string& line : refusal.lines()) fail(withFile(line, filesOf(app)));
        return kFailed;
    } catch (const std::exception& failure) {
        return fail(withFile(failure.what(), filesOf(app)));
    }
    return status;
}
