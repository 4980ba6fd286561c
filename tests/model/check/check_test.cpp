#include "model/check/check.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "model/check/fix.h"
#include "model/check/record_reader.h"
#include "model/check/standard_items.h"
#include "model/core/refusal.h"
#include "model/core/values.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

using model::Finding;
using model::Part;

model::Model demo() {
    return model::read(
        std::filesystem::path(STELVAN_BINARY_DIR "/share/stelvan/demo-template.mdb"));
}

/// Findings that ask for action, as "rule table field".
std::vector<std::string> serious(const model::Model& whole) {
    std::vector<std::string> found;
    for (const Finding& finding : model::check(whole))
        if (finding.severity != model::Severity::Note)
            found.push_back(finding.rule + " " + finding.table + " " + finding.field);
    return found;
}

void set(model::Table& table, std::size_t row, std::string_view column, jet::Value value) {
    table.rows.at(row).values.at(table.find(column).value()) = std::move(value);
}

using Strings = std::vector<std::string>;

TEST(Check, HasNothingToSayAgainstTheShippedModels) {
    for (const char* name : {"gem-template.mdb", "demo-template.mdb"}) {
        const std::string file = std::string(STELVAN_BINARY_DIR "/share/stelvan/") + name;
        EXPECT_EQ(serious(model::read(std::filesystem::path(file))), Strings()) << name;
        EXPECT_FALSE(model::needsAction(model::checkStructure(file, true))) << name;
    }
}

TEST(Check, NamesBothRowsOfOneIdentifierInOneTable) {
    model::Model whole = demo();
    model::Table& alarms = whole[Part::Alarms];
    const model::Row twin = alarms.rows.front();
    alarms.rows.insert(alarms.rows.begin(), twin);
    EXPECT_EQ(
        serious(whole),
        (Strings{"duplicate-id secs_alarm alm_id", "duplicate-id secs_alarm alm_id",
                 "duplicate-name secs_alarm alm_name", "duplicate-name secs_alarm alm_name"}));
}

TEST(Check, AMissingTableIsOneFinding) {
    model::Model whole = demo();
    whole[Part::Alarms] = {};
    EXPECT_EQ(serious(whole), Strings{"structure secs_alarm "});
}

TEST(Check, WithoutReportsNoLinkIsHeldForDangling) {
    model::Model whole = demo();
    whole[Part::Reports] = {};
    EXPECT_EQ(serious(whole), Strings{"structure secs_report "});
    EXPECT_THROW((void)model::fixesFor(whole), model::Refusal);
}

TEST(Check, AMissingColumnIsOneFinding) {
    model::Model whole = demo();
    std::string& name = whole[Part::CustomVariables].columns.at(
        whole[Part::CustomVariables].find("var_unit").value());
    name = "unit";
    EXPECT_EQ(serious(whole), Strings{"structure secs_cusvar var_unit"});
}

TEST(Check, AModelWithoutAnyTableIsNoFailure) {
    const Strings found = serious(model::Model{});
    EXPECT_EQ(found.size(), model::kParts - 1);
    EXPECT_TRUE(std::ranges::all_of(
        found, [](const std::string& one) { return one.starts_with("structure "); }));
}

TEST(Check, AFlagThatIsNoneIsAFault) {
    model::Model whole = demo();
    set(whole[Part::Alarms], 0, "alm_enable", std::string("maybe"));
    EXPECT_EQ(serious(whole), Strings{"invalid-field secs_alarm alm_enable"});
    set(whole[Part::Alarms], 0, "alm_enable", std::string("True"));
    EXPECT_EQ(serious(whole), Strings());
}

TEST(Check, IdentifiersMayBeOfAnyNumberType) {
    model::Model whole = demo();
    for (const Part part : {Part::CustomVariables, Part::ReportVariables}) {
        const std::size_t column = whole[part].find("var_id").value();
        for (model::Row& row : whole[part].rows)
            row.values[column] =
                static_cast<double>(model::wholeNumber(row.values[column]).value());
    }
    EXPECT_EQ(serious(whole), Strings());
}

TEST(Check, StandsByPartIdentifierAndRule) {
    const model::Model whole = model::read(model("gem.mdb"));
    const std::vector<Finding> findings = model::check(whole);
    const auto partOf = [&](const Finding& finding) {
        return std::ranges::find(whole.tables, finding.table, &model::Table::name);
    };
    EXPECT_TRUE(std::ranges::is_sorted(findings, [&](const Finding& left, const Finding& right) {
        if (partOf(left) != partOf(right)) return partOf(left) < partOf(right);
        const auto order = model::compareValues(left.id, right.id);
        return std::is_eq(order) ? left.rule < right.rule : std::is_lt(order);
    }));
    EXPECT_GT(findings.size(), 10U);
}

