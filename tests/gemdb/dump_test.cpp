// A dump whose reader takes its time: nobody waits for it, and it stays what it was when it began.
#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <string>

#include "jet/database.h"
#include "tests/support/models.h"
#include "tests/support/run_gemdb.h"

namespace stelvan::test {
namespace {

struct ClosePipe {
    void operator()(std::FILE* pipe) const { ::pclose(pipe); }
};

TEST(Dump, ThatNobodyReadsOnKeepsNoWriterOut) {
    const ScratchDir folder;
    const std::string file = folder.copyOf(model("gem_large.mdb"));
    const std::string before = runGemdb({"dump", file}).out;
    ASSERT_GT(before.size(), std::size_t{1} << 20) << "more than any pipe holds";

    const std::string command = STELVAN_BINARY_DIR "/gemdb dump '" + file + "'";
    const std::unique_ptr<std::FILE, ClosePipe> pipe(::popen(command.c_str(), "r"));
    std::string read(1, static_cast<char>(std::fgetc(pipe.get())));
    {
        jet::Database database = jet::Database::open(file);
        jet::Table& table = database.table("secs_cusvar");
        const auto row = table.scan({});
        ASSERT_TRUE(row->next());
        const jet::RowId id = row->rowId();
        jet::UnitOfWork unit(database);
        table.erase(id);
        unit.commit();
    }
    for (int c = std::fgetc(pipe.get()); c != EOF; c = std::fgetc(pipe.get()))
        read += static_cast<char>(c);
    EXPECT_TRUE(read == before) << "the dump shows two states of the file";
    EXPECT_NE(runGemdb({"dump", file}).out, before);
}

}  // namespace
}  // namespace stelvan::test
