// What is found for what is typed, and who uses a record.
#include "browser/index/search.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>

#include "model/core/model.h"
#include "tests/support/models.h"

namespace stelvan::browser {
namespace {

namespace fs = std::filesystem;

class Search : public ::testing::Test {
protected:
    test::ScratchDir scratch;
    fs::path file = scratch.copyOf(test::model("gem.mdb"));
    ModelIndex index;

    void insert(const char* table,
                const std::vector<std::pair<const char*, jet::Value>>& values) const {
        jet::Database database = jet::Database::open(file);
        jet::Table& target = database.table(table);
        std::vector<jet::ColumnValue> row;
        for (const auto& [column, value] : values)
            row.emplace_back(*target.info().findColumn(column), value);
        (void)target.insert(row);
    }
    void variable(std::int32_t id, const char* name, const char* group = "g",
                  const char* text = "d", const char* type = "SV") const {
        insert("secs_cusvar", {{"var_id", id},
                               {"var_name", std::string(name)},
                               {"var_type", std::string(type)},
                               {"var_group", std::string(group)},
                               {"var_desc", std::string(text)}});
    }
    /// A file changed a moment ago is taken for changed again until the clock has moved on.
    void settle() {
        for (int left = 1000; index.refresh(file) && left > 0; --left) ::usleep(1000);
    }
    std::vector<std::int64_t> found(const char* typed, std::size_t most = 500) {
        settle();
        const std::string query = foldedQuery(typed);
        std::vector<Match> matches = search(index, query, most);
        EXPECT_TRUE(searchTexts(index, query, most, matches));
        std::vector<std::int64_t> ids;
        for (const Match& match : matches) ids.push_back(index.items()[match.item].id);
        return ids;
    }
};

using Ids = std::vector<std::int64_t>;

TEST_F(Search, PutsTheBestReasonFirst) {
    variable(80001, "about", "g", "the quokka eats");
    variable(80002, "b", "MyQuokkas");
    variable(80003, "a_quokka");
    variable(80004, "QuokkaAndMore");
    variable(80005, "quokka");
    EXPECT_EQ(found(" quokka "), (Ids{80005, 80004, 80003, 80002, 80001}));
    EXPECT_EQ(found("80003"), Ids{80003});
    EXPECT_EQ(found("8000"), Ids{});  // an identifier is found whole
}

TEST_F(Search, KnowsNoLetterCaseBeyondAsciiEither) {
    variable(80001, "x", "g", "d");
    variable(80002, "\u00DCquokka", "g", "d");
    variable(80003, "y", "g", "die \u00FCquokkas");
    EXPECT_EQ(found("\u00FCQUOKKA"), (Ids{80002, 80003}));
}

TEST_F(Search, StopsAtTheMostAndLeavesOutWhatCanBeShownNowhere) {
    for (std::int32_t id = 80001; id < 80011; ++id)
        variable(id, ("Quokka" + std::to_string(id)).c_str());
    variable(80011, "quokka_of_no_type", "g", "d", "??");
    EXPECT_EQ(found("quokka").size(), 10U);
    EXPECT_EQ(found("quokka", 4), (Ids{80001, 80002, 80003, 80004}));
}

TEST_F(Search, FindsEveryItemOfTheModelByItsName) {
    index.refresh(file);
    const model::Model whole = model::read(file);
    std::size_t items = 0;
    for (const model::PartFacts& facts : model::parts()) {
        if (facts.part == model::Part::Limits || model::isLinks(facts.part)) continue;
        items += whole[facts.part].rows.size();
        for (const model::Row& row : whole[facts.part].rows) {
            const auto column = facts.name.empty() ? facts.id : facts.name;
            const std::string name = whole[facts.part].text(row, column);
            const std::int16_t category = model::categoryOf(facts.part, whole[facts.part], row);
            if (category == gem::NO_CATEGORY || name.empty()) continue;
            const auto matches = search(index, foldedQuery(name), 500);
            const bool there = std::ranges::any_of(matches, [&](const Match& match) {
                const IndexedItem& item = index.items()[match.item];
                return item.place == row.id && item.category == category &&
                       index.nameOf(item) == name;
            });
            EXPECT_TRUE(there) << name;
        }
    }
    EXPECT_EQ(index.items().size(), items);
}

TEST_F(Search, TheIndexFollowsTheFileAndKeepsQuietWhereNothingChanged) {
    EXPECT_TRUE(index.refresh(file));
    settle();
    EXPECT_FALSE(index.refresh(file));
    EXPECT_TRUE(index.isFresh(file));
    variable(80001, "quokka");
    EXPECT_FALSE(index.isFresh(file));
    std::vector<Match> none;
    EXPECT_FALSE(searchTexts(index, "QUOKKA", 500, none));
    EXPECT_EQ(found("quokka"), Ids{80001});
    EXPECT_FALSE(index.isFresh(file.string() + ".gone"));
    EXPECT_THROW(index.refresh(file.string() + ".gone"), jet::Error);
    EXPECT_EQ(search(index, "QUOKKA", 500).size(), 1U);
}

TEST_F(Search, UsersOfARecordAreThoseOfTheCrossReference) {
    insert("secs_alarm", {{"alm_id", 9001}, {"alm_name", std::string("a")}, {"alm_set_ceid", 0}});
    index.refresh(file);
    const model::Model whole = model::read(file);
    const auto& links = whole[model::Part::ReportVariables];
    const auto& reports = whole[model::Part::Reports];
    std::size_t compared = 0;
    for (const model::Row& variable : whole[model::Part::CustomVariables].rows) {
        const auto id = whole[model::Part::CustomVariables].number(variable, "var_id");
        std::vector<std::int64_t> expected;
        for (const model::Row& report : reports.rows) {
            const auto owner = reports.number(report, "rpt_id");
            const bool carries = std::ranges::any_of(links.rows, [&](const model::Row& link) {
                return links.number(link, "rpt_id") == owner && links.number(link, "var_id") == id;
            });
            if (carries) expected.push_back(*owner);
        }
        std::vector<std::int64_t> users;
        for (const Use& use : index.usesOf(gem::CSTVSV, *id))
            if (use.role == Role::InReport) users.push_back(index.items()[use.user].id);
        std::ranges::sort(users);
        std::ranges::sort(expected);
        EXPECT_EQ(users, expected) << *id;
        compared += users.size();
    }
    EXPECT_GT(compared, 0U);
    // An event 0 is none.
    EXPECT_TRUE(index.usesOf(gem::CSTEVT, 0).empty());
}

}  // namespace
}  // namespace stelvan::browser