TEST(Check, EndsWhenProgressThrows) {
    const model::Model whole = demo();
    int calls = 0;
    const model::Progress stop = [&](std::string_view, std::size_t, std::size_t) {
        if (++calls == 3) throw std::runtime_error("stopped");
    };
    EXPECT_THROW((void)model::check(whole, {.progress = stop}), std::runtime_error);
    EXPECT_EQ(calls, 3);
}

TEST(RecordReader, ReadsARecordAsTheWindowShowsItUnderEdit) {
    model::Model whole = demo();
    model::Table& table = whole[Part::CustomVariables];
    set(table, 0, "var_min", std::string("NULL"));
    set(table, 0, "var_max", std::string("0"));
    set(table, 0, "var_unit", std::string("0"));
    model::RecordReader reader(Part::CustomVariables, table);
    const gem::Record& record = *reader.read(table.rows[0]);
    EXPECT_EQ(record.category(), gem::CSTVSV);
    EXPECT_EQ(record[gem::Control::txtVarID].text, "101");
    EXPECT_EQ(record[gem::Control::txtVarMin].text, "");
    EXPECT_EQ(record[gem::Control::txtVarMax].text, "");
    EXPECT_EQ(record[gem::Control::txtVarUnit].text, "");
    EXPECT_TRUE(record[gem::Control::txtVarMin].open);
    EXPECT_TRUE(record.formatKnown);
}

TEST(RecordReader, ClosesWhatTheFormatAndTheStandardClose) {
    const model::Model whole = demo();
    const auto read = [&](Part part, std::int64_t id) {
        model::RecordReader reader(part, whole[part]);
        const auto row = std::ranges::find_if(whole[part].rows, [&](const model::Row& one) {
            return whole[part].number(one, "var_id") == id;
        });
        return *reader.read(*row);
    };
    const gem::Record text = read(Part::CustomVariables, 110);
    EXPECT_FALSE(text[gem::Control::txtVarMin].open);
    EXPECT_TRUE(text[gem::Control::txtVarValue].open);
    const gem::Record standard = read(Part::StandardVariables, 2);
    EXPECT_FALSE(standard[gem::Control::txtVarName].open);
    EXPECT_TRUE(standard[gem::Control::txtVarValue].open);
}

TEST(StandardItems, AreThoseOfTheShippedTemplate) {
    const model::Model shipped =
        model::read(std::filesystem::path(STELVAN_BINARY_DIR "/share/stelvan/gem-template.mdb"));
    for (const Part part : {Part::StandardVariables, Part::StandardEvents, Part::Reports}) {
        const model::Table items = model::standardItems(part);
        ASSERT_EQ(items.rows.size(), shipped[part].rows.size());
        for (const model::Row& item : items.rows) {
            const std::string id = items.text(item, model::factsOf(part).id);
            const auto row = std::ranges::find_if(shipped[part].rows, [&](const model::Row& one) {
                return shipped[part].text(one, model::factsOf(part).id) == id;
            });
            ASSERT_NE(row, shipped[part].rows.end()) << id;
            for (const std::string& column : items.columns)
                EXPECT_EQ(items.text(item, column), shipped[part].text(*row, column)) << column;
        }
    }
    EXPECT_FALSE(model::standardItems(Part::Alarms).present);
}

TEST(Fix, FindsNothingToMendInASoundModel) {
    EXPECT_TRUE(model::fixesFor(demo()).empty());
}

TEST(Fix, LeavesDoublesOfDifferentPlacesAndOnlyMovesWhatIsOutOfPlace) {
    model::Model whole = demo();
    model::Table& links = whole[Part::EventReports];
    const model::Row first = links.rows.front();  // the only report of event 1
    links.rows.push_back(first);
    set(links, links.rows.size() - 1, "rpt_order", 9);
    model::sortRows(whole);
    const std::vector<model::Fix> fixes = model::fixesFor(whole);
    ASSERT_EQ(fixes.size(), 1U);
    EXPECT_EQ(fixes[0].rule, "order-gap");
    EXPECT_TRUE(fixes[0].erased.empty());
    ASSERT_EQ(fixes[0].set.size(), 1U);
    EXPECT_EQ(fixes[0].set[0].value, jet::Value(2));
}

}  // namespace
}  // namespace stelvan::test
