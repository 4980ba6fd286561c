// gemdb sedd: the dictionary keeps the rules of its standard for every model, holds what the tables
// hold, and says what it leaves out.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <pugixml.hpp>

#include "tests/gemdb/command_test.h"
#include "tests/gemdb/dictionary_rules.h"
#include "tests/support/model_names.h"

namespace stelvan::test {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class Sedd : public CommandTest {
protected:
    void change(const std::vector<std::string>& statements) const {
        std::vector<std::string> arguments = {"sql", file_};
        arguments.insert(arguments.end(), statements.begin(), statements.end());
        const ProgramRun run = runGemdb(arguments);
        ASSERT_EQ(run.status, 0) << run.err;
    }

    /// A status variable of the format I4 beside those of the model.
    void addVariable900() const {
        change(
            {"INSERT INTO secs_cusvar (var_id, var_name, var_type, var_format, var_min, "
             "var_max, var_unit, var_desc, var_parentkey, var_accessid) VALUES (900, 'A < B', "
             "'SV', 'I4', '-310000', '310000', 'um', 'one', 0, 0)"});
    }

    /// Of the copy, or of another model; the run is kept.
    const pugi::xml_node dictionaryOf(const std::string& file,
                                      const std::vector<std::string>& options = {}) {
        std::vector<std::string> arguments = {"sedd", file};
        arguments.insert(arguments.end(), options.begin(), options.end());
        run_ = runGemdb(arguments);
        EXPECT_EQ(run_.status, 0) << run_.err;
        EXPECT_TRUE(document_.load_string(run_.out.c_str())) << run_.out.substr(0, 300);
        return document_.document_element();
    }
    const pugi::xml_node dictionary(const std::vector<std::string>& options = {}) {
        return dictionaryOf(file_, options);
    }

    static std::vector<std::string> texts(const pugi::xml_node& node, const char* path) {
        std::vector<std::string> found;
        for (const pugi::xpath_node& one : node.select_nodes(path))
            found.emplace_back(one.node().text().get());
        return found;
    }

    [[nodiscard]] std::vector<std::string> notes() const { return splitLines(run_.err); }

