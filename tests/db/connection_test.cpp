// Opening: what is turned away, with which number and text, and that nothing is left behind.
#include "db/connection.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "tests/db/gem_file.h"

namespace stelvan::db {
namespace {

using stelvan::test::ScratchDir;
using test::failureOf;

constexpr std::int32_t kFailed = -2147467259;

std::string bytesOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

base::RunTimeError openingOf(const std::string& path) {
    return failureOf([&] {
        Connection connection;
        connection.setConnectionText("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + path +
                                     "; Mode=Read|Write");
        connection.open();
        Recordset records;
        records.open("select * from secs_cusvar", connection);
        for (; !records.eof(); records.moveNext()) (void)records.field("var_desc");
    });
}

TEST(ConnectionOpening, AMissingFileIsNamed) {
    const ScratchDir scratch;
    const std::string path = (scratch.path() / "gem.mdb").string();
    const base::RunTimeError error = openingOf(path);
    EXPECT_EQ(error.number(), kFailed);
    EXPECT_EQ(std::string(error.what()), "Could not find file '" + path + "'.");
}

TEST(ConnectionOpening, AMissingFolderAndAFolderAreNoValidPath) {
    const ScratchDir scratch;
    for (const auto& path : {scratch.path() / "nowhere" / "gem.mdb", scratch.path()}) {
        const base::RunTimeError error = openingOf(path.string());
        EXPECT_EQ(error.number(), kFailed) << path;
        EXPECT_NE(std::string(error.what()).find("'" + path.string() + "' is not a valid path."),
                  std::string::npos)
            << error.what();
    }
}

TEST(ConnectionOpening, AnotherProviderCannotBeFound) {
    Connection connection;
    connection.setConnectionText("Provider=Other;Data Source=/x/gem.mdb");
    EXPECT_EQ(failureOf([&] { connection.open(); }).number(), 3706);
}

class RefusedFile : public testing::TestWithParam<stelvan::test::ModelFile> {};

TEST_P(RefusedFile, EndsAsAReportedFailureAndIsLeftAsItWas) {
    STELVAN_NEEDS_FILE(GetParam());
    const test::GemFile file(GetParam().path());
    const std::string before = bytesOf(file.path());
    const base::RunTimeError error = openingOf(file.path());
    EXPECT_NE(error.number(), 0);
    EXPECT_FALSE(std::string(error.what()).empty());
    EXPECT_EQ(bytesOf(file.path()), before);
}

INSTANTIATE_TEST_SUITE_P(EachKind, RefusedFile,
                         testing::ValuesIn(stelvan::test::byEveryMaker(
                             {"refused/access97/gem.mdb", "refused/access2007/gem.mdb",
                              "refused/text_file/gem.mdb", "refused/zero_length/gem.mdb",
                              "refused/wrong_signature/gem.mdb", "refused/truncated/gem.mdb",
                              "refused/truncated_at_page/gem.mdb",
                              "refused/damaged_catalogue/gem.mdb", "refused/damaged_ring/gem.mdb",
                              "refused/damaged_rows/gem.mdb", "refused/damaged_memo/gem.mdb"})),
                         [](const auto& kind) { return stelvan::test::label(kind.param); });

TEST(ConnectionOpening, AFileOfAnotherFormatIsSaidToBeOne) {
    for (const char* name :
         {"refused/access97/gem.mdb", "refused/access2007/gem.mdb", "refused/text_file/gem.mdb",
          "refused/zero_length/gem.mdb", "refused/wrong_signature/gem.mdb"}) {
        STELVAN_GEM_FILE(name);
        const base::RunTimeError error = openingOf(file.path());
        EXPECT_EQ(error.number(), kFailed) << name;
        const std::string start = "Unrecognized database format '" + file.path() + "'.  ";
        EXPECT_EQ(std::string(error.what()).find(start), 0U) << error.what();
        EXPECT_GT(std::string(error.what()).size(), start.size()) << "what the file is instead";
    }
}

TEST(ConnectionOpening, ModeReadRefusesToWrite) {
    STELVAN_GEM_FILE("gem.mdb");
    Connection connection;
    connection.setConnectionText("Provider=Microsoft.Jet.OLEDB.4.0;Mode=Read;Data Source=" +
                                 file.path());
    connection.open();
    EXPECT_EQ(failureOf([&] { connection.execute("DELETE FROM secs_alarm"); }).number(), kFailed);
    Recordset records;
    records.open("select * from secs_alarm", connection);
    EXPECT_EQ(records.recordCount(), 90);
    EXPECT_EQ(failureOf([&] { records.deleteCurrent(); }).number(), -2147217911);
}

}  // namespace
}  // namespace stelvan::db
