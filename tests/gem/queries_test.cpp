// The SQL texts, letter by letter.
#include "gem/queries.h"

#include <gtest/gtest.h>

#include "gem/categories.h"

namespace stelvan::gem {
namespace {

TEST(Queries, linksAndPools) {
    EXPECT_EQ(linksOf(kEventReports, "162"), "SELECT * FROM secs_def_evt_rpt WHERE evt_id = 162");
    EXPECT_EQ(linksOf(kReportVariables, "126"), "SELECT * FROM secs_rpt_var WHERE rpt_id = 126");
    EXPECT_EQ(allReports(), "SELECT rpt_name, rpt_id FROM secs_report");
    EXPECT_EQ(reportsOf("162"),
              "SELECT rpt.rpt_name, rpt.rpt_id, evt.rpt_order FROM secs_def_evt_rpt evt, "
              "secs_report rpt WHERE evt.evt_id = 162 AND evt.rpt_id = rpt.rpt_id  ORDER BY "
              "evt.rpt_order ");
    EXPECT_EQ(topLevelVariables(Origin::Standard),
              "select var_name, var_id, var_type FROM secs_gemvar WHERE var_parentkey = 0");
    EXPECT_EQ(variablesOf("126", Origin::Custom),
              "SELECT var.var_name, var.var_id, var.var_type, rpt.var_order FROM secs_rpt_var "
              "rpt, secs_cusvar var WHERE rpt.rpt_id = 126 AND rpt.var_id = var.var_id ORDER BY "
              "rpt.var_order ");
}

TEST(Queries, childrenOfLists) {
    EXPECT_EQ(possibleChildren("227", "SV"),
              "SELECT var_name, var_id, var_group, var_val FROM secs_cusvar WHERE var_id <> 227 "
              "AND var_type = 'SV'  AND var_format <> 'L'  AND var_parentkey = 0 ");
    EXPECT_EQ(childrenOf("227"),
              "SELECT var_name, var_id, var_group, var_val, var_allowduplicates FROM secs_cusvar "
              "WHERE var_parentkey = 227 ORDER BY var_accessid ");
    EXPECT_EQ(setParent(231, 227), "UPDATE secs_cusvar SET var_parentkey=227 WHERE var_id=231");
    EXPECT_EQ(setPlace(231, 2), "UPDATE secs_cusvar SET var_accessid=2 WHERE var_id=231");
    EXPECT_EQ(setDuplicates(231, true),
              "UPDATE secs_cusvar SET var_allowduplicates=True WHERE var_id=231");
    EXPECT_EQ(setDuplicates(231, false),
              "UPDATE secs_cusvar SET var_allowduplicates=False WHERE var_id=231");
}

TEST(Queries, deletionsTakeTheirLinksAlongAndReleaseChildren) {
    using Texts = std::vector<std::string>;
    EXPECT_EQ(cascadesOf(CSTEVT, "101", ""),
              Texts{"Delete FROM secs_def_evt_rpt WHERE evt_id = 101"});
    EXPECT_EQ(cascadesOf(CSTRPT, "101", ""),
              (Texts{"Delete FROM secs_def_evt_rpt WHERE rpt_id = 101",
                     "Delete FROM secs_rpt_var WHERE rpt_id = 101"}));
    for (const std::int16_t category : {CSTVDV, CSTVSV}) {
        EXPECT_EQ(cascadesOf(category, "227", " l "),
                  Texts{"UPDATE secs_cusvar  SET var_parentkey = 0  WHERE var_parentkey = 227"});
        EXPECT_EQ(cascadesOf(category, "227", "U4"), Texts{});
    }
    EXPECT_EQ(cascadesOf(CSTVEC, "227", "L"), Texts{});
    EXPECT_EQ(cascadesOf(CSTALM, "1", ""), Texts{});
}

}  // namespace
}  // namespace stelvan::gem
