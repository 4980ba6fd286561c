#include "model/core/model.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "model/core/cross_reference.h"
#include "model/core/sink.h"
#include "model/core/values.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

using model::Part;

std::vector<std::int64_t> ids(const model::Model& whole, Part part) {
    std::vector<std::int64_t> numbers;
    for (const model::Row& row : whole[part].rows)
        numbers.push_back(whole[part].number(row, model::factsOf(part).id).value());
    return numbers;
}

TEST(Model, HoldsEveryRowOfEveryPartInTheOrderOfIdentifiers) {
    const model::Model whole = model::read(test::model("gem.mdb"));
    const std::vector<std::int64_t> events = ids(whole, Part::CustomEvents);
    EXPECT_TRUE(std::ranges::is_sorted(events));
    jet::Database database = jet::Database::open(test::model("gem.mdb"), jet::Access::ReadOnly);
    for (const model::PartFacts& facts : model::parts()) {
        const auto name = model::tableOf(facts.part, database);
        ASSERT_TRUE(name);
        EXPECT_EQ(whole[facts.part].rows.size(), database.table(*name).info().rows) << *name;
    }
}

TEST(Model, FindsTheLimitsByTheirColumns) {
    const model::Model whole = model::read(test::model("gem.mdb"));
    EXPECT_TRUE(whole[Part::Limits].present);
    EXPECT_FALSE(whole[Part::Limits].rows.empty());
}

TEST(Model, LinkRowsStandByOwnerAndPlace) {
    const model::Model whole = model::read(test::model("gem.mdb"));
    const model::CrossReference references(whole);
    std::vector<std::int64_t> orders;
    for (const auto& entry : references.variablesOfReport().of(110))
        orders.push_back(entry.item.number("var_order").value());
    EXPECT_FALSE(orders.empty());
    EXPECT_TRUE(std::ranges::is_sorted(orders));
}

TEST(Model, TellsTheCategoryOfARow) {
    const model::Model whole = model::read(test::model("gem.mdb"));
    const model::CrossReference references(whole);
    EXPECT_EQ(model::CrossReference::first(references.variables(), 101)->category(), gem::CSTVSV);
    EXPECT_EQ(model::CrossReference::first(references.variables(), 1)->category(), gem::GEMSDV);
    EXPECT_EQ(model::CrossReference::first(references.events(), 101)->category(), gem::CSTEVT);
    EXPECT_EQ(model::CrossReference::first(references.reports(), 101)->category(), gem::CSTRPT);
}

TEST(Model, AnUnknownFileIsAFailure) {
    EXPECT_THROW((void)model::read(std::filesystem::path("/nowhere/gem.mdb")), jet::Error);
}

TEST(Values, NumbersAreTheSameWhateverTheirColumn) {
    EXPECT_TRUE(model::sameValue(jet::Value(101), jet::Value(101.0)));
    EXPECT_TRUE(model::sameValue(jet::Value(true), jet::Value(-1)));
    EXPECT_TRUE(model::sameValue(jet::Value(true), jet::Value(1)));
    EXPECT_FALSE(model::sameValue(jet::Value(true), jet::Value(0)));
    EXPECT_TRUE(model::sameValue(jet::Value(jet::Money{15'000}), jet::Value(1.5)));
    EXPECT_FALSE(model::sameValue(jet::Value(), jet::Value(std::string())));
    EXPECT_FALSE(model::sameValue(jet::Value(std::string("a")), jet::Value(std::string("A"))));
}

TEST(Values, AWholeNumberIsOneWhateverItsColumn) {
    EXPECT_EQ(model::wholeNumber(jet::Value(101.0)), 101);
    EXPECT_EQ(model::wholeNumber(jet::Value(std::string(" 101 "))), 101);
    EXPECT_EQ(model::wholeNumber(jet::Value(jet::Money{-10'000})), -1);
    EXPECT_FALSE(model::wholeNumber(jet::Value(1.5)));
    EXPECT_FALSE(model::wholeNumber(jet::Value(1e300)));
    EXPECT_FALSE(model::wholeNumber(jet::Value()));
    EXPECT_FALSE(model::wholeNumber(jet::Value(std::string("A1"))));
}

TEST(WholeFile, IsWrittenWholeOrNotAtAll) {
    const ScratchDir folder;
    const std::filesystem::path file = folder.path() / "out.txt";
    model::writeWhole(file, [](const model::Sink& sink) { sink("first"); });
    EXPECT_THROW(model::writeWhole(file,
                                   [](const model::Sink& sink) {
                                       sink("half");
                                       throw std::runtime_error("no more");
                                   }),
                 std::runtime_error);
    EXPECT_EQ(model::readWhole(file), "first");
    const std::filesystem::directory_iterator files(folder.path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

}  // namespace
}  // namespace stelvan::test
