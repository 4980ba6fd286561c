// gemdb sml: which messages are written and which are not, how values are spelt, and what is listed
// instead of written wrong. That another reader reads all of it is tested elsewhere.
#include <gmock/gmock.h>

#include "tests/gemdb/command_test.h"

namespace stelvan::test {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class Sml : public CommandTest {
protected:
    /// A model of one report that event 101 sends, with variables of these formats and values.
    struct Value {
        std::string format;
        std::string value;
    };
    void makeModel(const std::vector<Value>& values) const {
        std::vector<std::string> statements = {
            "DELETE FROM secs_gemvar",
            "DELETE FROM secs_cusvar",
            "DELETE FROM secs_gemevent",
            "DELETE FROM secs_cusevent",
            "DELETE FROM secs_def_evt_rpt",
            "DELETE FROM secs_rpt_var",
            "DELETE FROM secs_report",
            "DELETE FROM secs_alarm",
            "INSERT INTO secs_cusevent (evt_id, evt_name, evt_enable) VALUES (101, 'E', 0)",
            "INSERT INTO secs_report (rpt_id, rpt_name) VALUES (7, 'R')",
            "INSERT INTO secs_def_evt_rpt (evt_id, rpt_id, rpt_order) VALUES (101, 7, 1)"};
        int id = 200;
        for (const Value& value : values) {
            const std::string number = std::to_string(++id);
            statements.push_back(
                "INSERT INTO secs_cusvar (var_id, var_name, var_type, "
                "var_format, var_val, var_parentkey, var_accessid) VALUES (" +
                number + ", 'V', 'SV', '" + value.format + "', '" + value.value + "', 0, 0)");
            statements.push_back(
                "INSERT INTO secs_rpt_var (rpt_id, var_id, var_order) VALUES "
                "(7, " +
                number + ", " + number + ")");
        }
        change(statements);
    }
    void change(const std::vector<std::string>& statements) const {
        std::vector<std::string> arguments = {"sql", file_};
        arguments.insert(arguments.end(), statements.begin(), statements.end());
        const ProgramRun run = runGemdb(arguments);
        ASSERT_EQ(run.status, 0) << run.err;
    }

    [[nodiscard]] ProgramRun sml() const {
        ProgramRun run = runGemdb({"sml", file_});
        EXPECT_EQ(run.status, 0) << run.err;
        return run;
    }

