#include "model/compare/merge.h"

#include <gtest/gtest.h>

#include <functional>

#include "model/compare/differences.h"
#include "tests/model/compare/small_model.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

using model::differences;
using model::Merge;
using model::Model;
using model::Part;
using model::Side;

/// Event 201 sends reports 12 and 13; 12 carries variables 101 and 102.
Model start() {
    Model model;
    for (const int id : {101, 102, 103, 104})
        addRow(model, Part::CustomVariables,
               {{"var_id", id},
                {"var_name", text("V" + std::to_string(id))},
                {"var_max", text("500")},
                {"var_unit", jet::Value()}});
    for (const int id : {201, 202})
        addRow(model, Part::CustomEvents,
               {{"evt_id", id}, {"evt_name", text("E" + std::to_string(id))}});
    for (const int id : {12, 13, 14})
        addRow(model, Part::Reports,
               {{"rpt_id", id}, {"rpt_name", text("R" + std::to_string(id))}});
    addRow(model, Part::Settings, {{"set_field", text("DeviceID")}, {"set_value", text("1")}});
    addRow(model, Part::Limits, {{"limit_id", 1}, {"var_id", 101}, {"upperdb", text("9")}});
    setLinks(model, Part::EventReports, 201, {12, 13});
    setLinks(model, Part::ReportVariables, 12, {101, 102});
    setLinks(model, Part::ReportVariables, 13, {103});
    return model;
}

class MergeTest : public ::testing::Test {
protected:
    Model base = start(), ours = start(), theirs = start(), wanted = start();

    void onBoth(const std::function<void(Model&)>& change) {
        change(ours);
        change(theirs);
        change(wanted);
    }
    void onOurs(const std::function<void(Model&)>& change) {
        change(ours);
        change(wanted);
    }
    void onTheirs(const std::function<void(Model&)>& change) {
        change(theirs);
        change(wanted);
    }

    [[nodiscard]] Merge merge(std::optional<Side> decide = std::nullopt) const {
        return model::merge(base, ours, theirs, decide);
    }

    /// No conflict, the wanted model, and the same with the sides swapped.
    void expectWanted() const {
        const Merge result = merge();
        EXPECT_TRUE(result.conflicts.empty()) << result.conflicts[0].item;
        EXPECT_TRUE(differences(result.merged, wanted).empty());
        const Merge swapped = model::merge(base, theirs, ours, std::nullopt);
        EXPECT_TRUE(swapped.conflicts.empty());
        EXPECT_TRUE(differences(swapped.merged, wanted).empty());
    }

    /// One conflict with these words; decided for a side, that side's model.
    void expectConflict(const std::string& item, const std::string& what, const std::string& base_,
                        const std::string& ours_, const std::string& theirs_) const {
        for (const auto decide : {std::optional<Side>(), std::optional(Side::Theirs)}) {
            const Merge result = merge(decide);
            ASSERT_EQ(result.conflicts.size(), 1U);
            EXPECT_EQ(result.conflicts[0].item, item);
            EXPECT_EQ(result.conflicts[0].what, what);
            EXPECT_EQ(result.conflicts[0].base, base_);
            EXPECT_EQ(result.conflicts[0].ours, ours_);
            EXPECT_EQ(result.conflicts[0].theirs, theirs_);
        }
        EXPECT_TRUE(differences(merge(Side::Ours).merged, ours).empty());
        EXPECT_TRUE(differences(merge(Side::Theirs).merged, theirs).empty());
    }
};

void setMax(Model& model, int id, const char* value) {
    set(model, Part::CustomVariables, id, "var_max", text(value));
}

void addVariable(Model& model, int id, const char* name) {
    addRow(model, Part::CustomVariables,
           {{"var_id", id}, {"var_name", text(name)}, {"var_max", text("1")}});
}

TEST_F(MergeTest, OfEqualModelsIsTheModel) {
    expectWanted();
}

TEST_F(MergeTest, TakesTheFieldsThatEitherSideChanged) {
    onOurs([](Model& model) { setMax(model, 101, "750"); });
    onTheirs([](Model& model) {
        set(model, Part::CustomVariables, 101, "var_unit", text("Pa"));
        setMax(model, 102, "9");
        set(model, Part::Settings, text("DeviceID"), "set_value", text("2"));
        set(model, Part::Limits, 101, "upperdb", text("8"));
    });
    expectWanted();
}

