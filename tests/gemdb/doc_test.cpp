// The interface manual as the program writes it: a sound page, every item once, every reference
// leading somewhere, and nothing written where there is no model.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <pugixml.hpp>
#include <set>

#include "model/core/cross_reference.h"
#include "model/core/model.h"
#include "tests/gemdb/command_test.h"
#include "tests/support/model_names.h"

namespace stelvan::test {
namespace {

class DocTest : public CommandTest {
protected:
    /// The page that the program makes of a file.
    std::string doc(const std::string& file, std::vector<std::string> options = {}) const {
        options.insert(options.begin(), {"doc", file, "-o", out_});
        const ProgramRun run = runGemdb(options);
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(run.out + run.err, "");
        return readFile(out_);
    }

    const std::string out_ = folder_.path() / "manual.html";
};

/// Fails where the page is not well-formed.
pugi::xml_document parsed(const std::string& page) {
    pugi::xml_document document;
    const pugi::xml_parse_result result = document.load_buffer(page.data(), page.size());
    EXPECT_TRUE(result) << result.description() << " at "
                        << page.substr(static_cast<std::size_t>(result.offset), 80);
    return document;
}

std::vector<std::string> attributes(const pugi::xml_document& page, const std::string& path) {
    std::vector<std::string> values;
    for (const auto& found : page.select_nodes(path.c_str()))
        values.emplace_back(found.attribute().value());
    return values;
}

std::size_t itemsOf(const model::Model& whole) {
    std::size_t items = 0;
    for (const model::PartFacts& facts : model::parts())
        if (!model::isLinks(facts.part)) items += whole[facts.part].rows.size();
    return items;
}

TEST_F(DocTest, EveryModelBecomesASoundPage) {
    std::vector<std::string> names = gemNames();
    names.insert(names.end(), {"gem_few_columns.mdb", "gem_spellings.mdb"});
    for (const std::string& name : names) {
        const pugi::xml_document page = parsed(doc(model(name)));
        std::vector<std::string> ids = attributes(page, "//@id");
        const std::set<std::string> places(ids.begin(), ids.end());
        EXPECT_EQ(places.size(), ids.size()) << name;
        for (const std::string& link : attributes(page, "//a/@href")) {
            EXPECT_TRUE(link.starts_with('#')) << link;
            EXPECT_TRUE(places.contains(link.substr(1))) << name << ": " << link;
        }
        for (const std::string& owner : attributes(page, "//@aria-labelledby"))
            EXPECT_TRUE(places.contains(owner)) << owner;
        const auto items = page.select_nodes("//main//tr[@id] | //main//article[@id]");
        EXPECT_EQ(items.size(), itemsOf(model::read(model(name)))) << name;
    }
}

TEST_F(DocTest, EveryItemOfTheModelStandsInItsOwnPlace) {
    const pugi::xml_document page = parsed(doc(file_));
    const model::Model whole = model::read(file_);
    const std::vector<std::pair<model::Part, char>> letters = {
        {model::Part::StandardVariables, 'v'}, {model::Part::CustomVariables, 'v'},
        {model::Part::StandardEvents, 'e'},    {model::Part::CustomEvents, 'e'},
        {model::Part::Reports, 'r'},           {model::Part::Alarms, 'a'}};
    for (const auto& [part, letter] : letters) {
        for (const model::Row& row : whole[part].rows) {
            const model::Item item{part, &whole[part], &row};
            const std::string path = "//*[@id='" + (letter + item.idText()) + "']//b";
            EXPECT_EQ(page.select_node(path.c_str()).node().text().get(), item.name()) << path;
        }
    }
}

TEST_F(DocTest, NeverWritesOverTheModel) {
    const std::string before = readFile(file_);
    expectFailure({"doc", file_, "-o", file_}, "is the model itself");
    EXPECT_EQ(readFile(file_), before);
}

TEST_F(DocTest, EveryEventThatSendsReportsHasAPicture) {
    const pugi::xml_document page = parsed(doc(file_));
    EXPECT_TRUE(
        page.select_nodes("//article[not(.//svg) and not(.//p='Sends no report.')]").empty());
    EXPECT_FALSE(page.select_nodes("//svg").empty());
    EXPECT_EQ(page.select_nodes("//svg").size(),
              page.select_nodes("//svg[title and desc and .//rect and .//text]").size());
}

TEST_F(DocTest, ThePageNeedsNothingBesideItself) {
    const std::string page = doc(file_);
    for (const char* load :
         {" src=", "@import", "url(", "http://", "https://", "<iframe", "<object"})
        EXPECT_EQ(page.find(load), std::string::npos) << load;
    EXPECT_NE(page.find("default-src 'none'"), std::string::npos);
}

TEST_F(DocTest, TablesAndLandmarksAreMadeForThoseWhoListen) {
    const pugi::xml_document page = parsed(doc(file_));
    EXPECT_TRUE(page.select_nodes("//th[not(@scope)]").empty());
    EXPECT_TRUE(page.select_nodes("//table[not(@aria-label)]").empty());
    EXPECT_EQ(page.select_nodes("//h1").size(), 1U);
    EXPECT_EQ(page.select_nodes("/html/body/main | /html/body/nav | /html/body/header").size(), 3U);
    EXPECT_STREQ(page.select_node("/html/@lang").attribute().value(), "en");
    EXPECT_STREQ(page.select_node("/html/body/a[1]/@href").attribute().value(), "#content");
}

TEST_F(DocTest, TheCoverSaysWhatTheModelAndTheUserSay) {
    const std::string page =
        doc(file_, {"--title", "Line 3 <etcher>", "--maker", "Wet & Works", "--model", "Bench 7",
                    "--version", "2.4", "--date", "May"});
    const pugi::xml_document document = parsed(page);
    EXPECT_EQ(std::string(document.select_node("//h1").node().text().get()), "Line 3 <etcher>");
    for (const char* fact : {"Wet & Works", "Bench 7", "2.4", "May"}) {
        const std::string path = "//header//dd[.='" + std::string(fact) + "']";
        EXPECT_EQ(document.select_nodes(path.c_str()).size(), 1U) << fact;
    }
    const std::string device = "//header//div[dt='Device ID']/dd";
    const auto values = select("SELECT set_value FROM secs_setting WHERE set_field = 'DeviceID'");
    EXPECT_EQ(values.front(),
              "{\"set_value\":\"" +
                  std::string(document.select_node(device.c_str()).node().text().get()) + "\"}");
}

TEST_F(DocTest, TheSameModelGivesTheSameBytes) {
    EXPECT_EQ(doc(file_), doc(file_));
}

TEST_F(DocTest, FindingsOfACheckAreAnAnnexUnlessUnwanted) {
    const ProgramRun check = runGemdb({"check", file_, "--json"});
    const pugi::xml_document page = parsed(doc(file_));
    EXPECT_EQ(page.select_nodes("//section[@id='findings']//tbody/tr").size(),
              splitLines(check.out).size());
    EXPECT_TRUE(parsed(doc(file_, {"--no-findings"})).select_nodes("//*[@id='findings']").empty());
}

TEST_F(DocTest, WhereThereIsNoModelTheOldPageStays) {
    std::ofstream(out_) << "as it was";
    const auto refuses = [&](const std::string& file) {
        expectFailure({"doc", file, "-o", out_}, file);
        EXPECT_EQ(readFile(out_), "as it was") << file;
    };
    refuses(folder_.path() / "absent.mdb");
    refuses(model("shapes/overflow.mdb"));
    for (const char* kind : {"damaged_catalogue", "access2007", "wrong_signature", "access97",
                             "truncated", "text_file", "zero_length"})
        refuses(model("refused/" + std::string(kind) + "/gem.mdb"));
}

TEST_F(DocTest, AFileThatSomebodyWritesIsWaitedForAndThenLeftAlone) {
    std::ofstream(out_) << "as it was";
    const int held = ::open(file_.c_str(), O_RDWR | O_CLOEXEC);
    struct flock whole = {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    ASSERT_EQ(::fcntl(held, F_OFD_SETLK, &whole), 0);
    expectFailure({"doc", file_, "-o", out_}, "in use");
    EXPECT_EQ(readFile(out_), "as it was");
    ::close(held);
}

TEST_F(DocTest, APlaceThatCannotBeWrittenIsOneLine) {
    const std::string nowhere = folder_.path() / "nowhere" / "manual.html";
    expectFailure({"doc", file_, "-o", nowhere}, nowhere);
    expectFailure({"doc", file_}, "output");
    const std::filesystem::directory_iterator files(folder_.path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

}  // namespace
}  // namespace stelvan::test