    pugi::xml_document document_;
    ProgramRun run_;
};

TEST_F(Sedd, KeepsTheRulesForEveryModel) {
    std::vector<std::string> files = {STELVAN_BINARY_DIR "/gem.mdb",
                                      STELVAN_BINARY_DIR "/demo/gem.mdb"};
    for (const char* name : {"gem_large.mdb", "gem_spellings.mdb", "gem_few_columns.mdb"})
        files.push_back(model(name));
    for (const ModelFile& file : byEveryMaker(gemNames()))
        if (const auto path = file.path(); !path.empty()) files.push_back(path);
    for (const std::string& file : files) {
        dictionaryOf(file);
        EXPECT_THAT(breachesOf(document_), IsEmpty()) << file;
    }
}

TEST_F(Sedd, IsWellFormedForAnotherReader) {
    if (std::system("command -v xmllint > /dev/null 2>&1") != 0)
        GTEST_SKIP() << "xmllint is not installed";
    const std::string out = folder_.path() / "out.xml";
    ASSERT_EQ(runGemdb({"sedd", file_, "-o", out}).status, 0);
    EXPECT_EQ(std::system(("xmllint --noout '" + out + "'").c_str()), 0);
}

TEST_F(Sedd, HoldsEveryVariableEventAndAlarm) {
    const auto root = dictionary();
    const auto count = [&](const std::string& statement) {
        return std::stoul(select(statement).at(0).substr(std::string("{\"n\":").size()));
    };
    const auto rows = [&](const std::string& type) {
        return count("SELECT COUNT(*) AS n FROM secs_gemvar WHERE var_type = '" + type + "'") +
               count("SELECT COUNT(*) AS n FROM secs_cusvar WHERE var_type = '" + type + "'");
    };
    EXPECT_EQ(root.select_nodes("//DataVariable").size(), rows("DV"));
    EXPECT_EQ(root.select_nodes("//StatusVariable").size(), rows("SV"));
    EXPECT_EQ(root.select_nodes("//EquipmentConstant").size(), rows("EC"));
    EXPECT_EQ(root.select_nodes("//CollectionEvent").size(),
              count("SELECT COUNT(*) AS n FROM secs_gemevent") +
                  count("SELECT COUNT(*) AS n FROM secs_cusevent"));
    EXPECT_EQ(root.select_nodes("//Alarm").size(), count("SELECT COUNT(*) AS n FROM secs_alarm"));
}

TEST_F(Sedd, TellsAVariableWithUnitFormatAndLimits) {
    addVariable900();
    const auto node = dictionary().select_node("//StatusVariable[SVID='900']").node();
    std::vector<std::string> parts;
    for (const pugi::xml_node& child : node.children())
        parts.push_back(std::string(child.name()) + "=" + child.text().get());
    EXPECT_THAT(parts, ElementsAre("SVID=900", "SVNAME=A < B", "UNITS=um", "Format=I4",
                                   "MinValue=-310000", "MaxValue=310000", "Description=one"));
}

TEST_F(Sedd, TellsAConstantWithItsDefaultBeforeTheFormat) {
    change(
        {"INSERT INTO secs_cusvar (var_id, var_name, var_type, var_format, var_min, var_max, "
         "var_unit, var_defaultval, var_val, var_parentkey, var_accessid) VALUES "
         "(900, 'Limit', 'EC', 'U8', '0', '18446744073709551615', 'pcs', "
         "'9007199254740993', '1', 0, 0)"});
    const auto node = dictionary().select_node("//EquipmentConstant[ECID='900']").node();
    std::vector<std::string> parts;
    for (const pugi::xml_node& child : node.children())
        parts.push_back(std::string(child.name()) + "=" + child.text().get());
    EXPECT_THAT(parts,
                ElementsAre("ECID=900", "ECNAME=Limit", "ECMIN=0", "ECMAX=18446744073709551615",
                            "ECDEF=9007199254740993", "UNITS=pcs", "Format=U8", "Description="));
}

TEST_F(Sedd, TellsAListByTheItemsOfItsChildrenWhichAreVariablesToo) {
    change(
        {"INSERT INTO secs_cusvar (var_id, var_name, var_type, var_format, var_parentkey, "
         "var_accessid) VALUES (900, 'Pair', 'SV', 'L', 0, 0)",
         "INSERT INTO secs_cusvar (var_id, var_name, var_type, var_format, var_parentkey, "
         "var_accessid) VALUES (901, 'Second', 'SV', 'F8', 900, 2)",
         "INSERT INTO secs_cusvar (var_id, var_name, var_type, var_format, var_parentkey, "
         "var_accessid) VALUES (902, 'First', 'SV', 'BL', 900, 1)"});
    const auto root = dictionary();
    EXPECT_THAT(texts(root, "//StatusVariable[SVID='900']/Format"), ElementsAre("L900"));
    const auto list = root.select_node("//VariableFormat[FormatName='L900']/SECSData").node();
    const auto items = list.child("smn:LST");
    ASSERT_TRUE(items);
    EXPECT_STREQ(items.first_child().name(), "smn:BOO");
    EXPECT_STREQ(items.first_child().attribute("name").value(), "First");
    EXPECT_STREQ(items.last_child().name(), "smn:FP8");
    EXPECT_THAT(texts(root, "//StatusVariable[SVID='901' or SVID='902']/SVNAME"),
                ElementsAre("Second", "First"));
    EXPECT_THAT(breachesOf(document_), IsEmpty());
}

TEST_F(Sedd, LeavesOutAndListsWhatLeadsNowhere) {
    const auto root = dictionary();
    EXPECT_THAT(texts(root, "//RPTIDList/RPTID[.='7777']"), IsEmpty());
    EXPECT_THAT(notes(), Contains(HasSubstr("event 164")));
    EXPECT_THAT(notes(), Contains(HasSubstr("report 7777 left out, since there is none")));
    EXPECT_THAT(notes(), Contains(HasSubstr("variable 8888 left out, since there is none")));
    EXPECT_THAT(notes(), Contains(AllOf(HasSubstr("report 140 "), HasSubstr("no variable"))));
}

TEST_F(Sedd, DefinesReportsThatAreMarkedOrLinked) {
    change({"DELETE FROM secs_def_evt_rpt", "UPDATE secs_report SET rpt_default = 0",
            "UPDATE secs_report SET rpt_default = 1 WHERE rpt_id = 101",
            "INSERT INTO secs_def_evt_rpt (evt_id, rpt_id, rpt_order) VALUES (101, 103, 1)",
            "INSERT INTO secs_def_evt_rpt (evt_id, rpt_id, rpt_order) VALUES (101, 102, 2)"});
    const auto root = dictionary();
    EXPECT_THAT(texts(root, "//DefaultReportDefinition/RPTID"), ElementsAre("101", "102", "103"));
    EXPECT_THAT(texts(root, "//EventReportLink[CEID='101']//RPTID"), ElementsAre("103", "102"));
}

TEST_F(Sedd, HasNoSectionsOfReportsAndLinksWhereThereAreNone) {
    change({"DELETE FROM secs_rpt_var"});
    const auto root = dictionary();
    EXPECT_FALSE(root.child("DefaultReportDefinitions"));
    EXPECT_FALSE(root.child("DefaultEventReportLinks"));
    EXPECT_THAT(breachesOf(document_), IsEmpty());
}

TEST_F(Sedd, KeepsALongAlarmTextWhole) {
    const std::string text(121, 'x');
    const std::string id = "101";
    change({"UPDATE secs_alarm SET alm_text = '" + text + "' WHERE alm_id = " + id});
    const auto root = dictionary();
    EXPECT_THAT(texts(root, "//Alarm[ALID='101']/ALTX"), ElementsAre(""));
    EXPECT_THAT(texts(root, "//Alarm[ALID='101']/Description"), ElementsAre(text));
    EXPECT_THAT(notes(), Contains(HasSubstr("longer than 120 characters")));
    EXPECT_THAT(breachesOf(document_), IsEmpty());
}

TEST_F(Sedd, LeavesOutValuesThatAreNone) {
    addVariable900();
    change({"UPDATE secs_cusvar SET var_max = 'many' WHERE var_id = 900"});
    EXPECT_THAT(texts(dictionary(), "//StatusVariable[SVID='900']/MaxValue"), IsEmpty());
    EXPECT_THAT(notes(), Contains(HasSubstr("MaxValue left out, since many is no I4")));
}

TEST_F(Sedd, GivesFormatsThatAreNoneAsAny) {
    addVariable900();
    change({"UPDATE secs_cusvar SET var_format = 'X9' WHERE var_id = 900"});
    EXPECT_THAT(texts(dictionary(), "//StatusVariable[SVID='900']/Format"), ElementsAre("ANY"));
    EXPECT_THAT(breachesOf(document_), IsEmpty());
}

TEST_F(Sedd, ReplacesWhatXmlCannotHold) {
    addVariable900();
    change({"UPDATE secs_cusvar SET var_desc = 'bell\x07line\r\nend' WHERE var_id = 900"});
    EXPECT_THAT(texts(dictionary(), "//StatusVariable[SVID='900']/Description"),
                ElementsAre("bell\xEF\xBF\xBDline\nend"));
    EXPECT_THAT(notes(), Contains(HasSubstr("holds characters that XML cannot")));
}

TEST_F(Sedd, TakesTheHeaderFromTheModelAndFromOptions) {
    const std::string shipped = STELVAN_BINARY_DIR "/gem.mdb";
    const auto root = dictionaryOf(shipped);
    EXPECT_THAT(texts(root, "//MDLN"), ElementsAre("EQUIPMENT"));
    EXPECT_THAT(texts(root, "//SOFTREV"), ElementsAre("1.0.0"));
    EXPECT_THAT(texts(root, "//EquipmentID"), IsEmpty());
    EXPECT_THAT(notes(), IsEmpty());
    const auto named = dictionaryOf(
        shipped, {"--mdln", "ETCHER", "--softrev", "7", "--equipment-id", "E1", "--supplier",
                  "Maker & Co", "--date", "2024-02-29", "--description", "dry", "--alcd", "-1"});
    std::vector<std::string> parts;
    for (const pugi::xml_node& child : named.child("SEDDHeader").children())
        parts.push_back(std::string(child.name()) + "=" + child.text().get());
    EXPECT_THAT(parts,
                ElementsAre("MDLN=ETCHER", "SOFTREV=7", "EquipmentID=E1", "Supplier=Maker & Co",
                            "CreateDate=2024-02-29", "Description=dry"));
}

TEST_F(Sedd, GivesTheSameBytesForTheSameModel) {
    const std::vector<std::string> arguments = {"sedd", file_, "--date", "2026-01-31"};
    EXPECT_EQ(runGemdb(arguments).out, runGemdb(arguments).out);
}

TEST_F(Sedd, RefusesAHeaderThatCannotStand) {
    const std::string out = folder_.path() / "out.xml";
    const auto refused = [&](const std::string& option, const std::string& text) {
        expectFailure({"sedd", file_, "-o", out, option, text}, option);
        EXPECT_FALSE(std::filesystem::exists(out));
    };
    refused("--mdln", std::string(21, 'm'));
    refused("--softrev", std::string(21, 'm'));
    refused("--supplier", std::string(81, 'm'));
    refused("--description", std::string(4097, 'm'));
    refused("--supplier", "a\x01");
    refused("--date", "2026-02-30");
    refused("--date", "1/31/2026");
    refused("--date", "2026-01-31 10:00");
    refused("--alcd", "128");
    const std::string wide = "\xC3\xA4";
    std::string twenty;
    for (int i = 0; i < 20; ++i) twenty += wide;
    EXPECT_THAT(texts(dictionary({"--mdln", twenty}), "//MDLN"), ElementsAre(twenty));
}

/// The rules themselves: each of these dictionaries breaks one.
TEST_F(Sedd, IsNotTakenForRightWhereItBreaksARule) {
    addVariable900();
    dictionary();
    const std::string right = run_.out;
    const auto breachesWith = [&](const std::string& old, const std::string& now) {
        std::string text = right;
        const std::size_t at = text.find(old);
        EXPECT_NE(at, std::string::npos) << old;
        text.replace(at, old.size(), now);
        pugi::xml_document changed;
        EXPECT_TRUE(changed.load_string(text.c_str()));
        return breachesOf(changed).size();
    };
    EXPECT_GT(breachesWith("<SVID>900</SVID>", "<SVID>1</SVID>"), 0U);
    EXPECT_GT(breachesWith("<SVID>900</SVID>", "<SVID>-1</SVID>"), 0U);
    EXPECT_GT(breachesWith("<Format>I4</Format>", "<Format>I5</Format>"), 0U);
    EXPECT_GT(breachesWith("<FormatName>I4</FormatName>", "<FormatName>I2</FormatName>"), 0U);
    EXPECT_GT(breachesWith("<ALCD>0</ALCD>", ""), 0U);
    EXPECT_GT(breachesWith("<ALTX>", "<ALTX>" + std::string(120, 'a')), 0U);
    EXPECT_GT(breachesWith("<Alarms>", "<Alarms><Event />"), 0U);
    EXPECT_GT(breachesWith("smn:ASC", "smn:TXT"), 0U);
    EXPECT_GT(breachesWith("<CanBeDeleted>true</CanBeDeleted>", ""), 0U);
    EXPECT_GT(
        breachesWith("xmlns:sedd=\"urn:semi-org:xsd.SEDD\"", "xmlns=\"urn:semi-org:xsd.SEDD\""),
        0U);
    EXPECT_EQ(breachesWith("<ALCD>0</ALCD>", "<ALCD>-128</ALCD>"), 0U);
}

}  // namespace
}  // namespace stelvan::test
