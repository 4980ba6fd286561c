#include "model/core/write.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "jet/check/check.h"
#include "model/core/fit.h"
#include "model/core/refusal.h"
#include "tests/crash/table_parts.h"
#include "tests/model/compare/small_model.h"
#include "tests/support/models.h"
#include "tests/support/run_gemdb.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;
using model::Model;
using model::Part;
using model::Written;

class Write : public ::testing::Test {
protected:
    Model now() { return model::read(database_); }

    void expectHolds(const Model& wanted) {
        Model sorted = wanted;
        model::sortRows(sorted);
        const Model found = now();
        for (const model::PartFacts& facts : model::parts()) {
            const auto& left = sorted[facts.part].rows;
            const auto& right = found[facts.part].rows;
            ASSERT_EQ(left.size(), right.size()) << facts.table;
            for (std::size_t at = 0; at < left.size(); ++at)
                EXPECT_TRUE(std::ranges::equal(left[at].values, right[at].values, model::identical))
                    << facts.table << " row " << at;
        }
        EXPECT_FALSE(jet::anyFault(jet::check(file_, {})));
    }

    std::vector<std::string> refusalOf(const Model& wanted) {
        const std::string before = readFile(file_);
        try {
            (void)model::write(database_, wanted);
        } catch (const model::Refusal& refusal) {
            EXPECT_EQ(readFile(file_), before);
            return refusal.lines();
        }
        return {};
    }

    ScratchDir scratch_;
    fs::path file_ = scratch_.copyOf(test::model("gem.mdb"));
    jet::Database database_ = jet::Database::open(file_);
};

TEST_F(Write, WithoutAChangeLeavesTheBytes) {
    const std::string before = readFile(file_);
    EXPECT_EQ(model::write(database_, now()), Written{});
    EXPECT_EQ(readFile(file_), before);
}

TEST_F(Write, AddsChangesAndRemoves) {
    Model wanted = now();
    erase(wanted, Part::CustomEvents, 101);
    set(wanted, Part::CustomVariables, 101, "var_desc", text(std::string(3000, 'x')));
    addRow(wanted, Part::Reports,
           {{"rpt_id", 5000}, {"rpt_name", text("New")}, {"rpt_default", false}});
    EXPECT_EQ(model::write(database_, wanted), (Written{1, 1, 1}));
    expectHolds(wanted);
}

TEST_F(Write, ChangesOnlyTheColumnsThatDiffer) {
    Model wanted = now();
    set(wanted, Part::CustomVariables, 101, "var_val", text("7"));
    const model::WritePlan plan = model::planWrite(database_, wanted);
    const auto& changed = plan[Part::CustomVariables].changed;
    ASSERT_EQ(changed.size(), 1U);
    EXPECT_EQ(changed[0].columns,
              std::vector<std::size_t>{wanted[Part::CustomVariables].find("var_val").value()});
}

TEST_F(Write, NamesCanBeSwappedAndPassedOnInARing) {
    Model wanted = now();
    model::Table& events = wanted[Part::CustomEvents];
    const std::size_t name = events.find("evt_name").value();
    std::swap(events.rows[0].values[name], events.rows[1].values[name]);
    std::rotate(events.rows.begin() + 2, events.rows.begin() + 3, events.rows.begin() + 8);
    std::vector<jet::Value> names;
    for (std::size_t at = 2; at < 8; ++at) names.push_back(events.rows[at].values[name]);
    model::sortRows(wanted);
    for (std::size_t at = 2; at < 8; ++at) events.rows[at].values[name] = names[at - 2];
    EXPECT_EQ(model::write(database_, wanted), (Written{0, 8, 0}));
    expectHolds(wanted);
}

