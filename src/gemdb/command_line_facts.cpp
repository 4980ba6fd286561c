#include "gemdb/command_line_facts.h"

#include <algorithm>

namespace stelvan::gemdb {
namespace {

OptionFacts factsOf(const CLI::Option& option) {
    OptionFacts facts;
    for (const std::string& name : option.get_lnames()) facts.names.push_back("--" + name);
    for (const std::string& name : option.get_snames()) facts.names.push_back("-" + name);
    facts.isArgument = facts.names.empty();
    if (facts.isArgument) facts.names.push_back(option.get_name(true));
    facts.help = option.get_description();
    facts.takesValue = option.get_items_expected_max() > 0;
    facts.required = option.get_required();
    facts.many = option.get_items_expected_max() > 1;
    return facts;
}

}  // namespace

std::vector<OptionFacts> optionsOf(const CLI::App& app) {
    std::vector<OptionFacts> all;
    for (const CLI::Option* option : app.get_options()) all.push_back(factsOf(*option));
    const auto rank = [](const OptionFacts& option) {
        if (option.isArgument) return 0;
        return option.names.front() == "--help" ? 2 : 1;
    };
    std::ranges::stable_sort(all, {}, rank);
    return all;
}

std::vector<VerbFacts> verbsOf(const CLI::App& app) {
    std::vector<VerbFacts> verbs;
    for (const CLI::App* verb : app.get_subcommands({}))
        verbs.push_back(
            {verb->get_name(), verb->get_description(), verb->get_footer(), optionsOf(*verb)});
    return verbs;
}

}  // namespace stelvan::gemdb
