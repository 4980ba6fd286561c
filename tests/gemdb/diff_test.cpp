#include <nlohmann/json.hpp>
#include <pugixml.hpp>

#include "tests/gemdb/command_test.h"

namespace stelvan::test {
namespace {

class DiffTest : public CommandTest {
protected:
    void SetUp() override {
        CommandTest::SetUp();
        other_ = folder_.copyOf(model("gem.mdb"), "other.mdb");
    }

    void change(const std::vector<std::string>& statements) const {
        std::vector<std::string> arguments{"sql", other_};
        arguments.insert(arguments.end(), statements.begin(), statements.end());
        const ProgramRun run = runGemdb(arguments);
        ASSERT_EQ(run.status, 0) << run.err;
    }

    [[nodiscard]] ProgramRun diff(std::vector<std::string> options = {}) const {
        options.insert(options.begin(), {"diff", file_, other_});
        return runGemdb(options);
    }

    std::string other_;
};

TEST_F(DiffTest, OfEqualModelsPrintsNothing) {
    const ProgramRun run = diff();
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "");
}

TEST_F(DiffTest, TellsItemsFieldsAndLinksAndEndsWithOne) {
    change({"UPDATE secs_cusvar SET var_unit = 'Pa' WHERE var_id = 101",
            "DELETE FROM secs_alarm WHERE alm_id = 101",
            "INSERT INTO secs_report (rpt_id, rpt_name) VALUES (9000, 'Fresh')",
            "INSERT INTO secs_rpt_var (rpt_id, var_id, var_order) VALUES (9000, 101, 1)"});
    const ProgramRun run = diff();
    EXPECT_EQ(run.status, 1) << run.err;
    EXPECT_EQ(run.err, "");
    const std::vector<std::string> lines = splitLines(run.out);
    ASSERT_EQ(lines.size(), 6U) << run.out;
    EXPECT_EQ(lines[0].substr(0, 15), "~ variable 101 ");
    EXPECT_NE(lines[1].find("var_unit: "), std::string::npos);
    EXPECT_NE(lines[1].find(" -> \"Pa\""), std::string::npos);
    EXPECT_EQ(lines[2].substr(0, 12), "- alarm 101 ");
    EXPECT_EQ(lines[3], "+ report 9000 Fresh (secs_report)");
    EXPECT_EQ(lines[4].substr(0, 19), "    + variable 101 ");
    EXPECT_EQ(lines[5], "1 item added, 1 changed, 1 removed");
}

TEST_F(DiffTest, HasOneJsonObjectForEachItem) {
    change({"UPDATE secs_cusevent SET evt_text = NULL WHERE evt_id = 101",
            "DELETE FROM secs_def_evt_rpt WHERE evt_id = 101"});
    const ProgramRun run = diff({"--json"});
    EXPECT_EQ(run.status, 1) << run.err;
    const std::vector<std::string> lines = splitLines(run.out);
    ASSERT_EQ(lines.size(), 1U) << run.out;
    const auto item = nlohmann::json::parse(lines[0]);
    EXPECT_EQ(item.at("change"), "changed");
    EXPECT_EQ(item.at("kind"), "event");
    EXPECT_EQ(item.at("table"), "secs_cusevent");
    EXPECT_EQ(item.at("id"), 101);
    EXPECT_EQ(item.at("fields").at(0).at("field"), "evt_text");
    EXPECT_TRUE(item.at("fields").at(0).at("old").is_string());
    EXPECT_TRUE(item.at("fields").at(0).at("new").is_null());
    ASSERT_FALSE(item.at("links").empty());
    EXPECT_EQ(item.at("links").at(0).at("change"), "removed");
    EXPECT_TRUE(item.at("links").at(0).at("target").is_number());
}

TEST_F(DiffTest, HasNoColoursOutsideATerminal) {
    change({"UPDATE secs_cusvar SET var_unit = 'Pa' WHERE var_id = 101"});
    EXPECT_EQ(diff().out.find('\x1b'), std::string::npos);
}

TEST_F(DiffTest, ComparesExportedTexts) {
    const std::string texts = folder_.path() / "texts";
    ASSERT_EQ(runGemdb({"export", file_, texts}).status, 0);
    EXPECT_EQ(runGemdb({"diff", texts, other_}).out, "");
    change({"UPDATE secs_cusvar SET var_unit = 'Pa' WHERE var_id = 101"});
    EXPECT_EQ(runGemdb({"diff", texts, other_}).out, diff().out);
    EXPECT_EQ(runGemdb({"diff", other_, texts}).status, 1);
}

/// The page is well-formed XML but for its first line.
TEST_F(DiffTest, WritesAPageThatNeedsNothingBesideIt) {
    change({"UPDATE secs_cusvar SET var_desc = '<b>&\"' WHERE var_id = 101",
            "UPDATE secs_cusevent SET evt_text = NULL WHERE evt_id = 102",
            "DELETE FROM secs_alarm WHERE alm_id = 101",
            "INSERT INTO secs_report (rpt_id, rpt_name) VALUES (9000, 'Fresh')",
            "INSERT INTO secs_rpt_var (rpt_id, var_id, var_order) VALUES (9000, 101, 1)"});
    const std::string out = folder_.path() / "changes.html";
    const ProgramRun run = diff({"--html", out});
    EXPECT_EQ(run.status, 1) << run.err;
    EXPECT_EQ(run.out, "");
    const std::string page = readFile(out);
    pugi::xml_document document;
    const auto parsed = document.load_string(page.substr(page.find("<html")).c_str());
    ASSERT_TRUE(parsed) << parsed.description();
    EXPECT_EQ(document.select_nodes("//article").size(), 4U);
    EXPECT_EQ(document.select_nodes("//article[@class='added']//li[@class='added']").size(), 1U);
    EXPECT_EQ(document.select_nodes("//table[@class='counts']/tbody/tr").size(), 4U);
    EXPECT_STREQ(document.select_node("//td[.='<b>&\"']/@class").attribute().value(), "new");
    EXPECT_EQ(document.select_nodes("//td[@class='new']/i[.='no value']").size(), 1U);
    for (const auto& link : document.select_nodes("//a/@href")) {
        const std::string target = link.attribute().value();
        ASSERT_EQ(target[0], '#');
        EXPECT_TRUE(document.select_node(("//*[@id='" + target.substr(1) + "']").c_str()));
    }
    for (const char* foreign : {"http:", "https:", "src=", "url(", "@import"})
        EXPECT_EQ(page.find(foreign), std::string::npos) << foreign;
    EXPECT_EQ(diff({"--html", out, "--json"}).status, 2);
}

TEST_F(DiffTest, PageNeverTakesThePlaceOfAModel) {
    for (const std::string& file : {file_, std::string(other_)}) {
        const std::string before = readFile(file);
        expectFailure({"diff", file_, other_, "--html", file}, "is the model itself");
        EXPECT_EQ(readFile(file), before);
    }
}

TEST_F(DiffTest, APageThatCannotBeWrittenIsAFailure) {
    expectFailure({"diff", file_, other_, "--html", folder_.path() / "no" / "page.html"},
                  "/no/page.html");
}

TEST_F(DiffTest, WhatCannotBeReadIsNamedAndEndsWithTwo) {
    const std::string missing = folder_.path() / "missing.mdb";
    expectFailure({"diff", file_, missing}, missing);
    expectFailure({"diff", missing, file_}, missing);
    const std::string damaged = model("refused/damaged_rows/gem.mdb");
    expectFailure({"diff", file_, damaged}, damaged);
    const std::string text = model("refused/text_file/gem.mdb");
    expectFailure({"diff", file_, text}, text);
    expectFailure({"diff", file_});
}

}  // namespace
}  // namespace stelvan::test
