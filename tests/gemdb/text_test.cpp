// gemdb export, import and text on whole models, as a user runs them.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>

#include "jet/database.h"
#include "tests/gemdb/command_test.h"
#include "tests/gemdb/sorted_json.h"
#include "tests/support/model_names.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;

std::map<std::string, std::string> textsOf(const fs::path& folder) {
    std::map<std::string, std::string> texts;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        texts[entry.path().filename()] = readFile(entry.path());
    return texts;
}

void replaceIn(const fs::path& file, const std::string& from, const std::string& to) {
    std::string text = readFile(file);
    const std::size_t at = text.find(from);
    ASSERT_NE(at, std::string::npos) << from;
    std::ofstream(file, std::ios::binary) << text.replace(at, from.size(), to);
}

bool runs(const std::string& command) {
    return std::system((command + " > /dev/null 2>&1").c_str()) == 0;
}

std::string label(const ::testing::TestParamInfo<ModelFile>& info) {
    return test::label(info.param);
}

class TextOfModel : public ::testing::TestWithParam<ModelFile> {
protected:
    void SetUp() override {
        STELVAN_NEEDS_FILE(GetParam());
        file_ = folder_.copyOf(GetParam().path());
    }

    /// Without any row; tables, columns and indexes stay.
    [[nodiscard]] fs::path emptied() const {
        const fs::path copy = folder_.copyOf(file_, "emptied.mdb");
        jet::Database database = jet::Database::open(copy);
        jet::UnitOfWork unit(database);
        for (const std::string& name : database.tableNames()) {
            jet::Table& table = database.table(name);
            std::vector<jet::RowId> rows;
            for (const auto row = table.scan({}); row->next();) rows.push_back(row->rowId());
            for (const jet::RowId row : rows) table.erase(row);
        }
        unit.commit();
        return copy;
    }

    [[nodiscard]] std::string at(const char* name) const { return folder_.path() / name; }

    ScratchDir folder_;
    fs::path file_;
};

TEST_P(TextOfModel, ExportImportExportGivesTheSameBytes) {
    const ProgramRun first = runGemdb({"export", file_, at("a")});
    ASSERT_EQ(first.status, 0) << first.err;
    const fs::path other = emptied();
    const ProgramRun imported = runGemdb({"import", at("a"), other});
    ASSERT_EQ(imported.status, 0) << imported.err;
    ASSERT_EQ(runGemdb({"export", other, at("b")}).status, 0);
    EXPECT_EQ(textsOf(at("a")), textsOf(at("b")));
    EXPECT_EQ(runGemdb({"check", "--structure", other}).status, 0);
    EXPECT_EQ(sortedJson(splitLines(runGemdb({"dump", file_}).out)),
              sortedJson(splitLines(runGemdb({"dump", other}).out)));
    EXPECT_EQ(runGemdb({"import", at("a"), file_}).out, "no changes\n");
}

TEST_P(TextOfModel, AnotherReaderFindsTheImportedRowsInTheFile) {
    if (!runs("command -v mdb-export")) GTEST_SKIP() << "mdb-export is not installed";
    ASSERT_EQ(runGemdb({"export", file_, at("a")}).status, 0);
    const fs::path other = emptied();
    ASSERT_EQ(runGemdb({"import", at("a"), other}).status, 0);
    for (const std::string& table : splitLines(runGemdb({"tables", file_}).out)) {
        const auto rows = [&](const fs::path& path) {
            const std::string text =
                runProgram("/bin/sh", {"-c", "mdb-export -H -R '\x1E' '" + path.string() + "' '" +
                                                 table + "'"})
                    .out;
            std::vector<std::string> found;
            for (std::size_t begin = 0, end = 0; (end = text.find('\x1E', begin)) != text.npos;
                 begin = end + 1)
                found.push_back(text.substr(begin, end - begin));
            std::ranges::sort(found);
            return found;
        };
        EXPECT_EQ(rows(file_), rows(other)) << table;
    }
}

