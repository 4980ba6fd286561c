#include "model/text/section.h"

#include <gtest/gtest.h>
#include <toml++/toml.h>

#include <algorithm>
#include <map>

#include "jet/rows/value_text.h"
#include "tests/model/text/random_toml.h"

namespace stelvan::test {
namespace {

using model::TomlField;
using model::TomlReader;
using model::TomlSection;
using model::TomlWay;

std::string spelt(const jet::Value& value) {
    return std::to_string(value.index()) + ":" + jet::textOf(value);
}

/// Fields in the order of their keys: the ways differ in that alone.
std::string spelt(const std::vector<TomlField>& fields) {
    std::map<std::string, std::string> sorted;
    for (const TomlField& field : fields) {
        std::string text = "@" + std::to_string(field.line) + " ";
        if (!field.isList) text += spelt(field.value);
        for (const model::TomlEntry& entry : field.list)
            text += "[@" + std::to_string(entry.line) + " " +
                    (entry.isTable ? "{" + spelt(entry.fields) + "}" : spelt(entry.value)) + "]";
        sorted.emplace(field.key, text);
    }
    std::string text;
    for (const auto& [key, value] : sorted) text += key + " = " + value + "; ";
    return text;
}

/// What a text says to a reader; of a fault, where it is.
struct Reading {
    std::vector<std::string> sections;
    std::vector<std::string> faults;
};

Reading readingOf(const std::string& text, TomlWay way) {
    Reading reading;
    TomlReader reader(text, way);
    TomlSection section;
    for (bool more = true; more;) {
        try {
            more = reader.next(section);
            if (!more) break;
            reading.sections.push_back(std::string(section.name) + (section.isArray ? "[] " : " ") +
                                       "@" + std::to_string(section.line) + " " +
                                       spelt(section.fields));
        } catch (const model::TomlFault& fault) {
            reading.faults.push_back(std::to_string(fault.line()) + ": " + fault.what());
        }
    }
    return reading;
}

TEST(TomlSections, TheShortWayAndTheLibraryTakeAndGiveTheSame) {
    int whole = 0;
    for (std::uint32_t seed = 0; seed < 20'000; ++seed) {
        const std::string text = RandomToml(seed).document();
        const Reading quick = readingOf(text, TomlWay::Short);
        const Reading slow = readingOf(text, TomlWay::Library);
        ASSERT_EQ(quick.sections, slow.sections) << "seed " << seed << "\n" << text;
        ASSERT_EQ(quick.faults, slow.faults) << "seed " << seed << "\n" << text;
        whole += quick.faults.empty() ? 1 : 0;
    }
    EXPECT_GT(whole, 1000);
}

/// What no TOML is to the library as a whole is none in sections, too.
TEST(TomlSections, TakeNoTextThatIsNoTomlAsAWhole) {
    int refused = 0;
    for (std::uint32_t seed = 0; seed < 20'000; ++seed) {
        const std::string text = RandomToml(seed).document();
        try {
            (void)toml::parse(std::string_view(text));
        } catch (const toml::parse_error& error) {
            const std::string why(error.description());
            // Sections are judged one by one here: that names agree between them is for the reader
            // of models to see.
            const bool betweenSections = why.find("redefin") != std::string::npos ||
                                         why.find("cannot insert") != std::string::npos;
            if (betweenSections) continue;
            ++refused;
            ASSERT_FALSE(readingOf(text, TomlWay::Short).faults.empty())
                << "seed " << seed << ": " << why << "\n"
                << text;
        }
    }
    EXPECT_GT(refused, 1000);
}

TEST(TomlSections, ValuesOfManyLinesDoNotEndASection) {
    const std::string text =
        "[[a]]\nx = \"\"\"\n[[b]]\n\"\"\"\ny = [\n  [1],\n]\n\n[[c]]\nz = '''\n[d]'''\n";
    const Reading reading = readingOf(text, TomlWay::Short);
    ASSERT_EQ(reading.sections.size(), 1U);
    EXPECT_TRUE(reading.sections[0].starts_with("c[] @9 z = @10"));
    ASSERT_EQ(reading.faults.size(), 1U);
    EXPECT_TRUE(reading.faults[0].starts_with("6: ")) << reading.faults[0];
}

TEST(TomlSections, SurvivesHostileText) {
    std::string deep = "[[a]]\nx = ";
    deep += std::string(100'000, '[');
    EXPECT_EQ(readingOf(deep, TomlWay::Short).faults.size(), 1U);
    EXPECT_EQ(readingOf("\"", TomlWay::Short).faults.size(), 1U);
    EXPECT_EQ(readingOf("[[a]]\nx = \"\\", TomlWay::Short).faults.size(), 1U);
    EXPECT_TRUE(readingOf("", TomlWay::Short).faults.empty());
    EXPECT_TRUE(readingOf("\xEF\xBB\xBF[[a]]\nx = 1", TomlWay::Short).faults.empty());
}

}  // namespace
}  // namespace stelvan::test
