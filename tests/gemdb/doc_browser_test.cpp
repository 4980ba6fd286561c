// The interface manual in a browser, where one is installed: its script works, nothing is
// complained of, and it can be printed.
#include <cstdlib>
#include <fstream>

#include "tests/gemdb/command_test.h"

namespace stelvan::test {
namespace {

class DocBrowserTest : public CommandTest {
protected:
    void SetUp() override {
        CommandTest::SetUp();
        for (const char* name : {"chromium", "chromium-browser", "google-chrome"}) {
            const ProgramRun found =
                runProgram("/bin/sh", {"-c", std::string("command -v ") + name});
            if (found.status == 0) browser_ = splitLines(found.out).front();
        }
        if (browser_.empty()) GTEST_SKIP() << "no Chromium is installed";
    }

    ProgramRun browse(std::vector<std::string> arguments, const std::string& page) const {
        arguments.insert(arguments.begin(),
                         {"--headless", "--no-sandbox", "--disable-gpu", "--no-first-run",
                          "--user-data-dir=" + (folder_.path() / "browser").string()});
        arguments.push_back("file://" + page);
        return runProgram(browser_, arguments);
    }

    /// The manual of a model, with the probe in its head.
    std::string probed(const std::string& file) const {
        const std::string plain = folder_.path() / "manual.html";
        EXPECT_EQ(runGemdb({"doc", file, "-o", plain}).status, 0);
        std::string page = readFile(plain);
        const std::string probe = readFile(STELVAN_SOURCE_DIR "/tests/gemdb/pages/probe.js");
        page.insert(page.find("<style>"), "<script>" + probe + "</script>");
        const std::string copy = folder_.path() / "probed.html";
        std::ofstream(copy) << page;
        return copy;
    }

    std::string browser_;
};

TEST_F(DocBrowserTest, FindingKeysAndPicturesWorkWithoutAComplaint) {
    const std::string page = probed(STELVAN_BINARY_DIR "/demo/gem.mdb");
    const ProgramRun run = browse({"--dump-dom"}, page);
    EXPECT_EQ(run.status, 0) << run.err;
    const std::string head = run.out.substr(0, run.out.find("<head"));
    EXPECT_NE(head.find("data-faults=\"none\""), std::string::npos) << head;
    EXPECT_EQ(head.find("data-looked=\"0\""), std::string::npos) << head;
}

TEST_F(DocBrowserTest, ItIsPrinted) {
    const std::string page = folder_.path() / "manual.html";
    const std::string paper = folder_.path() / "manual.pdf";
    ASSERT_EQ(runGemdb({"doc", file_, "-o", page}).status, 0);
    EXPECT_EQ(browse({"--print-to-pdf=" + paper}, page).status, 0);
    const std::string content = readFile(paper);
    EXPECT_TRUE(content.starts_with("%PDF"));
    std::size_t pages = 0;
    for (auto at = content.find("/Type /Page\n"); at != std::string::npos;
         at = content.find("/Type /Page\n", at + 1))
        ++pages;
    EXPECT_GT(pages, 20U);
}

}  // namespace
}  // namespace stelvan::test
