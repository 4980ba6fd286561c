#include <gtest/gtest.h>

#include "gemdb/application.h"
#include "gemdb/completions.h"
#include "gemdb/manual_page.h"

namespace stelvan::test {
namespace {

using namespace gemdb;

std::vector<VerbFacts> verbs() {
    int status = 0;
    return verbsOf(*makeApplication(status));
}

std::string manual() {
    return manualText({"gemdb",
                       "1.2.3",
                       "2026-01-02",
                       "summary",
                       "what it does",
                       {},
                       verbs(),
                       "0 fine",
                       {},
                       {"stelvan(1)"}});
}

TEST(ManualPage, TellsEveryVerbWithItsOptionsAndExamples) {
    const std::string page = manual();
    for (const VerbFacts& verb : verbs()) {
        EXPECT_NE(page.find(".SS " + verb.name + "\n"), std::string::npos) << verb.name;
        EXPECT_FALSE(verb.help.empty()) << verb.name;
        EXPECT_NE(verb.footer.find("Examples:\n  gemdb " + verb.name), std::string::npos)
            << verb.name;
        for (const OptionFacts& option : verb.options)
            EXPECT_FALSE(option.help.empty()) << verb.name << ' ' << option.names.front();
    }
    EXPECT_NE(page.find("\\fB\\-\\-demo\\fR\nThe model of an imaginary wet bench"),
              std::string::npos)
        << page;
}

TEST(ManualPage, NoTextIsTakenForACommand) {
    const std::string page =
        manualText({"x", "1", "2026-01-02", "a-b", ".so /etc/passwd\n'c \\d", {}, {}, "0", {}, {}});
    EXPECT_NE(page.find("\\&.so /etc/passwd\n\\&'c \\ed"), std::string::npos) << page;
}

TEST(Completions, EveryShellKnowsEveryVerbAndItsOptions) {
    const std::string bash = bashCompletion("gemdb", verbs());
    const std::string zsh = zshCompletion("gemdb", verbs());
    for (const VerbFacts& verb : verbs()) {
        EXPECT_NE(bash.find("\n        " + verb.name + ") options='"), std::string::npos) << bash;
        EXPECT_NE(zsh.find("\n    " + verb.name + ") _arguments"), std::string::npos) << zsh;
        for (const OptionFacts& option : verb.options) {
            if (option.isArgument) continue;
            EXPECT_NE(bash.find(option.names.front()), std::string::npos) << bash;
            EXPECT_NE(zsh.find('\'' + option.names.front() + '['), std::string::npos) << zsh;
        }
    }
    const std::string fish = fishCompletion("gemdb", verbs());
    EXPECT_NE(fish.find("__fish_seen_subcommand_from new' -l demo"), std::string::npos) << fish;
}

TEST(Completions, QuotesInHelpStayInTheirWord) {
    const std::vector<VerbFacts> odd = {{"a", "it's [odd]: yes", "", {}}};
    EXPECT_NE(zshCompletion("x", odd).find("'a:it'\\''s \\[odd\\]\\: yes'"), std::string::npos);
    EXPECT_NE(fishCompletion("x", odd).find("-d 'it'\\''s [odd]: yes'"), std::string::npos);
}

}  // namespace
}  // namespace stelvan::test