TEST_F(MergeTest, TakesOnceWhatBothChangedAlike) {
    onBoth([](Model& model) {
        setMax(model, 101, "750");
        addVariable(model, 105, "New");
        setLinks(model, Part::ReportVariables, 13, {103, 105});
        erase(model, Part::Reports, 14);
    });
    expectWanted();
}

TEST_F(MergeTest, TakesWhatEitherSideAddedAndRemoved) {
    onOurs([](Model& model) {
        addVariable(model, 105, "Ours");
        erase(model, Part::Reports, 14);
    });
    onTheirs([](Model& model) {
        addVariable(model, 106, "Theirs");
        erase(model, Part::CustomVariables, 104);
        addRow(model, Part::Limits, {{"limit_id", 2}, {"var_id", 102}, {"upperdb", text("5")}});
    });
    expectWanted();
}

TEST_F(MergeTest, MergesTheLinksOfOneOwner) {
    setLinks(ours, Part::ReportVariables, 12, {101, 103, 102});
    setLinks(theirs, Part::ReportVariables, 12, {101, 102, 104});
    setLinks(wanted, Part::ReportVariables, 12, {101, 103, 102, 104});
    expectWanted();
    setLinks(ours, Part::ReportVariables, 12, {102});
    setLinks(wanted, Part::ReportVariables, 12, {102, 104});
    expectWanted();
}

TEST_F(MergeTest, AFieldThatBothChangedDifferentlyIsAConflict) {
    setMax(ours, 101, "750");
    setMax(theirs, 101, "800");
    expectConflict("variable 101 V101 (secs_cusvar)", "var_max", "\"500\"", "\"750\"", "\"800\"");
}

TEST_F(MergeTest, NullAndEmptyTextAreTwoValues) {
    set(ours, Part::CustomVariables, 101, "var_max", jet::Value());
    set(theirs, Part::CustomVariables, 101, "var_max", text(""));
    expectConflict("variable 101 V101 (secs_cusvar)", "var_max", "\"500\"", "null", "\"\"");
}

TEST_F(MergeTest, OneItemAddedDifferentlyIsAConflictInEachField) {
    addVariable(ours, 105, "Mine");
    addVariable(theirs, 105, "Yours");
    expectConflict("variable 105 Mine (secs_cusvar)", "var_name", "not there", "\"Mine\"",
                   "\"Yours\"");
}

TEST_F(MergeTest, AnItemThatOneSideRemovedAndTheOtherChangedIsAConflict) {
    erase(ours, Part::CustomVariables, 104);
    setMax(theirs, 104, "750");
    expectConflict("variable 104 V104 (secs_cusvar)", "", "there", "removed",
                   "var_max: \"500\" -> \"750\"");
}

TEST_F(MergeTest, AnItemThatOneSideRemovedAndTheOtherLinkedToIsAConflict) {
    erase(theirs, Part::Reports, 14);
    setLinks(ours, Part::EventReports, 202, {14});
    expectConflict("report 14 R14 (secs_report)", "", "there",
                   "event 202 E202 (secs_cusevent) links to it", "removed");
}

TEST_F(MergeTest, ARemovedOwnerWhoseLinksTheOtherChangedIsAConflict) {
    erase(ours, Part::Reports, 13);
    setLinks(ours, Part::ReportVariables, 13, {});
    setLinks(ours, Part::EventReports, 201, {12});
    setLinks(theirs, Part::ReportVariables, 13, {103, 104});
    const Merge result = merge(Side::Theirs);
    ASSERT_EQ(result.conflicts.size(), 1U);
    EXPECT_EQ(result.conflicts[0].item, "report 13 R13 (secs_report)");
    EXPECT_EQ(result.conflicts[0].ours, "removed");
    EXPECT_EQ(result.conflicts[0].theirs, "+ variable 104 V104 (place 2)");
    setLinks(wanted, Part::ReportVariables, 13, {103, 104});
    setLinks(wanted, Part::EventReports, 201, {12});  // that ours took it from there stays
    EXPECT_TRUE(differences(result.merged, wanted).empty());
    EXPECT_TRUE(differences(merge(Side::Ours).merged, ours).empty());
}

