// What an application parsed by CLI11 offers, as plain facts: for manual pages and completions.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace stelvan::gemdb {

struct OptionFacts {
    std::vector<std::string> names;  // "--json", "-o"; one without dashes for an argument
    std::string help;
    bool takesValue = false;
    bool required = false;
    bool isArgument = false;  // given by its place
    bool many = false;
};

struct VerbFacts {
    std::string name;
    std::string help;
    std::string footer;
    std::vector<OptionFacts> options;  // arguments first, in their order; --help last
};

[[nodiscard]] std::vector<OptionFacts> optionsOf(const CLI::App& app);
[[nodiscard]] std::vector<VerbFacts> verbsOf(const CLI::App& app);

}  // namespace stelvan::gemdb
