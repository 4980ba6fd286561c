// Texts that are nearly what an export writes, for tests of how they are read.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace stelvan::test {

class RandomToml {
public:
    explicit RandomToml(std::uint32_t seed) : random_(seed) {}

    /// A text of a few sections; every third or so holds something that an export never writes,
    /// right or wrong.
    [[nodiscard]] std::string document() {
        std::string text = "[columns]\nsecs_report = [\"rpt_id\", \"rpt_name\"]\n";
        for (std::size_t count = upTo(5); count > 0; --count) text += section();
        if (upTo(3) == 0) text = damaged(text);
        return text;
    }

private:
    std::size_t upTo(std::size_t bound) { return random_() % bound; }
    template <typename T>
    const T& oneOf(const std::vector<T>& choices) {
        return choices[upTo(choices.size())];
    }

    std::string section() {
        static const std::vector<std::string> kHeaders = {
            "[[secs_report]]",      "[[secs_report]]",   "[[secs_report]]",
            "[[secs_report]] # x",  "[[ secs_report ]]", "[secs_report]",
            "[[secs_report.more]]", "[[\"a b\"]]",       "[more.of_it]"};
        std::string text = "\n" + oneOf(kHeaders) + "\n";
        for (std::size_t count = upTo(5); count > 0; --count) text += statement();
        return text;
    }

    std::string statement() {
        static const std::vector<std::string> kOdd = {
            "# a comment\n",  "\n",         "  indented = 1\n", "a.b = 1\n",     "x=1\n",
            "y = 1 # why\n",  "z = \n",     "'q' = 1\n",        "\"q q\" = 1\n", "\r\n",
            "<<<<<<< ours\n", "=======\n",  "k = [1, 2]\n",     "k = [\n1]\n",   "k = { a = 1 }\n",
            "k = {}\n",       "k = {a=1}\n"};
        if (upTo(4) == 0) return oneOf(kOdd);
        if (upTo(5) == 0) return list();
        return key() + " = " + value() + "\n";
    }

    std::string key() {
        static const std::vector<std::string> kKeys = {
            "rpt_id", "rpt_name", "rpt_desc", "\"two words\"", "a-b", "7", "\"\""};
        return oneOf(kKeys);
    }

    std::string list() {
        std::string text = key() + " = [\n";
        for (std::size_t count = upTo(4); count > 0; --count)
            text += "  " + (upTo(3) == 0 ? "{ " + key() + " = " + value() + " }" : value()) + ",\n";
        return text + "]\n";
    }

    std::string value() {
        static const std::vector<std::string> kValues = {
            "1",
            "-1",
            "0",
            "-0",
            "01",
            "+5",
            "1_000",
            "0x1F",
            "2147483647",
            "2147483648",
            "-2147483649",
            "999999999999999999",
            "9223372036854775807",
            "9223372036854775808",
            "1.5",
            "-0.0",
            "1.",
            ".5",
            "1e5",
            "1E+300",
            "1e999",
            "1.5e-7",
            "0.1000",
            "00.5",
            "inf",
            "-inf",
            "nan",
            "true",
            "false",
            "True",
            "tru",
            "2009-11-02T07:15:00",
            "2009-11-02 07:15:00",
            "2009-13-02T07:15:00",
            "2009-11-02T07:15:00.25",
            "2009-11-02T07:15:00Z",
            "2009-11-02",
            "07:15:00",
            "0050-01-01T00:00:00",
            "1900-02-29T00:00:00",
            "\"\"",
            "\"plain\"",
            "\"esc \\\" \\\\ \\n \\r \\t \\b \\f\"",
            "\"\\u0000\\u001F\\u00e9\\u2028\"",
            "\"\\uD800\"",
            "\"\\u12\"",
            "\"\\x41\"",
            "\"\\U0001F600\"",
            "\"caf\xC3\xA9 \xE6\x97\xA5 \xF0\x9F\x98\x80\"",
            "\"bad \xFF\"",
            "\"half \xED\xA0\x80\"",
            "\"over \xC0\x80\"",
            "\"cut \xE6\x97\"",
            "\"tab\there\"",
            "\"del \x7F\"",
            "\"next \xC2\x85 line\"",
            "'literal \\ \"'",
            "\"\"\"long\ntext\"\"\"",
            "'''[[secs_report]]\nx'''",
            "\"\"\"\n[[secs_report]]\n\"\" \\\"\"\"\"\"\"",
            "\"open",
            "'open",
            "\"\"\"open",
            "[1",
            "{ escaped = \"a\\\\uD800\\\\\\\\\" }",
            "{ escaped = \"a\\\\x\" }",
            "{ escaped = 5 }",
            "{ escaped = \"a\", b = 1 }",
            "{ other = \"a\" }",
            "[]",
            "[[1]]",
            "{",
            "}",
            "]",
            "a",
            "1 2",
            "\"a\" \"b\"",
            "\"# no comment\"",
            "1 # comment"};
        return oneOf(kValues);
    }

    /// A piece cut out, doubled, or a character changed.
    std::string damaged(std::string text) {
        static const std::string kCharacters = "[]{}=\"'\\#,.\n\r\t a1\x01\xC3";
        const std::size_t at = upTo(text.size());
        switch (upTo(4)) {
            case 0:
                return text.erase(at, upTo(12) + 1);
            case 1:
                return text.insert(at, text.substr(upTo(text.size()), upTo(20)));
            case 2:
                return text.substr(0, at);
            default:
                text[at] = kCharacters[upTo(kCharacters.size())];
                return text;
        }
    }

    std::mt19937 random_;
};

}  // namespace stelvan::test
