// gemdb: looks into a GEM database, and changes it, from the command line.
//
// Exit status: 0 fine, 1 findings or differences, 2 it could not be done (standard error says why).
#include <cstdio>

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

/// The file that the verb was given, for failures that do not name theirs.
std::string fileOf(const CLI::App& app) {
    for (const CLI::App* verb : app.get_subcommands())
        for (const CLI::Option* option : verb->get_options())
            if (option->get_positional() && option->count() > 0) return option->as<std::string>();
    return {};
}

std::string withFile(const std::string& text, const std::string& file) {
    const bool named = file.empty() || text.find(file) != std::string::npos;
    return named ? text : file + ": " + text;
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
        for (const std::string& line : refusal.lines()) fail(withFile(line, fileOf(app)));
        return kFailed;
    } catch (const std::exception& failure) {
        return fail(withFile(failure.what(), fileOf(app)));
    }
    return status;
}