    /// How a value of a format is written in the sample message.
    [[nodiscard]] std::string written(const Value& value) const {
        makeModel({value});
        const std::vector<std::string> lines = splitLines(sml().out);
        return lines.at(lines.size() - 5).substr(8);
    }
};

TEST_F(Sml, WritesAWholeModelInTheOrderInWhichAHostSendsIt) {
    makeModel({{"U1", "5"}, {"A", "ok"}});
    change({"UPDATE secs_cusevent SET evt_enable = 1",
            "INSERT INTO secs_alarm (alm_id, alm_name, alm_enable) VALUES (3, 'Hot', 1)",
            "INSERT INTO secs_alarm (alm_id, alm_name, alm_enable) VALUES (4, 'Cold', 0)"});
    EXPECT_EQ(sml().out, R"(S2F33 W
<L [2]
  <U4 1>
  <L [1]
    <L [2]
      <U4 7>
      <L [2]
        <U4 201>
        <U4 202>
      >
    >
  >
>.

S2F35 W
<L [2]
  <U4 1>
  <L [1]
    <L [2]
      <U4 101>
      <L [1]
        <U4 7>
      >
    >
  >
>.

S2F37 W
<L [2]
  <BOOLEAN TRUE>
  <L [1]
    <U4 101>
  >
>.

S5F3 W
<L [2]
  <B 0x80>
  <U4 3>
>.

S6F11 W
<L [3]
  <U4 1>
  <U4 101>
  <L [1]
    <L [2]
      <U4 7>
      <L [2]
        <U1 5>
        <A "ok">
      >
    >
  >
>.
)");
    EXPECT_EQ(sml().err, "");
}

TEST_F(Sml, SpellsTheValuesOfEveryFormat) {
    EXPECT_EQ(written({"A", ""}), R"(<A "">)");
    EXPECT_EQ(written({"A", "say \"yes\""}), R"(<A "say " 0x22 "yes" 0x22>)");
    EXPECT_EQ(written({"A", "\"\""}), R"(<A 0x22 0x22>)");
    EXPECT_EQ(written({"A", "a\tb\r\n"}), R"(<A "a" 0x09 "b" 0x0D 0x0A>)");
    EXPECT_EQ(written({"A", "\xC3\xA4~\x7F"}), R"(<A 0xC3 0xA4 "~" 0x7F>)");
    EXPECT_EQ(written({"A", "NULL"}), R"(<A "">)");
    EXPECT_EQ(written({"B", "10"}), "<B 0x0A>");
    EXPECT_EQ(written({"B", "255"}), "<B 0xFF>");
    EXPECT_EQ(written({"BL", "true"}), "<BOOLEAN TRUE>");
    EXPECT_EQ(written({"BL", "False"}), "<BOOLEAN FALSE>");
    EXPECT_EQ(written({"F4", "1.5e-7"}), "<F4 0.00000015>");
    EXPECT_EQ(written({"F8", "1e22"}), "<F8 10000000000000000000000>");
    EXPECT_EQ(written({"F8", "-0.1"}), "<F8 -0.1>");
    EXPECT_EQ(written({"F8", "-0"}), "<F8 0>");
    EXPECT_EQ(written({"I1", "-128"}), "<I1 -128>");
    EXPECT_EQ(written({"U2", " 007 "}), "<U2 7>");
    EXPECT_EQ(written({"U2", "1e3"}), "<U2 1000>");
    EXPECT_EQ(written({"U4", "4294967295"}), "<U4 4294967295>");
    EXPECT_EQ(written({"U8", "9007199254740993"}), "<U8 9007199254740993>");
    EXPECT_EQ(written({"U8", "18446744073709551615"}), "<U8 18446744073709551615>");
    EXPECT_EQ(written({"I8", "-9223372036854775808"}), "<I8 -9223372036854775808>");
    EXPECT_EQ(written({" u1 ", "9"}), "<U1 9>");
}

TEST_F(Sml, GivesAValueThatDoesNotFitAsEmptyItemAndListsIt) {
    const std::vector<Value> values = {{"U1", "256"},        {"U1", "-1"},
                                       {"U1", "1.5"},        {"U1", "1 5"},
                                       {"U1", "five"},       {"I4", "2147483648"},
                                       {"U4", "4294967296"}, {"U8", "18446744073709551616"},
                                       {"U8", "-1"},         {"I8", "9223372036854775808"},
                                       {"F4", "1e39"},       {"F4", "7,5"},
                                       {"F8", "1e309"},      {"B", "256"},
                                       {"BL", "yes"}};
    for (const Value& value : values) {
        const std::string type = value.format == "BL" ? "BOOLEAN" : value.format;
        EXPECT_EQ(written(value), "<" + type + ">") << value.value;
        EXPECT_THAT(splitLines(sml().err),
                    Contains(HasSubstr("variable 201 (V): its value " + value.value + " is no " +
                                       value.format)));
    }
    EXPECT_EQ(written({"U1", "  "}), "<U1>");
    EXPECT_EQ(sml().err, "") << "no value is no fault";
    EXPECT_EQ(written({"X9", "5"}), "<L [0]>");
    EXPECT_THAT(sml().err, HasSubstr("its format X9 is none of SECS-II"));
}

TEST_F(Sml, WritesNoMessageThatWouldSayMoreThanItShould) {
    makeModel({});
    const std::string out = sml().out;
    EXPECT_EQ(out.substr(0, 7), "S6F11 W") << "an empty S2F33, S2F35 or S2F37 means all";
    EXPECT_THAT(sml().err, HasSubstr("report 7 (R): left out, since it carries no variable"));
    EXPECT_THAT(sml().err, HasSubstr("event 101 (E): report 7 left out, since it is"));
}

TEST_F(Sml, NamesOnlyWhatIsDefinedBefore) {
    makeModel({{"U1", "5"}});
    change({"INSERT INTO secs_def_evt_rpt (evt_id, rpt_id, rpt_order) VALUES (101, 8, 2)",
            "INSERT INTO secs_def_evt_rpt (evt_id, rpt_id, rpt_order) VALUES (102, 7, 1)",
            "INSERT INTO secs_rpt_var (rpt_id, var_id, var_order) VALUES (7, 999, 1)",
            "INSERT INTO secs_rpt_var (rpt_id, var_id, var_order) VALUES (9, 201, 1)"});
    const ProgramRun run = sml();
    for (const char* missing : {"<U4 8>", "<U4 102>", "<U4 999>", "<U4 9>"})
        EXPECT_THAT(run.out, Not(HasSubstr(missing)));
    EXPECT_THAT(run.err, HasSubstr("event 101 (E): report 8 left out, since there is none"));
    EXPECT_THAT(run.err, HasSubstr("report 7 (R): variable 999 left out, since there is none"));
    EXPECT_THAT(run.err, HasSubstr("event-report link 102: left out"));
    EXPECT_THAT(run.err, HasSubstr("report-variable link 9: left out"));
}

TEST_F(Sml, CountsADoubledLinkOnceAndKeepsOneWithAnotherPlace) {
    makeModel({{"U1", "5"}});
    const std::string before = sml().out;
    change({"INSERT INTO secs_def_evt_rpt (evt_id, rpt_id, rpt_order) VALUES (101, 7, 1)"});
    EXPECT_EQ(sml().out, before);
    change({"INSERT INTO secs_def_evt_rpt (evt_id, rpt_id, rpt_order) VALUES (101, 7, 2)"});
    EXPECT_THAT(sml().out, HasSubstr("      <L [2]\n        <U4 7>\n        <U4 7>\n"));
}

TEST_F(Sml, EndsListsThatHoldThemselves) {
    makeModel({{"L", "NULL"}, {"L", "NULL"}, {"U1", "5"}});
    change({"UPDATE secs_cusvar SET var_parentkey = 202, var_accessid = 2 WHERE var_id = 201",
            "UPDATE secs_cusvar SET var_parentkey = 201 WHERE var_id = 202",
            "UPDATE secs_cusvar SET var_parentkey = 202, var_accessid = 1 WHERE var_id = 203",
            "DELETE FROM secs_rpt_var WHERE var_id <> 201"});
    const ProgramRun run = sml();
    EXPECT_THAT(run.out, HasSubstr("        <L [1]\n          <L [1]\n            <U1 5>\n"));
    EXPECT_THAT(run.err, HasSubstr("variable 202 (V): its child 201 holds the list itself"));
}

TEST_F(Sml, EndsListsThatNestWithoutEnd) {
    std::vector<Value> lists(3000, {"L", "NULL"});
    makeModel(lists);
    change({"UPDATE secs_cusvar SET var_parentkey = var_id - 1 WHERE var_id > 201",
            "DELETE FROM secs_rpt_var WHERE var_id <> 201"});
    EXPECT_THAT(sml().err, HasSubstr("its children nest too deeply"));
}

TEST_F(Sml, LeavesOutVariablesThatAreNoneOfSecs) {
    makeModel({{"U1", "5"}, {"U1", "6"}});
    change({"UPDATE secs_cusvar SET var_type = 'XX' WHERE var_id = 202"});
    const ProgramRun run = sml();
    EXPECT_THAT(run.out, Not(HasSubstr("<U4 202>")));
    EXPECT_THAT(run.err, HasSubstr("variable 202 (V): left out, since its type is none of"));
    EXPECT_THAT(run.err, HasSubstr("report 7 (R): variable 202 left out, since it is"));
}

TEST_F(Sml, TellsAnIdentifierThatTwoShareOnce) {
    makeModel({{"U1", "5"}});
    change({"INSERT INTO secs_gemevent (evt_id, evt_name, evt_enable) VALUES (101, 'G', 0)"});
    const ProgramRun run = sml();
    EXPECT_EQ(run.out.find("S6F11"), run.out.rfind("S6F11"));
    EXPECT_THAT(run.err, HasSubstr("event 101 (E): left out, since another one has that"));
}

}  // namespace
}  // namespace stelvan::test
