// What gemdb sml writes, an independent reader of SML reads: every message, item by item as the
// tables of the model have it.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <optional>

#include "tests/readers/expected_messages.h"
#include "tests/readers/node_reader.h"
#include "tests/support/models.h"
#include "tests/support/run_gemdb.h"

namespace stelvan::test {
namespace {

using Json = nlohmann::json;

std::string numberText(const std::string& format, const Json& value) {
    std::array<char, 64> text{};
    if (format == "F4")
        std::snprintf(text.data(), text.size(), "%.9g",
                      static_cast<double>(static_cast<float>(value.get<double>())));
    else
        std::snprintf(text.data(), text.size(), "%.17g", value.get<double>());
    return text.data();
}

/// In the spelling of expectedMessages().
std::string spelled(const Json& item) {
    const std::string format = item.at("f");
    const Json& value = item.at("v");
    if (format == "A" || format == "B") return format + ":" + value.get<std::string>();
    std::string text;
    for (const Json& part : value) {
        if (format == "L")
            text += spelled(part) + " ";
        else
            text += part.is_boolean() ? part.dump() : numberText(format, part);
    }
    return format == "L" ? "L(" + text + ")" : format + ":" + text;
}

std::string spelledMessage(const Json& message) {
    return "S" + message.at("s").dump() + "F" + message.at("f").dump() +
           (message.at("w") ? " W " : " ") + spelled(message.at("item"));
}

/// Blanks part items here and there alike.
std::string withoutBlanks(std::string text) {
    std::erase(text, ' ');
    return text;
}

void expectReadAlike(const std::filesystem::path& file) {
    const ScratchDir scratch;
    const std::filesystem::path sml = scratch.path() / "model.sml";
    const ProgramRun run = runGemdb({"sml", file, "-o", sml});
    ASSERT_EQ(run.status, 0) << run.err;
    const auto lines = readSmlWithNode(sml);
    if (!lines) GTEST_SKIP() << "secs4js is absent";
    const std::vector<std::string> wanted = expectedMessages(file);
    ASSERT_EQ(lines->size(), wanted.size());
    for (std::size_t i = 0; i < wanted.size(); ++i)
        ASSERT_EQ(withoutBlanks(spelledMessage(Json::parse((*lines)[i]))),
                  withoutBlanks(wanted[i]));
}

class Secs4js : public ::testing::TestWithParam<ModelFile> {};

TEST_P(Secs4js, ReadsEveryItemAsTheTablesHaveIt) {
    STELVAN_NEEDS_FILE(GetParam());
    expectReadAlike(GetParam().path());
}

INSTANTIATE_TEST_SUITE_P(Models, Secs4js,
                         ::testing::ValuesIn(byEveryMaker({"gem.mdb", "gem_int_flags.mdb",
                                                           "gem_empty.mdb", "gem_edges.mdb",
                                                           "gem_large.mdb"})),
                         [](const auto& file) { return label(file.param); });

TEST(Secs4jsOfOurModels, ReadsTheShippedOnesAndThoseOfOddForm) {
    for (const char* name : {"/gem.mdb", "/demo/gem.mdb", "/tests/models/gem_spellings.mdb",
                             "/tests/models/gem_few_columns.mdb"}) {
        SCOPED_TRACE(name);
        expectReadAlike(std::string(STELVAN_BINARY_DIR) + name);
    }
}

/// A copy of the model whose first variables hold what is hard to write.
std::filesystem::path withHardValues(const ScratchDir& scratch) {
    struct Hard {
        const char* format;
        std::string value;
    };
    const std::vector<Hard> hard = {
        {"A", "say \"yes\" // 'no' <A \"x\"> >."},
        {"A", "tab\tline\r\nend"},
        {"A", "\xC3\xA4\xE6\xBC\xA2\xF0\x9F\x98\x80"},
        {"A", "  blanks around  "},
        {"A", "<A 0x41 0x42>"},
        {"A", "null"},
        {"B", "7"},
        {"B", "256"},
        {"BL", "true"},
        {"BL", "False"},
        {"BL", "yes"},
        {"F4", "3.4e38"},
        {"F4", "1e-40"},
        {"F4", "-0.1"},
        {"F8", "1.7e308"},
        {"F8", "5e-324"},
        {"F8", "3,5"},
        {"I1", "-128"},
        {"I1", "-129"},
        {"I4", "-2147483648"},
        {"I8", "-9223372036854775808"},
        {"U2", "1.5"},
        {"U4", "4294967295"},
        {"U4", "4294967296"},
        {"U8", "18446744073709551615"},
        {"U8", "18446744073709551616"},
        {"U8", "abc"},
    };
    const std::filesystem::path file = scratch.copyOf(model("gem.mdb"));
    std::vector<std::string> arguments = {"sql", file};
    long id = 9000;
    const auto insert = [&](const std::string& table, const std::string& columns,
                            const std::string& row) {
        arguments.push_back("INSERT INTO " + table + " (" + columns + ") VALUES (" + row + ")");
    };
    insert("secs_report", "rpt_id, rpt_name, rpt_default", "9000, 'Hard', 0");
    insert("secs_def_evt_rpt", "evt_id, rpt_id, rpt_order", "101, 9000, 99");
    const auto addVariable = [&](const std::string& format, const std::string& value, long parent) {
        const std::string number = std::to_string(++id);
        std::string literal;
        for (const char c : value) literal += c == '\'' ? std::string("''") : std::string(1, c);
        insert("secs_cusvar",
               "var_id, var_name, var_type, var_format, var_val, var_parentkey, var_accessid",
               number + ", 'V" + number + "', 'SV', '" + format + "', '" + literal + "', " +
                   std::to_string(parent) + ", " + number);
        insert("secs_rpt_var", "rpt_id, var_id, var_order", "9000, " + number + ", " + number);
    };
    for (const Hard& one : hard) addVariable(one.format, one.value, 0);
    const long list = id + 1;
    addVariable("L", "NULL", list + 1);  // each of the two holds the other
    addVariable("L", "NULL", list);
    addVariable("U1", "7", list);
    addVariable("L", "NULL", id + 1);  // holds itself
    const ProgramRun run = runGemdb(arguments);
    EXPECT_EQ(run.status, 0) << run.err;
    return file;
}

TEST(Secs4jsOfOurModels, ReadsWhatIsHardToWrite) {
    const ScratchDir scratch;
    expectReadAlike(withHardValues(scratch));
}

}  // namespace
}  // namespace stelvan::test
