#include "model/compare/change_text.h"

#include <gtest/gtest.h>

#include "tests/model/compare/small_model.h"

namespace stelvan::test {
namespace {

using model::Change;
using model::ItemChange;
using model::LinkChange;
using model::Part;

std::string written(const std::vector<ItemChange>& changes, bool coloured = false) {
    std::string all;
    model::writeChanges(changes, coloured, [&](std::string_view text) { all += text; });
    return all;
}

ItemChange changedVariable() {
    return {.change = Change::Changed,
            .part = Part::CustomVariables,
            .id = 101,
            .place = {},
            .name = "ChamberPressure",
            .fields = {{"var_max", text("500"), text("750")}, {"var_unit", {}, text("")}},
            .links = {},
            .table = "secs_cusvar"};
}

ItemChange changedReport() {
    const auto link = [](LinkChange::Kind kind, int target, jet::Value before, jet::Value after) {
        return LinkChange{kind,
                          Part::ReportVariables,
                          target,
                          "N" + std::to_string(target),
                          std::move(before),
                          std::move(after),
                          {}};
    };
    using enum LinkChange::Kind;
    return {.change = Change::Changed,
            .part = Part::Reports,
            .id = 12,
            .place = {},
            .name = "Twelve",
            .fields = {},
            .links = {link(Removed, 5, 1, {}), link(Added, 101, {}, 2), link(Reordered, 7, 3, 1)},
            .table = "secs_report"};
}

TEST(ChangeText, AChangedFieldShowsBothValues) {
    EXPECT_EQ(written({changedVariable()}),
              "~ variable 101 ChamberPressure (secs_cusvar)\n"
              "    var_max: \"500\" -> \"750\"\n"
              "    var_unit: null -> \"\"\n");
}

TEST(ChangeText, LinksStandBelowTheirOwner) {
    EXPECT_EQ(written({changedReport()}),
              "~ report 12 Twelve (secs_report)\n"
              "    - variable 5 N5 (place 1)\n"
              "    + variable 101 N101 (place 2)\n"
              "    ~ variable 7 N7: place 3 -> 1\n");
}

TEST(ChangeText, AnAddedItemShowsWhatSaysSomethingARemovedOneNothing) {
    ItemChange change = changedVariable();
    change.fields = {{"var_id", {}, 101},
                     {"var_name", {}, text("ChamberPressure")},
                     {"var_unit", {}, text("")},
                     {"var_canadd", {}, false},
                     {"var_max", {}, text("5")}};
    change.change = Change::Added;
    EXPECT_EQ(written({change}),
              "+ variable 101 ChamberPressure (secs_cusvar)\n    var_max: \"5\"\n");
    change.change = Change::Removed;
    EXPECT_EQ(written({change}), "- variable 101 ChamberPressure (secs_cusvar)\n");
}

TEST(ChangeText, ATextStaysOnItsLineAndCannotSteerATerminal) {
    ItemChange change = changedVariable();
    change.name = "a\x1b[2Jb";
    change.fields = {{"var_desc", text("one\ntwo"), text("\x1b[31m")}};
    EXPECT_EQ(written({change}),
              "~ variable 101 \"a\\u001b[2Jb\" (secs_cusvar)\n"
              "    var_desc: \"one\\ntwo\" -> \"\\u001b[31m\"\n");
}

TEST(ChangeText, ColoursTellWhatCameAndWhatWent) {
    const std::string all = written({changedReport()}, true);
    EXPECT_NE(all.find("\x1b[33m~ report 12 Twelve (secs_report)\x1b[0m\n"), std::string::npos);
    EXPECT_NE(all.find("    \x1b[31m- variable 5 N5 (place 1)\x1b[0m\n"), std::string::npos);
    EXPECT_NE(all.find("    \x1b[32m+ variable 101 N101 (place 2)\x1b[0m\n"), std::string::npos);
}

TEST(ChangeText, LimitsSettingsAndLinksWithoutOwnerAreNamed) {
    ItemChange change{.change = Change::Added,
                      .part = Part::Limits,
                      .id = 101,
                      .place = 2,
                      .name = {},
                      .fields = {},
                      .links = {},
                      .table = "var_limit"};
    EXPECT_EQ(model::itemText(change), "limit 2 of variable 101 (var_limit)");
    change.part = Part::Settings;
    change.id = text("DeviceID");
    change.table = "secs_setting";
    EXPECT_EQ(model::itemText(change), "setting DeviceID (secs_setting)");
    change.part = Part::EventReports;
    change.id = 999;
    change.table = "secs_def_evt_rpt";
    EXPECT_EQ(model::itemText(change), "event 999, which does not exist (secs_def_evt_rpt)");
}

TEST(ChangeText, TheSummaryCountsItems) {
    std::vector<ItemChange> changes{changedVariable()};
    EXPECT_EQ(model::summaryOf(changes), "1 item changed");
    changes.push_back(changedReport());
    changes.push_back(changedReport());
    changes[1].change = Change::Added;
    changes[2].change = Change::Removed;
    changes.push_back(changes[1]);
    EXPECT_EQ(model::summaryOf(changes), "2 items added, 1 changed, 1 removed");
    EXPECT_EQ(model::summaryOf(changes, true), "2 items would be added, 1 changed, 1 removed");
    EXPECT_EQ(model::summaryOf({}), "no changes");
}

}  // namespace
}  // namespace stelvan::test