TEST_F(Write, ANameOfARemovedItemIsFree) {
    Model wanted = now();
    const jet::Value name =
        wanted[Part::CustomEvents].value(rowOf(wanted, Part::CustomEvents, 101), "evt_name");
    erase(wanted, Part::CustomEvents, 101);
    set(wanted, Part::CustomEvents, 102, "evt_name", name);
    EXPECT_EQ(model::write(database_, wanted), (Written{0, 1, 1}));
    expectHolds(wanted);
}

TEST_F(Write, RowsThatKnowWhereTheyWereReadCanSwapIdentifiers) {
    Model wanted = now();
    model::Table& events = wanted[Part::CustomEvents];
    const std::size_t id = events.find("evt_id").value();
    std::swap(events.rows[0].values[id], events.rows[1].values[id]);
    EXPECT_EQ(model::write(database_, wanted), (Written{0, 2, 0}));
    expectHolds(wanted);
}

TEST_F(Write, LinksThatOnlyMoveAreNotWrittenAnew) {
    Model wanted = now();
    setLinks(wanted, Part::EventReports, 101, {101, 102, 103});
    (void)model::write(database_, wanted);
    setLinks(wanted, Part::EventReports, 101, {103, 101, 102});
    const model::WritePlan plan = model::planWrite(database_, wanted);
    EXPECT_EQ(plan.rows(), (Written{0, 3, 0}));
}

TEST_F(Write, TakesPartInTheUnitThatIsOpen) {
    const std::string before = readFile(file_);
    {
        jet::UnitOfWork unit(database_);
        Model wanted = now();
        erase(wanted, Part::Alarms, 1);
        EXPECT_EQ(model::write(database_, std::move(wanted)), (Written{0, 0, 1}));
    }
    EXPECT_EQ(readFile(file_), before);
}

TEST_F(Write, ListsEveryValueThatDoesNotFitAndWritesNothing) {
    Model wanted = now();
    set(wanted, Part::CustomEvents, 101, "evt_name", text(std::string(101, 'x')));
    set(wanted, Part::CustomEvents, 102, "evt_id", text("one"));
    set(wanted, Part::CustomVariables, 101, "var_canadd", {});
    set(wanted, Part::Alarms, 2, "alm_set_ceid", 2.5);
    const std::vector<std::string> lines = refusalOf(wanted);
    ASSERT_EQ(lines.size(), 4U);
    const auto said = [&](const std::string& item, const std::string& column) {
        return std::ranges::any_of(lines, [&](const std::string& line) {
            return line.starts_with(item + ": ") && line.find(column) != std::string::npos;
        });
    };
    EXPECT_TRUE(said("secs_cusevent 101", "evt_name"));
    EXPECT_TRUE(said("secs_cusevent one", "evt_id"));
    EXPECT_TRUE(said("secs_cusvar 101", "var_canadd"));
    EXPECT_TRUE(said("secs_alarm 2", "alm_set_ceid"));
}

TEST_F(Write, RefusesWhatUniqueIndexesAndKeysDo) {
    Model wanted = now();
    set(wanted, Part::CustomEvents, 102, "evt_id", 101);
    addRow(wanted, Part::Reports, {{"rpt_name", text("NoId")}, {"rpt_default", false}});
    const std::vector<std::string> lines = refusalOf(wanted);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_TRUE(lines[0].starts_with("secs_cusevent 101: ")) << lines[0];
    EXPECT_NE(lines[1].find("rpt_id"), std::string::npos) << lines[1];
}

TEST_F(Write, NamesColumnsAndTablesThatTheFileDoesNotHave) {
    Model wanted = now();
    addRow(wanted, Part::Reports, {{"rpt_id", 5000}, {"rpt_author", text("x")}});
    const std::vector<std::string> lines = refusalOf(wanted);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_NE(lines[0].find("secs_report"), std::string::npos);
    EXPECT_NE(lines[0].find("rpt_author"), std::string::npos);
}

