#include "model/compare/plan_differences.h"

#include <gtest/gtest.h>

#include "model/compare/change_text.h"
#include "tests/model/compare/small_model.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

using model::Model;
using model::Part;

std::string inWords(const std::vector<model::ItemChange>& changes) {
    std::string text;
    model::writeChanges(changes, false, [&](std::string_view piece) { text += piece; });
    return text;
}

TEST(PlanDifferences, AreThoseOfTheWholeModels) {
    jet::Database database = jet::Database::open(test::model("gem.mdb"), jet::Access::ReadOnly);
    Model wanted = model::read(database);
    set(wanted, Part::CustomVariables, 101, "var_unit", text("K"));
    erase(wanted, Part::CustomVariables, 120);
    setLinks(wanted, Part::ReportVariables, 110, {150, 151, 8888, 101});
    setLinks(wanted, Part::EventReports, 102, {110});
    model::WritePlan plan = model::planWrite(database, wanted);
    const std::string whole = inWords(model::differences(plan.before, wanted));
    std::vector<model::ItemChange> taken;
    model::differences(std::move(plan),
                       [&](model::ItemChange&& change) { taken.push_back(std::move(change)); });
    EXPECT_EQ(inWords(taken), whole);
    EXPECT_NE(whole.find("variable 150 "), std::string::npos) << whole;
}

}  // namespace
}  // namespace stelvan::test