/// A reader of another make prints what it understood, in the words of gemdb dump.
constexpr const char* kOtherReader = R"(
import json, sys, tomllib
links = {"events.toml": ("reports", "secs_def_evt_rpt", "evt_id", "rpt_id", "rpt_order"),
         "reports.toml": ("variables", "secs_rpt_var", "rpt_id", "var_id", "var_order")}
for path in sys.argv[1:]:
    with open(path, "rb") as file:
        text = tomllib.load(file)
    key, table, owner, target, place = links.get(path.rsplit("/")[-1], (None,) * 5)
    columns = text.pop("columns")
    def known(name, wanted):
        return next((c for c in columns.get(name, []) if c.lower() == wanted), wanted)
    for name, items in text.items():
        for item in items:
            for at, link in enumerate(item.pop(key, []), 1):
                row = dict(link) if isinstance(link, dict) else {known(table, target): link}
                row[known(table, owner)] = item[known(name, owner)]
                row.setdefault(known(table, place), at)
                print(json.dumps([table, row], sort_keys=True))
            print(json.dumps([name, item], sort_keys=True))
)";

TEST_P(TextOfModel, AnotherTomlReaderReadsTheSameValues) {
    if (!runs("python3 -c 'import tomllib'")) GTEST_SKIP() << "python3 has no tomllib";
    ASSERT_EQ(runGemdb({"export", file_, at("a")}).status, 0);
    std::vector<std::string> arguments = {"-c", kOtherReader};
    for (const auto& [name, text] : textsOf(at("a"))) arguments.push_back(at("a") + "/" + name);
    const ProgramRun other = runProgram("/usr/bin/python3", arguments);
    ASSERT_EQ(other.status, 0) << other.err;

    std::vector<nlohmann::json> ours;
    for (const std::string& line : splitLines(runGemdb({"dump", file_}).out)) {
        nlohmann::json row = nlohmann::json::parse(line);
        std::string table = row["table"];
        std::ranges::transform(table, table.begin(),
                               [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        if (table == "var_limit") table = "limits";
        nlohmann::json values = nlohmann::json::object();
        for (const auto& [column, value] : row["row"].items())
            if (!value.is_null()) values[column] = value;
        ours.push_back({table, values});
    }
    std::vector<nlohmann::json> theirs;
    for (const std::string& line : splitLines(other.out))
        theirs.push_back(nlohmann::json::parse(line));
    std::ranges::sort(ours);
    std::ranges::sort(theirs);
    ASSERT_EQ(ours.size(), theirs.size());
    for (std::size_t at = 0; at < ours.size(); ++at) ASSERT_EQ(ours[at], theirs[at]);
}

TEST_P(TextOfModel, TheStreamIsTomlToo) {
    if (!runs("python3 -c 'import tomllib'")) GTEST_SKIP() << "python3 has no tomllib";
    const ProgramRun run = runGemdb({"text", file_});
    ASSERT_EQ(run.status, 0) << run.err;
    std::ofstream(at("text.toml"), std::ios::binary) << run.out;
    EXPECT_TRUE(runs("python3 -c 'import sys, tomllib; tomllib.load(open(sys.argv[1], \"rb\"))' '" +
                     at("text.toml") + "'"));
}

INSTANTIATE_TEST_SUITE_P(Models, TextOfModel,
                         ::testing::ValuesIn(byEveryMaker(
                             {"gem.mdb", "gem_int_flags.mdb", "gem_empty.mdb", "gem_edges.mdb",
                              "gem_spellings.mdb", "gem_few_columns.mdb", "gem_large.mdb"})),
                         label);

class TextCommands : public CommandTest {
protected:
    void SetUp() override {
        CommandTest::SetUp();
        ASSERT_EQ(runGemdb({"export", file_, texts_}).status, 0);
        before_ = readFile(file_);
    }

    /// One line that holds all of these; nothing is written.
    void expectRefused(const std::vector<std::string>& parts) const {
        const ProgramRun run = runGemdb({"import", texts_, file_});
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(splitLines(run.err).size(), 1U) << run.err;
        for (const std::string& part : parts)
            EXPECT_NE(run.err.find(part), std::string::npos) << part << " in " << run.err;
        EXPECT_EQ(readFile(file_), before_);
        EXPECT_EQ(runGemdb({"import", "--dry-run", texts_, file_}).err, run.err);
    }

    fs::path texts_ = folder_.path() / "texts";
    std::string before_;
};

TEST_F(TextCommands, TheShippedModelsComeBackToo) {
    for (const char* name : {"gem-template.mdb", "demo-template.mdb"}) {
        const fs::path shipped = fs::path(STELVAN_BINARY_DIR) / "share/stelvan" / name;
        const fs::path copy = folder_.copyOf(shipped, name);
        const std::string a = folder_.path() / (std::string(name) + ".a");
        const std::string b = folder_.path() / (std::string(name) + ".b");
        ASSERT_EQ(runGemdb({"export", copy, a}).status, 0);
        for (const std::string& table : splitLines(runGemdb({"tables", copy}).out))
            ASSERT_EQ(runGemdb({"sql", copy, "DELETE FROM " + table}).status, 0);
        ASSERT_EQ(runGemdb({"import", a, copy}).status, 0);
        ASSERT_EQ(runGemdb({"export", copy, b}).status, 0);
        EXPECT_EQ(textsOf(a), textsOf(b)) << name;
    }
}

TEST_F(TextCommands, ImportPrintsEachChangeAndADryRunTheSameInOtherWords) {
    replaceIn(texts_ / "events.toml", "evt_name = \"Sc1AlarmSet\"", "evt_name = \"Sc1Alarm\"");
    replaceIn(texts_ / "variables.toml", "var_unit = \"NULL\"\n", "");
    const ProgramRun dry = runGemdb({"import", "--dry-run", texts_, file_});
    EXPECT_EQ(dry.status, 0) << dry.err;
    EXPECT_EQ(readFile(file_), before_);
    const ProgramRun run = runGemdb({"import", texts_, file_});
    EXPECT_EQ(run.status, 0) << run.err;
    const std::vector<std::string> would = splitLines(dry.out);
    const std::vector<std::string> did = splitLines(run.out);
    ASSERT_EQ(would.size(), did.size());
    EXPECT_TRUE(std::equal(would.begin(), would.end() - 1, did.begin()));
    EXPECT_EQ(would.back(), "2 items would be changed");
    EXPECT_EQ(did.back(), "2 items changed");
    EXPECT_NE(run.out.find("\"Sc1AlarmSet\""), std::string::npos) << run.out;
    EXPECT_EQ(select("SELECT evt_name FROM secs_cusevent WHERE evt_id = 101"),
              std::vector<std::string>{R"({"evt_name":"Sc1Alarm"})"});
    EXPECT_EQ(select("SELECT var_id FROM secs_gemvar WHERE var_unit IS NULL").size(), 1U);
}

TEST_F(TextCommands, LinksFollowTheirLists) {
    replaceIn(texts_ / "reports.toml", "variables = [\n", "variables = [\n  8888,\n");
    ASSERT_EQ(runGemdb({"import", texts_, file_}).status, 0);
    const auto rows = select(
        "SELECT rpt_id, var_order FROM secs_rpt_var WHERE var_id = 8888 "
        "AND var_order = 1");
    EXPECT_EQ(rows.size(), 1U);
}

TEST_F(TextCommands, PlacesAreToldWhereTheyAreNotOneToN) {
    ASSERT_EQ(runGemdb({"sql", file_,
                        "INSERT INTO secs_def_evt_rpt (evt_id, rpt_id, rpt_order) "
                        "VALUES (170, 101, 7)",
                        "INSERT INTO secs_def_evt_rpt (evt_id, rpt_id, rpt_order) "
                        "VALUES (9999, 101, 1)",
                        "INSERT INTO secs_def_evt_rpt (evt_id, rpt_id) VALUES (170, 102)"})
                  .status,
              0);
    const std::string text = runGemdb({"text", file_}).out;
    EXPECT_NE(text.find("reports = [\n  { rpt_id = 101, rpt_order = 7 },\n]\n"), std::string::npos);
    EXPECT_NE(text.find("[[secs_def_evt_rpt]]\nevt_id = 9999\nrpt_id = 101\nrpt_order = 1\n"),
              std::string::npos);
    EXPECT_NE(text.find("[[secs_def_evt_rpt]]\nevt_id = 170\nrpt_id = 102\n\n"), std::string::npos);
}

TEST_F(TextCommands, FaultsNameFileLineAndItem) {
    replaceIn(texts_ / "events.toml", "[[secs_cusevent]]\nevt_id = 101\nevt_name = \"",
              "[[secs_cusevent]]\nevt_id = 101\nevt_name = \"" + std::string(100, 'x'));
    expectRefused({"events.toml:", "secs_cusevent 101", "evt_name", "100 characters"});
    replaceIn(texts_ / "events.toml", "evt_id = 101\n", "evt_id = 101\nevt_nmae = \"x\"\n");
    expectRefused({"events.toml:", "secs_cusevent 101", "evt_nmae"});
}

TEST_F(TextCommands, AMergeConflictIsNamedWithItsLine) {
    const std::vector<std::string> lines = splitLines(readFile(texts_ / "alarms.toml"));
    replaceIn(texts_ / "alarms.toml", "alm_group = \"", "<<<<<<< ours\nalm_group = \"");
    const auto at = std::ranges::find_if(
        lines, [](const std::string& line) { return line.starts_with("alm_group"); });
    expectRefused({"alarms.toml:" + std::to_string(at - lines.begin() + 1) + ": ", "secs_alarm 1",
                   "conflict"});
}

TEST_F(TextCommands, AMissingFileIsNamed) {
    fs::remove(texts_ / "reports.toml");
    expectRefused({"reports.toml"});
}

TEST_F(TextCommands, LimitsAreWantedWhereTheFileHasThem) {
    fs::remove(texts_ / "limits.toml");
    expectRefused({"limits.toml", "var_limit"});
    ASSERT_EQ(runGemdb({"export", file_, texts_}).status, 0);
    std::ofstream(texts_ / "notes.toml") << "this is [ no model";
    EXPECT_EQ(runGemdb({"import", texts_, file_}).out, "no changes\n");
}

TEST_F(TextCommands, ATableThatTheTextsDoNotTellOfIsNotEmptied) {
    std::string text = readFile(texts_ / "alarms.toml");
    std::ofstream(texts_ / "alarms.toml") << "[columns]\n";
    expectRefused({"alarms.toml", "secs_alarm"});
}

TEST_F(TextCommands, AFileThatLacksAColumnOrCannotHoldANullSaysWhich) {
    const fs::path few = folder_.copyOf(model("gem_few_columns.mdb"), "few.mdb");
    const std::string before = readFile(few);
    const ProgramRun lacks = runGemdb({"import", texts_, few});
    EXPECT_EQ(lacks.status, 2);
    EXPECT_NE(lacks.err.find("var_canadd"), std::string::npos) << lacks.err;
    EXPECT_NE(lacks.err.find("alm_set"), std::string::npos) << lacks.err;
    EXPECT_EQ(lacks.err.find(texts_.string()), std::string::npos) << lacks.err;
    EXPECT_NE(lacks.err.find("few.mdb"), std::string::npos) << lacks.err;
    EXPECT_EQ(readFile(few), before);
    replaceIn(texts_ / "variables.toml", "var_canadd = false\n", "");
    expectRefused({"variables.toml:", "secs_gemvar 1", "var_canadd", "Null"});
}

TEST_F(TextCommands, FilesThatCannotBeReadOrWrittenAreLeftAsTheyAre) {
    expectFailure({"export", folder_.path() / "absent.mdb", texts_}, "absent.mdb");
    expectFailure({"import", folder_.path() / "absent", file_}, "absent");
    expectFailure({"import", texts_, folder_.path() / "absent.mdb"}, "absent.mdb");
    expectFailure({"export", file_, "/proc/no-such-folder"}, "/proc/no-such-folder");
    for (const char* kind : {"access97", "text_file", "truncated", "damaged_rows"}) {
        const fs::path refused =
            folder_.copyOf(model(std::string("refused/") + kind + "/gem.mdb"), "refused.mdb");
        const std::string bytes = readFile(refused);
        expectFailure({"export", refused, folder_.path() / "none"}, "refused.mdb");
        expectFailure({"text", refused}, "refused.mdb");
        expectFailure({"import", texts_, refused}, "refused.mdb");
        EXPECT_EQ(readFile(refused), bytes) << kind;
        EXPECT_FALSE(fs::exists(folder_.path() / "none"));
        fs::remove(refused);
    }
    EXPECT_EQ(readFile(file_), before_);
}

TEST_F(TextCommands, ADatabaseWithoutAModelIsNone) {
    const fs::path other = folder_.copyOf(model("shapes/relationships.mdb"), "other.mdb");
    expectFailure({"export", other, folder_.path() / "none"}, "other.mdb");
    expectFailure({"import", texts_, other}, "other.mdb");
}

TEST_F(TextCommands, AFileThatAnotherWritesIsLocked) {
    replaceIn(texts_ / "events.toml", "evt_enable = true", "evt_enable = false");
    {
        jet::Database database = jet::Database::open(file_);
        const jet::UnitOfWork held(database);
        expectFailure({"import", texts_, file_}, "gem.mdb");
    }
    EXPECT_EQ(readFile(file_), before_);
    EXPECT_EQ(runGemdb({"import", texts_, file_}).status, 0);
}

TEST_F(TextCommands, AFileThatMayNotBeWrittenIsLeftAsItIs) {
    replaceIn(texts_ / "events.toml", "evt_enable = true", "evt_enable = false");
    fs::permissions(file_, fs::perms::owner_read | fs::perms::others_read);
    // The owner of everything may write everywhere, so somebody else tries.
    const std::string gemdb = STELVAN_BINARY_DIR "/gemdb";
    const std::string command = "'" + gemdb + "' import '" + texts_.string() + "' '" + file_ + "'";
    const bool root = ::geteuid() == 0;
    if (root) fs::permissions(folder_.path(), fs::perms::all);
    const auto runAsUser = [&](const std::string& line) {
        if (!root) return runProgram("/bin/sh", {"-c", line});
        return runProgram("/usr/bin/setpriv", {"--reuid=65534", "--regid=65534", "--clear-groups",
                                               "sh", "-c", line});
    };
    if (runAsUser("'" + gemdb + "' --version").status != 0)
        GTEST_SKIP() << "no other user can run the program";
    const ProgramRun run = runAsUser(command);
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(splitLines(run.err).size(), 1U) << run.err;
    EXPECT_NE(run.err.find("gem.mdb"), std::string::npos) << run.err;
    EXPECT_EQ(readFile(file_), before_);
}

TEST_F(TextCommands, GitShowsReadableDifferencesOfTheFileItself) {
    if (!runs("git --version")) GTEST_SKIP() << "git is not installed";
    const std::string dir = folder_.path() / "repository";
    fs::create_directory(dir);
    fs::copy_file(file_, dir + "/gem.mdb");
    const std::string git = "cd '" + dir + "' && git -c user.name=x -c user.email=x@example.org ";
    ASSERT_TRUE(runs("cd '" + dir + "' && git init -q"));
    ASSERT_TRUE(runs("cd '" + dir +
                     "' && git config diff.gem.textconv '" STELVAN_BINARY_DIR "/gemdb text'"));
    std::ofstream(dir + "/.gitattributes") << "*.mdb diff=gem\n";
    ASSERT_TRUE(runs(git + "add . && " + git + "commit -q -m first"));
    ASSERT_EQ(runGemdb({"sql", dir + "/gem.mdb",
                        "UPDATE secs_cusevent SET evt_name = 'Renamed' WHERE evt_id = 101"})
                  .status,
              0);
    const ProgramRun diff = runProgram("/bin/sh", {"-c", "cd '" + dir + "' && git diff"});
    EXPECT_NE(diff.out.find("-evt_name = \"Sc1AlarmSet\"\n+evt_name = \"Renamed\"\n"),
              std::string::npos)
        << diff.out << diff.err;
}

}  // namespace
}  // namespace stelvan::test
