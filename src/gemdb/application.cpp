#include "gemdb/application.h"

#include <string>

#include "base/version.h"
#include "gemdb/verbs.h"

namespace stelvan::gemdb {

std::unique_ptr<CLI::App> makeApplication(int& status) {
    auto app = std::make_unique<CLI::App>(
        "Looks into a GEM database, and changes it, from the command line.", "gemdb");
    app->set_version_flag("--version", base::version());
    app->footer(
        "Exit status: 0 fine, 1 findings or differences, 2 it could not be done.\n"
        "gemdb VERB --help shows the options of a verb, and examples.");
    app->require_subcommand(1);
    addFileVerbs(*app, status);
    addModelVerbs(*app, status);
    addCompareVerbs(*app, status);
    addTextVerbs(*app, status);
    addPublishVerbs(*app, status);
    return app;
}

}  // namespace stelvan::gemdb
