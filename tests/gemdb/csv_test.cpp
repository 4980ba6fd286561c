#include <algorithm>
#include <filesystem>
#include <fstream>

#include "tests/gemdb/command_test.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;

class CsvTest : public CommandTest {
protected:
    [[nodiscard]] std::string write(const std::string& text,
                                    const std::string& name = "table.csv") const {
        const std::string path = folder_.path() / name;
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }
    [[nodiscard]] ProgramRun import(const std::string& text, bool dryRun = false) const {
        std::vector<std::string> arguments{"import", "--csv", write(text), file_};
        if (dryRun) arguments.emplace_back("--dry-run");
        return runGemdb(arguments);
    }
    /// All is refused, with these lines, and the file stays as it was.
    void expectRefusal(const std::string& text, const std::vector<std::string>& lines) const {
        const std::string before = readFile(file_);
        const ProgramRun run = import(text);
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.out, "");
        std::vector<std::string> wanted;
        for (const std::string& line : lines)
            wanted.push_back("gemdb: " + (folder_.path() / "table.csv").string() + ", " + line);
        EXPECT_EQ(splitLines(run.err), wanted);
        EXPECT_EQ(readFile(file_), before);
    }
};

std::vector<std::string> sheets(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
}

TEST_F(CsvTest, ExportsOneTableForEachCategory) {
    const std::string tables = folder_.path() / "tables";
    ASSERT_EQ(runGemdb({"export", "--csv", file_, tables}).status, 0);
    EXPECT_EQ(
        sheets(tables),
        (std::vector<std::string>{
            "custom-alarms.csv", "custom-collection-events.csv", "custom-data-variables.csv",
            "custom-equipment-constants.csv", "custom-reports.csv", "custom-status-variables.csv",
            "gem-collection-events.csv", "gem-data-variables.csv", "gem-equipment-constants.csv",
            "gem-status-variables.csv", "protocol-settings.csv"}));
    const auto events = splitLines(readFile(tables + "/custom-collection-events.csv"));
    EXPECT_EQ(events[0],
              "\xEF\xBB\xBF"
              "Event ID,Event Name,Event Group,Event Desc,Event Enabled,Event Reports\r");
    EXPECT_EQ(events[1], "101,Sc1AlarmSet,Sc1,An alarm of Sc1 was set,1,105 101\r");
}

class CsvModelsTest : public ::testing::TestWithParam<const char*> {};

TEST_P(CsvModelsTest, WhatWasExportedChangesNothing) {
    const ScratchDir folder;
    const std::string file = folder.copyOf(model(GetParam()));
    const std::string tables = folder.path() / "tables";
    const std::string before = readFile(file);
    ASSERT_EQ(runGemdb({"export", "--csv", file, tables}).status, 0);
    for (const std::string& name : sheets(tables)) {
        if (!name.starts_with("custom-")) continue;
        const ProgramRun run = runGemdb({"import", "--csv", tables + "/" + name, file});
        EXPECT_EQ(run.status, 0) << name << ": " << run.err;
        EXPECT_EQ(run.out, "no changes\n") << name;
    }
    EXPECT_EQ(readFile(file), before);
}

INSTANTIATE_TEST_SUITE_P(Models, CsvModelsTest,
                         ::testing::Values("gem.mdb", "gem_empty.mdb", "gem_edges.mdb",
                                           "gem_int_flags.mdb", "gem_spellings.mdb",
                                           "gem_few_columns.mdb"));

TEST_F(CsvTest, AddsAndChangesItemsAsTheEditorStoresThem) {
    const std::string table =
        "\xEF\xBB\xBFVariable ID;Variable Type;Variable Name;Variable Group;Variable Desc;"
        "Variable Format;Variable Min;Variable Max;Variable Default Value\r\n"
        "9003;SV; Fresh ;G;\"one\r\ntwo\";U1;;9;5\r\n"
        "9004;dv;Fresher;G;'=1+1;A;;;'=SUM(A1)\r\n";
    const ProgramRun dry = import(table, true);
    EXPECT_EQ(dry.status, 0) << dry.err;
    EXPECT_EQ(splitLines(dry.out).back(), "2 items would be added");
    EXPECT_TRUE(select("SELECT var_id FROM secs_cusvar WHERE var_id = 9003").empty());
    const ProgramRun run = import(table);
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(splitLines(run.out).back(), "2 items added");
    EXPECT_EQ(select("SELECT var_name, var_type, var_min, var_max, var_unit, var_val, "
                     "var_parentkey, var_canadd FROM secs_cusvar WHERE var_id = 9003"),
              (std::vector<std::string>{
                  R"({"var_name":"Fresh","var_type":"SV","var_min":"0","var_max":"9",)"
                  R"("var_unit":"NULL","var_val":"0","var_parentkey":0,"var_canadd":false})"}));
    EXPECT_EQ(select("SELECT var_type, var_desc, var_defaultval, var_val FROM secs_cusvar "
                     "WHERE var_id = 9004"),
              (std::vector<std::string>{R"({"var_type":"DV","var_desc":"=1+1",)"
                                        R"x("var_defaultval":"=SUM(A1)","var_val":"NULL"})x"}));
    EXPECT_EQ(import(table).out, "no changes\n");
    EXPECT_EQ(splitLines(import("Variable ID,Variable Max\n9003,8\n").out).back(),
              "1 item changed");
    EXPECT_EQ(runGemdb({"check", "--structure", "--strict", file_}).out, "");
}

