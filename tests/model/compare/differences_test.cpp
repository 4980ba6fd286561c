#include "model/compare/differences.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>

#include "jet/rows/value_text.h"
#include "model/compare/alignment.h"
#include "tests/model/compare/small_model.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

using model::Change;
using model::differences;
using model::ItemChange;
using model::LinkChange;
using model::Model;
using model::Part;

/// Report 12 carries variables 1, 2, 3; event 7 sends it.
Model start() {
    Model model;
    addRow(model, Part::CustomVariables,
           {{"var_id", 101}, {"var_name", text("Pressure")}, {"var_max", text("500")}});
    addRow(model, Part::StandardVariables, {{"var_id", 1}, {"var_name", text("One")}});
    addRow(model, Part::StandardVariables, {{"var_id", 2}, {"var_name", text("Two")}});
    addRow(model, Part::StandardVariables, {{"var_id", 3}, {"var_name", text("Three")}});
    addRow(model, Part::StandardEvents, {{"evt_id", 7}, {"evt_name", text("Seven")}});
    addRow(model, Part::Reports, {{"rpt_id", 12}, {"rpt_name", text("Twelve")}});
    setLinks(model, Part::EventReports, 7, {12});
    setLinks(model, Part::ReportVariables, 12, {1, 2, 3});
    return model;
}

/// "+3@2" for each link: what became of it, its target, its new (or lost) place.
std::string linksOf(const ItemChange& change) {
    std::string all;
    for (const LinkChange& link : change.links) {
        all += "+-~*"[static_cast<int>(link.kind)] + jet::textOf(link.target) + "@" +
               jet::textOf(link.kind == LinkChange::Kind::Removed ? link.before : link.after) + " ";
    }
    return all;
}

/// The link changes of report 12 when its variables become these.
std::string linksAfter(std::initializer_list<int> before, std::initializer_list<int> after) {
    Model one = start(), two = start();
    setLinks(one, Part::ReportVariables, 12, before);
    setLinks(two, Part::ReportVariables, 12, after);
    const auto changes = differences(one, two);
    if (changes.empty()) return {};
    EXPECT_EQ(changes.size(), 1U);
    EXPECT_EQ(changes[0].part, Part::Reports);
    return linksOf(changes[0]);
}

TEST(Differences, AreNoneBetweenEqualModels) {
    EXPECT_TRUE(differences(start(), start()).empty());
    const Model whole = model::read(test::model("gem.mdb"));
    EXPECT_TRUE(differences(whole, whole).empty());
}

TEST(Differences, TellAFieldWithItsOldAndItsNewValue) {
    Model after = start();
    set(after, Part::CustomVariables, 101, "var_max", text("750"));
    const auto changes = differences(start(), after);
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(changes[0].change, Change::Changed);
    EXPECT_EQ(changes[0].part, Part::CustomVariables);
    EXPECT_EQ(changes[0].id, jet::Value(101));
    EXPECT_EQ(changes[0].name, "Pressure");
    ASSERT_EQ(changes[0].fields.size(), 1U);
    EXPECT_EQ(changes[0].fields[0].column, "var_max");
    EXPECT_EQ(changes[0].fields[0].before, text("500"));
    EXPECT_EQ(changes[0].fields[0].after, text("750"));
}

TEST(Differences, NameAnItemAsItIsCalledNow) {
    Model after = start();
    set(after, Part::CustomVariables, 101, "var_name", text("Vacuum"));
    EXPECT_EQ(differences(start(), after).at(0).name, "Vacuum");
}

TEST(Differences, OfAnAddedOrRemovedItemAreAllThatItHolds) {
    Model after = start();
    erase(after, Part::CustomVariables, 101);
    const auto removed = differences(start(), after);
    ASSERT_EQ(removed.size(), 1U);
    EXPECT_EQ(removed[0].change, Change::Removed);
    EXPECT_EQ(removed[0].name, "Pressure");
    EXPECT_EQ(removed[0].fields.size(), 3U);
    const auto added = differences(after, start());
    ASSERT_EQ(added.size(), 1U);
    EXPECT_EQ(added[0].change, Change::Added);
    EXPECT_EQ(added[0].fields.size(), 3U);
    EXPECT_TRUE(jet::isNull(added[0].fields[0].before));
}

TEST(Differences, ANullIsNotAnEmptyText) {
    Model after = start();
    set(after, Part::CustomVariables, 101, "var_max", jet::Value());
    Model empty = start();
    set(empty, Part::CustomVariables, 101, "var_max", text(""));
    EXPECT_EQ(differences(after, empty).size(), 1U);
}

TEST(Differences, AMissingColumnIsNullAndAMissingTableEmpty) {
    Model after = start();
    addRow(after, Part::CustomVariables, {{"var_id", 102}, {"var_note", text("x")}});
    erase(after, Part::CustomVariables, 102);
    EXPECT_TRUE(differences(start(), after).empty());
    after[Part::Alarms].present = true;
    after[Part::Alarms].columns = {"alm_id"};
    EXPECT_TRUE(differences(start(), after).empty());
    set(after, Part::CustomVariables, 101, "var_note", text("y"));
    EXPECT_EQ(differences(start(), after).size(), 1U);
    EXPECT_EQ(differences(after, start()).size(), 1U);
}

