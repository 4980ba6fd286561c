// gemdb: looks into a GEM database, and changes it, from the command line.
//
// Exit status: 0 fine, 1 findings or differences, 2 it could not be done (standard error says why).
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "base/text.h"
#include "gemdb/application.h"
#include "gemdb/commands.h"
#include "model/core/refusal.h"

namespace {

using namespace stelvan::gemdb;

/// One line, whatever the text holds.
int fail(const std::string& text) {
    std::fprintf(stderr, "gemdb: %s\n", stelvan::base::onOneLine(text).c_str());
    return kFailed;
}

/// The paths that the verb was given, that of its file first.
std::vector<std::string> pathsOf(const CLI::App& app) {
    std::vector<std::string> paths, others;
    for (const CLI::App* verb : app.get_subcommands())
        for (const CLI::Option* option : verb->get_options())
            if (option->get_items_expected_max() > 0 && option->count() > 0)
                (option->get_positional() ? paths : others).push_back(option->results().front());
    paths.insert(paths.end(), others.begin(), others.end());
    return paths;
}

/// With the verb's file in front, unless the failure names one of its paths.
std::string withFile(const std::string& text, const std::vector<std::string>& paths) {
    const bool named = paths.empty() || std::ranges::any_of(paths, [&](const std::string& path) {
                           return text.find(path) != std::string::npos;
                       });
    return named ? text : paths.front() + ": " + text;
}

}  // namespace

int main(int argc, char** argv) {
    int status = kDone;
    const auto application = makeApplication(status);
    CLI::App& app = *application;
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& request) {
        return app.exit(request);
    } catch (const CLI::ParseError& mistake) {
        return fail(std::string(mistake.what()) + "; see gemdb --help");
    } catch (const stelvan::model::Refusal& refusal) {
        for (const std::string& line : refusal.lines()) fail(withFile(line, pathsOf(app)));
        return kFailed;
    } catch (const std::exception& failure) {
        return fail(withFile(failure.what(), pathsOf(app)));
    }
    return status;
}
