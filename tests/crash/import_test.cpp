// An import that is interrupted at any operation leaves the model as it was or as the texts say.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "jet/check/check.h"
#include "model/compare/differences.h"
#include "model/text/export_text.h"
#include "model/text/import_text.h"
#include "tests/crash/faulty_file_system.h"
#include "tests/crash/interruption.h"
#include "tests/support/models.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;
using model::Model;
using model::Part;

void import(const fs::path& texts, jet::Database& database) {
    jet::UnitOfWork unit(database);
    model::apply(database, model::planImport(database, model::readText(texts)));
    unit.commit();
}

class InterruptedImport : public ::testing::TestWithParam<Fault> {
protected:
    void SetUp() override {
        before_ = model::read(original_);
        after_ = before_;
        after_[Part::Alarms].rows.clear();
        model::Table& events = after_[Part::CustomEvents];
        const std::size_t name = events.find("evt_name").value();
        std::swap(events.rows[0].values[name], events.rows[1].values[name]);
        for (model::Row& row : after_[Part::CustomVariables].rows)
            row.values[after_[Part::CustomVariables].find("var_desc").value()] =
                std::string(2500, 'd');
        model::exportText(after_, texts_);
    }

    fs::path freshCopy() const { return scratch_.copyOf(original_); }

    /// What a new process finds.
    void expectBeforeOrAfter(const fs::path& file, bool beforeAllowed, bool afterAllowed) const {
        FaultyFileSystem sound;
        const jet::FileSystemOverride use(sound);
        const Model found = model::read(file);
        const bool before = model::differences(before_, found).empty();
        const bool after = model::differences(after_, found).empty();
        EXPECT_TRUE((before && beforeAllowed) || (after && afterAllowed)) << (before  ? "before"
                                                                              : after ? "after"
                                                                                      : "neither");
        EXPECT_FALSE(jet::anyFault(jet::check(file, {})));
    }

    ScratchDir scratch_;
    fs::path original_ = test::model("gem.mdb");
    fs::path texts_ = scratch_.path() / "texts";
    Model before_;
    Model after_;
};

TEST_P(InterruptedImport, LeavesTheModelAsBeforeOrAsAfter) {
    std::uint64_t operations = 0;
    {
        const fs::path file = freshCopy();
        FaultyFileSystem files;
        const jet::FileSystemOverride use(files);
        jet::Database database = jet::Database::open(file);
        const std::uint64_t opened = files.operations();
        import(texts_, database);
        operations = files.operations() - opened;
    }
    expectBeforeOrAfter(scratch_.path() / "gem.mdb", false, true);
    ASSERT_GT(operations, 20U);
    const std::uint64_t step = operations / 40 + 1;
    for (std::uint64_t n = 1; n <= operations; n += n + 4 < operations && n > 4 ? step : 1) {
        SCOPED_TRACE("operation " + std::to_string(n));
        fs::remove_all(scratch_.path() / "gem.mdb");
        const fs::path file = freshCopy();
        FaultyFileSystem files;
        Outcome outcome = Outcome::Done;
        {
            const jet::FileSystemOverride use(files);
            jet::Database database = jet::Database::open(file);
            files.startOver(n, GetParam());
            outcome = outcomeOf([&] { import(texts_, database); });
        }
        const fs::path cut = scratch_.path() / "cut";
        fs::remove_all(cut);
        files.powerCut(cut, static_cast<std::uint32_t>(n));
        expectBeforeOrAfter(cut / "gem.mdb", mayBeBefore(outcome), true);
        expectBeforeOrAfter(file, mayBeBefore(outcome), mayBeAfter(outcome, GetParam()));
    }
}

INSTANTIATE_TEST_SUITE_P(EveryFault, InterruptedImport, ::testing::ValuesIn(kEveryFault));

}  // namespace
}  // namespace stelvan::test