TEST(Differences, IdentifiersAreTheSameWhateverTheirColumn) {
    Model one = start(), two = start();
    addRow(one, Part::CustomVariables, {{"var_id", 99}});
    for (auto& row : two[Part::CustomVariables].rows) row.values[0] = text("101");
    addRow(two, Part::CustomVariables, {{"var_id", text("99")}});
    EXPECT_TRUE(differences(one, two).empty());
}

TEST(Differences, OfDoublesTheEqualOnesBelongTogether) {
    Model one = start(), two = start();
    addRow(one, Part::CustomVariables,
           {{"var_id", 101}, {"var_name", text("Other")}, {"var_max", text("7")}});
    erase(two, Part::CustomVariables, 101);
    addRow(two, Part::CustomVariables,
           {{"var_id", 101}, {"var_name", text("Pressure")}, {"var_max", text("500")}});
    const auto changes = differences(one, two);
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(changes[0].change, Change::Removed);
    EXPECT_EQ(changes[0].name, "Other");
}

TEST(Differences, OfDoublesThoseOfOneNameBelongTogetherBeforeTheRest) {
    Model one = start(), two = start();
    addRow(one, Part::CustomVariables, {{"var_id", 101}, {"var_name", text("A")}});
    addRow(two, Part::CustomVariables, {{"var_id", 101}, {"var_name", text("A")}});
    set(two, Part::CustomVariables, 101, "var_max", text("8"));  // of A, which sorts first
    const auto changes = differences(one, two);
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(changes[0].name, "A");
    EXPECT_EQ(changes[0].fields.size(), 1U);
}

TEST(Differences, ALimitIsTheSameByVariableAndNumber) {
    Model one = start(), two = start();
    const auto limit = [](int number, const char* bound) {
        return Cells{{"limit_id", number}, {"var_id", 101}, {"upperdb", text(bound)}};
    };
    addRow(one, Part::Limits, limit(1, "5"));
    addRow(one, Part::Limits, limit(2, "6"));
    addRow(two, Part::Limits, limit(2, "7"));
    const auto changes = differences(one, two);
    ASSERT_EQ(changes.size(), 2U);
    EXPECT_EQ(changes[0].change, Change::Removed);
    EXPECT_EQ(changes[0].place, jet::Value(1));
    EXPECT_EQ(changes[1].change, Change::Changed);
    EXPECT_EQ(changes[1].place, jet::Value(2));
    EXPECT_EQ(changes[1].id, jet::Value(101));
}

TEST(Differences, AnInsertedLinkMovesNoOther) {
    EXPECT_EQ(linksAfter({1, 2, 3}, {1, 101, 2, 3}), "+101@2 ");
    EXPECT_EQ(linksAfter({1, 2, 3}, {2, 3}), "-1@1 ");
    EXPECT_EQ(linksAfter({1, 2, 3}, {1, 2, 3}), "");
}

TEST(Differences, AMovedLinkIsOneEntry) {
    EXPECT_EQ(linksAfter({1, 2, 3}, {3, 1, 2}), "~3@1 ");
    EXPECT_EQ(linksAfter({1, 2, 3, 101}, {2, 3, 101, 1}), "~1@4 ");
}

TEST(Differences, ALinkThatStandsTwiceIsTwoLinks) {
    EXPECT_EQ(linksAfter({1, 2}, {1, 2, 1}), "+1@3 ");
    EXPECT_EQ(linksAfter({1, 2, 1}, {2, 1}), "-1@1 ");
    EXPECT_EQ(linksAfter({1, 1, 1}, {1}), "-1@2 -1@3 ");
}

TEST(Differences, RemovedAddedAndMovedLinksStandSideBySide) {
    EXPECT_EQ(linksAfter({1, 2, 3}, {3, 101, 2}), "-1@1 +101@2 ~2@3 ");
}

TEST(Differences, AGapLeftByARemovedLinkIsNoChangeOfOthers) {
    Model two = start();
    std::erase_if(two[Part::ReportVariables].rows, [&](const model::Row& row) {
        return two[Part::ReportVariables].number(row, "var_id") == 1;
    });
    EXPECT_EQ(linksOf(differences(start(), two).at(0)), "-1@1 ");
}

TEST(Differences, NewPlacesInTheSameOrderAreAChange) {
    Model two = start();
    rowOf(two, Part::ReportVariables, 12).values.at(2) = jet::Value(0);
    const auto changes = differences(start(), two);
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(linksOf(changes[0]), "~1@0 ");
    EXPECT_EQ(changes[0].links[0].before, jet::Value(1));
}

