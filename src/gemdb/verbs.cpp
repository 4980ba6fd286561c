#include "gemdb/verbs.h"

#include <utility>

#include "gemdb/working.h"

namespace stelvan::gemdb {

CLI::App* addVerb(CLI::App& app, const VerbText& text) {
    CLI::App* verb = app.add_subcommand(text.name, text.help);
    verb->footer(std::string("Examples:\n") + text.examples);
    return verb;
}

CLI::App* addVerb(CLI::App& app, const VerbText& text, std::string& file) {
    CLI::App* verb = addVerb(app, text);
    verb->add_option("FILE", file, "The Access database (gem.mdb)")->required();
    return verb;
}

void act(CLI::App* verb, int& status, std::function<int()> action) {
    verb->callback([&status, verb, action = std::move(action)] {
        const Working working("gemdb " + verb->get_name());
        status = action();
    });
}

}  // namespace stelvan::gemdb
