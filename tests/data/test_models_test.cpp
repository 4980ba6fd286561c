// The models of the tests hold the hard cases that other suites take for granted.
#include <gtest/gtest.h>

#include <algorithm>

#include "jet/disk/page_file.h"
#include "jet/pages/data_page.h"
#include "jet/pages/usage_map.h"
#include "jet/tables/catalog.h"
#include "tests/db/gem_file.h"

namespace stelvan::test {
namespace {

using db::test::GemFile;
using Texts = std::vector<std::string>;

/// Whatever other tests are run over: these ask what our texts say.
std::filesystem::path own(const char* name) {
    return ModelFile{name, Maker::Own}.path();
}

struct HardCase {
    const char* sql;
    Texts firstColumn;
};

class EverydayModel : public ::testing::Test {
protected:
    void expectAll(const GemFile& file, const std::vector<HardCase>& cases) {
        for (const HardCase& hard : cases)
            EXPECT_EQ(file.column(hard.sql), hard.firstColumn) << hard.sql;
    }
    /// Slots of a table with these flags.
    static int slotsWith(const std::string& name, std::uint16_t flags) {
        const auto file = jet::PageFile::open(own("gem.mdb"), jet::Access::ReadOnly);
        const jet::ReadScope scope(file);
        jet::Catalog catalog(*file);
        const auto table = catalog.definition(*catalog.findTable(name));
        const jet::UsageMap owned(*file, table->ownedMap);
        int count = 0;
        for (auto page = owned.next(0); page; page = owned.next(*page + 1)) {
            const jet::DataPage data(*page, file->read(*page));
            for (std::size_t i = 0; i < data.slotCount(); ++i)
                count += data.slot(i).flags == flags ? 1 : 0;
        }
        return count;
    }
};

TEST_F(EverydayModel, StoresTheItemsOfItsListsLastFirst) {
    expectAll(GemFile(own("gem.mdb")),
              {{"SELECT var_accessid FROM secs_cusvar WHERE var_parentkey = 227 ORDER BY var_id",
                {"5", "4", "3", "2", "1"}},
               {"SELECT var_accessid FROM secs_cusvar WHERE var_parentkey = 1057 ORDER BY var_id",
                {"3", "2", "1"}},
               {"SELECT var_id FROM secs_cusvar WHERE var_allowduplicates ORDER BY var_id",
                {"239", "1062"}},
               {"SELECT var_format FROM secs_cusvar WHERE var_id = 244", {"l"}}});
}

TEST_F(EverydayModel, TellsPlaceholdersEmptyTextsAndNullsApart) {
    expectAll(GemFile(own("gem.mdb")),
              {{"SELECT var_max FROM secs_cusvar WHERE var_id = 249", {"0"}},
               {"SELECT var_unit FROM secs_cusvar WHERE var_id = 250", {"null"}},
               {"SELECT var_defaultval FROM secs_cusvar WHERE var_id = 251", {" null "}},
               {"SELECT var_desc FROM secs_cusvar WHERE var_id = 252", {""}},
               {"SELECT var_desc FROM secs_cusvar WHERE var_id = 253", {"<null>"}},
               {"SELECT alm_set_cename FROM secs_alarm WHERE alm_id < 5 ORDER BY alm_id",
                {"NULL", "0", "Sc1AlarmSet", ""}}});
}

TEST_F(EverydayModel, HasLongWideAndOddTexts) {
    expectAll(
        GemFile(own("gem.mdb")),
        {{"SELECT length(var_desc) FROM secs_cusvar WHERE var_id IN (254, 255)", {"1000", "1000"}},
         {"SELECT length(var_name) FROM secs_cusvar WHERE var_id = 257", {"100"}},
         {"SELECT var_val FROM secs_cusvar WHERE var_id = 256", {"upper\r\nlower"}},
         {"SELECT var_val FROM secs_cusvar WHERE var_id = 258", {"\xF0\x9F\xA7\xAA"}},
         {"SELECT var_name FROM secs_cusvar WHERE var_id = 248", {"Pump'sHours"}}});
}

TEST_F(EverydayModel, HasLinksThatAreShuffledReversedOrLeadNowhere) {
    const GemFile file(own("gem.mdb"));
    expectAll(file,
              {{"SELECT var_order FROM secs_rpt_var WHERE rpt_id = 110", {"5", "4", "3", "2", "1"}},
               {"SELECT rpt_id FROM secs_def_evt_rpt WHERE evt_id = 164", {"7777"}},
               {"SELECT var_id FROM secs_rpt_var WHERE rpt_id = 141 AND var_order = 2", {"8888"}},
               {"SELECT rpt_id FROM secs_report WHERE rpt_id < 101", {"0", "1", "100"}}});
    const Texts orders = file.column("SELECT rpt_order FROM secs_def_evt_rpt WHERE evt_id = 162");
    EXPECT_EQ(orders.size(), 12U);
    EXPECT_FALSE(std::ranges::is_sorted(orders, {}, [](const auto& o) { return std::stoi(o); }));
}

TEST_F(EverydayModel, ShowsUse) {
    EXPECT_GE(slotsWith("secs_cusvar", jet::data_page::kDeleted), 40);
    EXPECT_GE(slotsWith("secs_cusvar", jet::data_page::kPointer), 10);
    EXPECT_GE(slotsWith("secs_rpt_var", jet::data_page::kDeleted), 10);
}

TEST_F(EverydayModel, InTheLooserLayoutHasFlagsOfEveryKindAndNulls) {
    expectAll(GemFile(own("gem_int_flags.mdb")),
              {{"SELECT var_parentkey FROM secs_cusvar WHERE var_id = 104", {"<null>"}},
               {"SELECT var_canadd FROM secs_cusvar WHERE var_id IN (103, 105)", {"1", "-1"}},
               {"SELECT alm_enable FROM secs_alarm WHERE alm_id IN (103, 109)", {"<null>", "0"}},
               {"SELECT evt_enable FROM secs_cusevent WHERE evt_id = 110", {"-1"}},
               {"SELECT length(var_desc) FROM secs_cusvar WHERE var_id = 255", {"255"}}});
}

TEST_F(EverydayModel, StandsAtTheBordersOfTheNumberingInAnother) {
    expectAll(GemFile(own("gem_edges.mdb")), {{"SELECT var_id FROM secs_cusvar", {"57"}},
                                              {"SELECT evt_id FROM secs_cusevent", {"101"}},
                                              {"SELECT alm_id FROM secs_alarm", {"2147483647"}},
                                              {"SELECT rpt_id FROM secs_report", {"100"}}});
}

TEST_F(EverydayModel, GrowsToTwentyThousandVariables) {
    const GemFile file(own("gem_large.mdb"));
    EXPECT_EQ(file.records("select * from secs_cusvar")->recordCount(), 20'000);
    EXPECT_EQ(file.records("select * from secs_cusevent")->recordCount(), 5'000);
    EXPECT_EQ(file.records("select * from secs_rpt_var")->recordCount(), 60'000);
}

}  // namespace
}  // namespace stelvan::test