TEST(Differences, WhatElseALinkHoldsIsCompared) {
    Model one = start(), two = start();
    addRow(one, Part::ReportVariables,
           {{"rpt_id", 12}, {"var_id", 101}, {"var_order", 4}, {"note", text("a")}});
    addRow(two, Part::ReportVariables,
           {{"rpt_id", 12}, {"var_id", 101}, {"var_order", 4}, {"note", text("b")}});
    const auto changes = differences(one, two);
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(linksOf(changes[0]), "*101@4 ");
    ASSERT_EQ(changes[0].links[0].fields.size(), 1U);
    EXPECT_EQ(changes[0].links[0].fields[0].column, "note");
}

TEST(Differences, LinksTellTheNameOfTheirTarget) {
    Model two = start();
    setLinks(two, Part::ReportVariables, 12, {1, 2, 3, 101, 999});
    const auto changes = differences(start(), two);
    ASSERT_EQ(changes.at(0).links.size(), 2U);
    EXPECT_EQ(changes[0].links[0].targetName, "Pressure");
    EXPECT_EQ(changes[0].links[1].targetName, "");
}

TEST(Differences, ARemovedOwnerTellsItsLinks) {
    Model two = start();
    erase(two, Part::Reports, 12);
    setLinks(two, Part::ReportVariables, 12, {});
    const auto changes = differences(start(), two);
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(changes[0].change, Change::Removed);
    EXPECT_EQ(linksOf(changes[0]), "-1@1 -2@2 -3@3 ");
}

TEST(Differences, LinksThatNoItemOwnsStandByTheOwnerTheyName) {
    Model two = start();
    setLinks(two, Part::EventReports, 999, {12});
    const auto changes = differences(start(), two);
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(changes[0].part, Part::EventReports);
    EXPECT_EQ(changes[0].id, jet::Value(999));
    EXPECT_EQ(changes[0].links.at(0).targetName, "Twelve");
}

TEST(Differences, StandInTheOrderOfPartsAndIdentifiers) {
    Model two = start();
    set(two, Part::Reports, 12, "rpt_name", text("x"));
    set(two, Part::StandardVariables, 3, "var_name", text("x"));
    set(two, Part::StandardVariables, 2, "var_name", text("x"));
    setLinks(two, Part::EventReports, 7, {});
    std::string order;
    for (const ItemChange& change : differences(start(), two))
        order += jet::textOf(change.id) + " ";
    EXPECT_EQ(order, "2 3 7 12 ");
}

/// The length of the longest common subsequence, by the book.
std::size_t longestCommon(const std::vector<model::Key>& a, const std::vector<model::Key>& b) {
    std::vector<std::vector<std::size_t>> best(a.size() + 1,
                                               std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i < a.size(); ++i)
        for (std::size_t j = 0; j < b.size(); ++j)
            best[i + 1][j + 1] =
                a[i] == b[j] ? best[i][j] + 1 : std::max(best[i][j + 1], best[i + 1][j]);
    return best[a.size()][b.size()];
}

TEST(Alignment, KeepsAsManyAsCanBeAndPairsTheRestOfOneTarget) {
    std::mt19937 random(20);  // NOLINT: the same lists each time
    for (int round = 0; round < 2000; ++round) {
        std::array<std::vector<model::Key>, 2> lists;
        for (auto& list : lists)
            for (std::size_t left = random() % 9; left > 0; --left)
                list.push_back(model::keyOf(jet::Value(static_cast<int>(random() % 6))));
        const auto& [before, after] = lists;
        const model::Alignment alignment = model::align(before, after);
        std::size_t kept = 0, last = 0;
        std::vector<bool> taken(after.size());
        for (std::size_t at = 0; at < before.size(); ++at) {
            const auto& partner = alignment.partners[at];
            if (!partner) {
                for (std::size_t i = 0; i < after.size(); ++i)
                    EXPECT_FALSE(alignment.isNew[i] && after[i] == before[at]);
                continue;
            }
            EXPECT_EQ(before[at], after[partner->after]);
            EXPECT_FALSE(taken[partner->after]);
            taken[partner->after] = true;
            if (!partner->kept) continue;
            EXPECT_TRUE(kept == 0 || partner->after > last);
            last = partner->after;
            ++kept;
        }
        EXPECT_EQ(kept, longestCommon(before, after));
        for (std::size_t i = 0; i < after.size(); ++i) EXPECT_NE(taken[i], alignment.isNew[i]);
    }
}

TEST(Alignment, StaysQuickWithVeryManyDoubles) {
    std::vector<model::Key> before, after;
    for (int i = 0; i < 6000; ++i) {
        before.push_back(model::keyOf(jet::Value(i % 2)));
        after.push_back(model::keyOf(jet::Value(i % 3 == 0 ? 1 : 0)));
    }
    const model::Alignment alignment = model::align(before, after);
    EXPECT_EQ(std::ranges::count(alignment.isNew, true), 1000);
}

}  // namespace
}  // namespace stelvan::test