TEST_F(Write, LeavesPartsAndColumnsThatTheModelDoesNotHave) {
    const Model before = now();
    Model wanted = before;
    wanted[Part::Settings] = {};
    model::Table& events = wanted[Part::CustomEvents];
    const std::size_t at = events.find("evt_text").value();
    events.columns.erase(events.columns.begin() + static_cast<std::ptrdiff_t>(at));
    for (model::Row& row : events.rows)
        row.values.erase(row.values.begin() + static_cast<std::ptrdiff_t>(at));
    EXPECT_EQ(model::write(database_, wanted), Written{});
    expectHolds(before);
}

TEST_F(Write, AnEmptyTextAndANullAreTwo) {
    Model wanted = now();
    set(wanted, Part::CustomVariables, 101, "var_unit", {});
    set(wanted, Part::CustomVariables, 102, "var_unit", text(""));
    (void)model::write(database_, wanted);
    expectHolds(wanted);
}

/// Reports that cascade to their links, with their columns required.
class CascadingFile : public ::testing::Test {
protected:
    void SetUp() override {
        jet::Database database = jet::Database::create(file_, jet::DateTime{45000});
        jet::TableSpec reports{"secs_report", {}, {}};
        reports.columns = {column("rpt_id", jet::ColumnType::Long),
                           column("rpt_name", jet::ColumnType::Text, 100)};
        reports.indexes = {index("PrimaryKey", 0, true), index("rpt_name", 1)};
        reports.indexes[1].unique = true;
        database.createTable(reports);
        jet::TableSpec links{"secs_rpt_var", {}, {}};
        links.columns = {column("rpt_id", jet::ColumnType::Long),
                         column("var_id", jet::ColumnType::Long),
                         column("var_order", jet::ColumnType::Long)};
        links.indexes = {index("rpt_id", 0)};
        database.createTable(links);
        database.createRelationship({"ReportLinks",
                                     "secs_report",
                                     {"rpt_id"},
                                     "secs_rpt_var",
                                     {"rpt_id"},
                                     true,
                                     true,
                                     true});
        for (const int id : {1, 2, 3})
            database.table("secs_report")
                .insert(std::vector<jet::ColumnValue>{{0, id}, {1, "R" + std::to_string(id)}});
        for (const int id : {1, 2, 3})
            database.table("secs_rpt_var")
                .insert(std::vector<jet::ColumnValue>{{0, id}, {1, 10 * id}, {2, 1}});
    }

    ScratchDir scratch_;
    fs::path file_ = scratch_.path() / "gem.mdb";
};

TEST_F(CascadingFile, HoldsWhatIsWantedWhateverFollowed) {
    jet::Database database = jet::Database::open(file_);
    Model wanted = model::read(database);
    model::Table& reports = wanted[Part::Reports];
    std::swap(reports.rows[0].values[0], reports.rows[1].values[0]);  // by where they were read
    std::swap(reports.rows[0].values[1], reports.rows[2].values[1]);
    erase(wanted, Part::ReportVariables, 3);
    (void)model::write(database, wanted);
    model::sortRows(wanted);
    const Model found = model::read(database);
    for (const Part part : {Part::Reports, Part::ReportVariables}) {
        ASSERT_EQ(found[part].rows.size(), wanted[part].rows.size());
        for (std::size_t at = 0; at < wanted[part].rows.size(); ++at)
            EXPECT_EQ(found[part].rows[at].values, wanted[part].rows[at].values);
    }
    EXPECT_FALSE(jet::anyFault(jet::check(file_, {})));
}

TEST_F(CascadingFile, ALinkWithoutItsReportIsRefusedAtTheEnd) {
    const std::string before = readFile(file_);
    jet::Database database = jet::Database::open(file_);
    Model wanted = model::read(database);
    erase(wanted, Part::Reports, 2);
    EXPECT_THROW((void)model::write(database, wanted), jet::Error);
    EXPECT_EQ(readFile(file_), before);
}

}  // namespace
}  // namespace stelvan::test