TEST_F(MergeTest, AVariableThatOneSideRemovedAndTheOtherGaveALimitIsAConflict) {
    erase(theirs, Part::CustomVariables, 104);
    addRow(ours, Part::Limits, {{"limit_id", 1}, {"var_id", 104}, {"upperdb", text("5")}});
    const Merge result = merge(Side::Theirs);
    ASSERT_EQ(result.conflicts.size(), 1U);
    EXPECT_EQ(result.conflicts[0].item, "variable 104 V104 (secs_cusvar)");
    EXPECT_TRUE(differences(result.merged, theirs).empty());
}

TEST_F(MergeTest, AnOrderThatBothCannotHaveIsAConflict) {
    setLinks(ours, Part::ReportVariables, 12, {103, 101, 102});
    setLinks(theirs, Part::ReportVariables, 12, {101, 102, 103});
    expectConflict("report 12 R12 (secs_report)", "order of variables", "101 102", "103 101 102",
                   "101 102 103");
}

TEST_F(MergeTest, DoublesAreMergedOneByOne) {
    const auto both = [](Model& model) { addVariable(model, 101, "Other"); };
    both(base);
    onBoth(both);
    const auto changeOther = [](Model& model, const char* column, const char* value) {
        for (model::Row& row : model[Part::CustomVariables].rows)
            if (model[Part::CustomVariables].text(row, "var_name") == "Other")
                row.values.at(*model[Part::CustomVariables].find(column)) = text(value);
    };
    onOurs([&](Model& model) { changeOther(model, "var_max", "2"); });
    onTheirs([&](Model& model) { changeOther(model, "var_unit", "Pa"); });
    expectWanted();
}

TEST_F(MergeTest, AColumnThatASideDoesNotHaveIsNoChangeOfIt) {
    model::Table& table = theirs[Part::CustomVariables];
    const auto column = static_cast<std::ptrdiff_t>(table.find("var_max").value());
    table.columns.erase(table.columns.begin() + column);
    for (model::Row& row : table.rows) row.values.erase(row.values.begin() + column);
    theirs[Part::Limits] = {};
    onTheirs([](Model& model) { set(model, Part::CustomVariables, 102, "var_unit", text("Pa")); });
    const Merge result = merge();
    EXPECT_TRUE(result.conflicts.empty());
    EXPECT_TRUE(differences(result.merged, wanted).empty());
    const Merge swapped = model::merge(base, theirs, ours, std::nullopt);
    EXPECT_FALSE(swapped.merged[Part::CustomVariables].find("var_max"));
    EXPECT_FALSE(swapped.merged[Part::Limits].present);
    EXPECT_TRUE(differences(swapped.merged, theirs).empty());
}

TEST_F(MergeTest, AColumnOfTheirsStaysWhereItSaysSomething) {
    onTheirs([](Model& model) {
        addRow(model, Part::CustomVariables, {{"var_id", 105}, {"var_note", text("x")}});
    });
    expectWanted();
}

TEST_F(MergeTest, RowsOfOursKeepTheirNumbers) {
    for (std::uint8_t at = 0; auto& row : ours[Part::CustomVariables].rows) row.id = {7, at++};
    addVariable(theirs, 100, "First");
    const Merge result = merge();
    const auto& rows = result.merged[Part::CustomVariables].rows;
    ASSERT_EQ(rows.size(), 5U);
    EXPECT_EQ(rows[0].id, jet::RowId{});
    EXPECT_EQ(rows[1].id, (jet::RowId{7, 0}));
    EXPECT_EQ(rows[4].id, (jet::RowId{7, 3}));
}

TEST_F(MergeTest, OfWholeModelsTakesBothSides) {
    base = ours = theirs = wanted = model::read(test::model("gem.mdb"));
    onOurs([](Model& model) {
        erase(model, Part::Alarms, 101);
        setLinks(model, Part::EventReports, 102, {110, 111});
    });
    onTheirs([](Model& model) { setMax(model, 101, "4711"); });
    expectWanted();
}

}  // namespace
}  // namespace stelvan::test
