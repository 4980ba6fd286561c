// The statements that write, as the program composes them, on files of every make; another reader
// agrees.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>

#include "jet/check/check.h"
#include "tests/db/gem_file.h"

namespace stelvan::db {
namespace {

using test::failureOf;
using test::GemFile;
using Texts = std::vector<std::string>;

/// Names as every layout spells them.
std::string lowerCase(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

class WritingStatements : public testing::TestWithParam<stelvan::test::ModelFile> {
protected:
    void SetUp() override { file_ = std::make_unique<GemFile>(GetParam().path()); }
    void TearDown() override {
        if (file_ == nullptr) return;
        for (const jet::Finding& finding : jet::check(file_->path())) {
            EXPECT_TRUE(finding.isNote) << "page " << finding.page << ": " << finding.text;
        }
    }
    const GemFile& file() { return *file_; }
    Texts column(const std::string& name, const std::string& id) {
        return file().column("SELECT " + name + " FROM secs_cusvar WHERE var_id = " + id);
    }

private:
    std::unique_ptr<GemFile> file_;
};

TEST_P(WritingStatements, AChildIsLinkedByItsParentAndPosition) {
    file().execute("UPDATE secs_cusvar SET var_parentkey=" + std::string("227") +
                   " WHERE var_id=" + "101");
    file().execute("UPDATE secs_cusvar SET var_accessid=" + std::string("17") +
                   " WHERE var_id=" + "101");
    EXPECT_EQ(column("var_parentkey", "101"), Texts{"227"});
    EXPECT_EQ(column("var_accessid", "101"), Texts{"17"});
    const auto children = file().column(
        "SELECT var_id FROM secs_cusvar WHERE var_parentkey = 227 ORDER BY "
        "var_accessid");
    EXPECT_EQ(children.back(), "101");
}

TEST_P(WritingStatements, TheWordsTrueAndFalseSetAndClearAFlag) {
    file().execute("UPDATE secs_cusvar SET var_allowduplicates=True WHERE var_id=101");
    EXPECT_TRUE(toFlag(file()
                           .records("SELECT var_allowduplicates FROM secs_cusvar WHERE var_id=101")
                           ->field("var_allowduplicates")));
    EXPECT_EQ(
        file()
            .column(
                "SELECT var_id FROM secs_cusvar WHERE var_id = 101 AND var_allowduplicates = True")
            .size(),
        1U);
    file().execute("UPDATE secs_cusvar SET var_allowduplicates=False WHERE var_id=101");
    EXPECT_FALSE(toFlag(file()
                            .records("SELECT var_allowduplicates FROM secs_cusvar WHERE var_id=101")
                            ->field("var_allowduplicates")));
}

TEST_P(WritingStatements, DeletingAListVariableLeavesItsChildrenAtTheTop) {
    const auto children = file().column("SELECT var_id FROM secs_cusvar WHERE var_parentkey = 227");
    ASSERT_GE(children.size(), 3U);
    file().execute(std::string("UPDATE secs_cusvar ") + " SET var_parentkey = 0 " +
                   " WHERE var_parentkey = " + "227");
    EXPECT_TRUE(file().column("SELECT var_id FROM secs_cusvar WHERE var_parentkey = 227").empty());
    for (const std::string& child : children) EXPECT_EQ(column("var_parentkey", child), Texts{"0"});
    EXPECT_EQ(file().records("secs_cusvar")->recordCount(), 300);
}

TEST_P(WritingStatements, LinksOfAnEventAndOfAReportAreDeleted) {
    file().execute(std::string("Delete FROM secs_def_evt_rpt ") + "WHERE evt_id = " + "162");
    EXPECT_TRUE(file().rows("SELECT * FROM secs_def_evt_rpt WHERE evt_id = 162").empty());
    const std::size_t left = file().rows("SELECT * FROM secs_def_evt_rpt").size();
    const std::size_t linked =
        file().rows("SELECT * FROM secs_def_evt_rpt WHERE rpt_id = 126").size();
    file().execute(std::string("Delete FROM secs_def_evt_rpt ") + "WHERE rpt_id = " + "126");
    EXPECT_EQ(file().rows("SELECT * FROM secs_def_evt_rpt").size(), left - linked);
    file().execute(std::string("Delete FROM secs_rpt_var ") + "WHERE rpt_id = " + "126");
    EXPECT_TRUE(file().rows("SELECT * FROM secs_rpt_var WHERE rpt_id = 126").empty());
    EXPECT_EQ(file().rows("SELECT * FROM secs_rpt_var").size(), 231U);
}

TEST_P(WritingStatements, InsertTakesListedColumnsAndDefaultsForTheRest) {
    file().execute(
        "INSERT INTO secs_cusvar (var_id, var_name, var_type) VALUES (3001, 'it''s new', 'SV')");
    EXPECT_EQ(column("var_name", "3001"), Texts{"it's new"});
    EXPECT_EQ(file().records("select * from secs_cusvar")->recordCount(), 301);
    EXPECT_EQ(failureOf([this] {
                  file().execute("INSERT INTO secs_cusvar (nothing) VALUES (1)");
              }).number(),
              -2147217900);
    EXPECT_EQ(failureOf([this] {
                  file().execute("INSERT INTO secs_cusvar (var_id) VALUES (1, 2)");
              }).number(),
              -2147217900);
}

TEST_P(WritingStatements, AnUpdateOfManyRowsIsAllOrNothing) {
    const auto before = file().column("SELECT var_id FROM secs_cusvar");
    // One identifier for all: the second row is refused, and the first must not stay.
    EXPECT_EQ(
        failureOf([this] { file().execute("UPDATE secs_cusvar SET var_id = 5000"); }).number(),
        -2147467259);
    EXPECT_EQ(file().column("SELECT var_id FROM secs_cusvar"), before);
    file().execute("UPDATE secs_cusvar SET var_group = 'all' WHERE var_type = 'EC'");
    for (const auto& group :
         file().column("SELECT var_group FROM secs_cusvar WHERE var_type = 'EC'")) {
        EXPECT_EQ(group, "all");
    }
}

TEST_P(WritingStatements, WhatAColumnCannotTakeIsRefusedByItsName) {
    const base::RunTimeError number = failureOf(
        [this] { file().execute("UPDATE secs_cusvar SET var_id = 'abc' WHERE var_id = 101"); });
    EXPECT_EQ(number.number(), -2147217913);
    EXPECT_NE(lowerCase(number.what()).find("secs_cusvar.var_id"), std::string::npos);
    const base::RunTimeError text = failureOf([this] {
        file().execute("UPDATE secs_cusvar SET var_name = '" + std::string(300, 'x') +
                       "' WHERE var_id = 101");
    });
    EXPECT_EQ(text.number(), -2147217833);
    EXPECT_NE(lowerCase(text.what()).find("secs_cusvar.var_name"), std::string::npos);
}

TEST_P(WritingStatements, AUnitThatIsNotCommittedLeavesNothing) {
    {
        UnitOfWork unit(file().path());
        file().execute("DELETE FROM secs_alarm");
        EXPECT_EQ(file().records("secs_alarm")->recordCount(), 0);
        {
            UnitOfWork inner(file().path());
            file().execute("DELETE FROM secs_report");
            inner.commit();
        }
    }
    EXPECT_EQ(file().records("secs_alarm")->recordCount(), 90);
    EXPECT_EQ(file().records("secs_report")->recordCount(), 60);
    EXPECT_NE(failureOf([this] {
                  UnitOfWork unit(file().path());
                  file().execute("DELETE FROM secs_report");
                  { UnitOfWork given_up(file().path()); }
                  unit.commit();
              }).number(),
              0);
    EXPECT_EQ(file().records("secs_report")->recordCount(), 60);
}

/// The table's cells as another reader of such files prints them.
Texts exported(const std::string& path, const std::string& table) {
    const std::string command = "mdb-export -H -Q -d '|' '" + path + "' " + table + " 2>/dev/null";
    Texts lines;
    std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::array<char, 4096> buffer;
    while (pipe != nullptr &&
           fgets(buffer.data(), static_cast<int>(buffer.size()), pipe.get()) != nullptr) {
        lines.emplace_back(buffer.data());
        lines.back().erase(lines.back().find_last_not_of('\n') + 1);
    }
    return lines;
}

TEST_P(WritingStatements, AnotherReaderSeesTheSameLinks) {
    if (std::system("command -v mdb-export >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "mdb-export is absent";
    const auto links = file().records("SELECT * FROM secs_def_evt_rpt WHERE evt_id = 162");
    for (; !links->eof(); links->moveNext()) links->deleteCurrent();
    for (const char* report : {"126", "110", "140"}) {
        links->addNew();
        links->setField("evt_id", Value(std::string("162")));
        links->setField("rpt_id", Value(std::string(report)));
        links->setField("rpt_order", Value(links->recordCount()));
        links->update();
    }
    Texts found;
    for (const std::string& line : exported(file().path(), "secs_def_evt_rpt")) {
        if (line.find("162") == 0) found.push_back(line);
    }
    std::sort(found.begin(), found.end());
    EXPECT_EQ(found, (Texts{"162|110|2", "162|126|1", "162|140|3"}));
}

INSTANTIATE_TEST_SUITE_P(EveryMake, WritingStatements, testing::ValuesIn(test::everyLayout()),
                         [](const auto& file) { return stelvan::test::label(file.param); });

TEST(WritingFlags, TrueIsMinusOneInANumberColumnAndACheckBoxWritesOne) {
    STELVAN_GEM_FILE("gem_int_flags.mdb");
    file.execute("UPDATE secs_cusvar SET var_allowduplicates=True WHERE var_id=101");
    EXPECT_EQ(file.column("SELECT var_allowduplicates FROM secs_cusvar WHERE var_id=101"),
              Texts{"-1"});
    const auto events = file.records("select * from secs_cusevent");
    events->setField("evt_enable", Value(std::int32_t{1}));
    events->update();
    EXPECT_EQ(toText(file.records("select * from secs_cusevent")->field("evt_enable")), "1");
}

}  // namespace
}  // namespace stelvan::db