TEST_F(CsvTest, ListsEveryBadCellAndWritesNothing) {
    expectRefusal(
        "Variable ID,Variable Type,Variable Name,Variable Group,Variable Desc,Variable Format,"
        "Variable Max\n"
        "101,SV,two words,G,D,U1,9\n"
        "9001,SV,loadport2state,G,D,U1,300\n"
        "9002,XX,Fresh,G,D,U1,1\n"
        "9003,SV,Good,G,D,U1,1\n"
        "20,SV,Low,G,D,U1,1\n"
        "9004,SV,Large,G,D,U4,99999999999\n",
        {"line 2: Variable Name: Cannot contain space in between.",
         "line 3: Variable Name: Name already exists. Please use other name.",
         "line 3: Variable Max: Valid range for U1 is 0 to 255.",
         "line 4: Variable Type: must be SV, DV or EC",
         "line 6: Variable ID: Valid range is 101 to 2147483647.",
         "line 7: Variable Max: Overflow"});
}

TEST_F(CsvTest, WhatTheEditorKeepsClosedIsRefused) {
    expectRefusal("Variable ID,Variable Min\n102,5\n",
                  {"line 2: Variable Min: cannot be changed in this item, or with its format"});
    expectRefusal("Variable ID,Variable Type\n101,DV\n",
                  {"line 2: Variable Type: cannot be changed; it is SV"});
    expectRefusal("Report ID,Report Name\n1,Mine\n",
                  {"line 2: Report Name: cannot be changed in this item, or with its format"});
}

TEST_F(CsvTest, LinksAreIdentifiersInOrder) {
    const ProgramRun run = import(
        "Report ID,Report Name,Report Desc,Report Variables\n"
        "9000,Fresh,D,103 101 102\n");
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(select("SELECT var_id, var_order FROM secs_rpt_var WHERE rpt_id = 9000 "
                     "ORDER BY var_order"),
              (std::vector<std::string>{R"({"var_id":103,"var_order":1})",
                                        R"({"var_id":101,"var_order":2})",
                                        R"({"var_id":102,"var_order":3})"}));
    const ProgramRun event = import("Event ID,Event Reports\n101,9000 105\n");
    EXPECT_EQ(event.status, 0) << event.err;
    EXPECT_EQ(select("SELECT rpt_id FROM secs_def_evt_rpt WHERE evt_id = 101 ORDER BY rpt_order"),
              (std::vector<std::string>{R"({"rpt_id":9000})", R"({"rpt_id":105})"}));
    expectRefusal("Report ID,Report Name,Report Desc,Report Variables\n9001,Empty,D,\n",
                  {"line 2: Report Variables: Must contain item."});
    expectRefusal("Event ID,Event Reports\n101,105 7777 x\n",
                  {"line 2: Event Reports: there is no report 7777",
                   "line 2: Event Reports: there is no report x"});
}

TEST_F(CsvTest, AListThatIsNoneAnyMoreReleasesItsChildren) {
    const auto held = select(
        "SELECT var_parentkey FROM secs_cusvar WHERE var_parentkey <> 0 ORDER BY var_parentkey");
    ASSERT_FALSE(held.empty());
    const std::string list = held[0].substr(17, held[0].size() - 18);
    const ProgramRun run = import("Variable ID,Variable Format\n" + list + ",A\n");
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_TRUE(select("SELECT var_id FROM secs_cusvar WHERE var_parentkey = " + list).empty());
}

TEST_F(CsvTest, TheFileNameTellsTheCategoryWhereNoColumnDoes) {
    const std::string text =
        "Variable ID,Variable Name,Variable Group,Variable Desc,Variable Format\n"
        "9001,Fresh,G,D,A\n";
    expectRefusal(text, {"line 2: Variable Type: must be SV, DV or EC"});
    const std::string named = write(text, "custom-equipment-constants.csv");
    const ProgramRun run = runGemdb({"import", "--csv", named, file_});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(select("SELECT var_type FROM secs_cusvar WHERE var_id = 9001"),
              (std::vector<std::string>{R"({"var_type":"EC"})"}));
}

TEST_F(CsvTest, ATableThatIsNoneIsRefused) {
    expectRefusal("Variable ID,Colour\n101,red\n", {"line 1: Colour: no such column"});
    expectRefusal("Variable ID,Variable Min\n101\n", {"line 2: has 1 cells; the header has 2"});
    expectRefusal("Variable ID,Variable Max\n101,1\n101,2\n",
                  {"line 3: Variable ID: 101 stands in line 2, too"});
    expectRefusal("Variable ID,Variable Max\n101,\"1\n",
                  {"line 2: the quote that begins a cell here is not closed"});
    for (const char* text : {"", "Colour\nred\n", "Setting Name,Setting Value\nDeviceID,1\n"}) {
        const ProgramRun run = import(text);
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(splitLines(run.err).size(), 1U) << run.err;
    }
    EXPECT_NE(import("Variable ID,Variable Desc\n101,\xFC\n").err.find("is not UTF-8"),
              std::string::npos);
}

TEST_F(CsvTest, FilesThatCannotBeReadOrWrittenEndWithTwo) {
    const std::string table = write("Variable ID,Variable Max\n101,8\n");
    const std::string missing = folder_.path() / "missing";
    expectFailure({"import", "--csv", missing, file_}, missing);
    expectFailure({"import", "--csv", table, missing}, missing);
    expectFailure({"import", "--csv", table, model("refused/text_file/gem.mdb")}, "text_file");
    expectFailure({"import", "--csv", table, model("refused/damaged_rows/gem.mdb")}, "damaged");
    expectFailure({"export", "--csv", missing, missing + "2"}, missing);
    EXPECT_FALSE(fs::exists(missing + "2"));
}

}  // namespace
}  // namespace stelvan::test
