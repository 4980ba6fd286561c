#include "model/publish/manual.h"

#include <gtest/gtest.h>

#include <pugixml.hpp>
#include <stdexcept>

#include "tests/model/publish/own_model.h"

namespace stelvan::test {
namespace {

using model::Part;

std::string manualOf(const model::Model& whole, const model::ManualOptions& options = {},
                     const std::optional<std::span<const model::Finding>>& findings = {}) {
    std::string page;
    model::writeManual(whole, findings, options, [&](std::string_view piece) { page += piece; });
    return page;
}

/// The element with an id, as text; fails where the page is no XML or has none.
std::string elementOf(const std::string& page, const std::string& id) {
    pugi::xml_document document;
    const pugi::xml_parse_result result =
        document.load_buffer(page.data(), page.size(), pugi::parse_default | pugi::parse_ws_pcdata);
    EXPECT_TRUE(result) << result.description() << " at "
                        << page.substr(static_cast<std::size_t>(result.offset), 80);
    const auto found = document.select_nodes(("//*[@id='" + id + "']").c_str());
    EXPECT_EQ(found.size(), 1U) << id;
    std::string text;
    if (found.empty()) return text;
    for (const auto& piece : found[0].node().select_nodes(".//text()"))
        text += piece.node().value();
    return text;
}

std::size_t timesIn(const std::string& page, const std::string& part) {
    std::size_t times = 0;
    for (auto at = page.find(part); at != std::string::npos; at = page.find(part, at + 1)) ++times;
    return times;
}

TEST(Manual, TextsCannotBreakThePage) {
    OwnModel own;
    own.event(1, "</h4><script>alert(1)</script>").variable(101, "a&b]]>\xED\xA0\x80\x01");
    own.whole[Part::CustomVariables].columns.push_back("var_desc");
    own.whole[Part::CustomVariables].rows[0].values.emplace_back("one\r\n<!-- two");
    const std::string title = "</style></title>\n<b>\"";
    const std::string page = manualOf(own.whole, {.title = title});
    EXPECT_NE(elementOf(page, "e1").find("</h4><script>alert(1)</script>"), std::string::npos);
    EXPECT_NE(elementOf(page, "v101").find("a&b]]>\uFFFD\u2401"), std::string::npos);
    EXPECT_NE(page.find("<p>one<br/>&lt;!-- two</p>"), std::string::npos);
    EXPECT_EQ(timesIn(page, "<script>alert"), 0U);
    EXPECT_EQ(timesIn(page, "</style>"), 1U);
    EXPECT_NE(page.find("<title>&lt;/style&gt;&lt;/title&gt; &lt;b&gt;&quot;</title>"),
              std::string::npos);
}

TEST(Manual, DoubledAndMissingIdentifiersHaveAPlaceEach) {
    OwnModel own;
    own.variable(101, "First").variable(101, "Second").variable(102, "Third");
    own.add(Part::CustomVariables, {{"var_name", "Nameless"}, {"var_type", "SV"}});
    own.report(10, "Lot").carries(10, 101, 1);
    const std::string page = manualOf(own.whole);
    EXPECT_NE(elementOf(page, "v101").find("First"), std::string::npos);
    EXPECT_NE(elementOf(page, "v101.2").find("Second"), std::string::npos);
    EXPECT_NE(elementOf(page, "v.c4").find("Nameless"), std::string::npos);
    EXPECT_EQ(timesIn(page, "href=\"#v101\""), 1U);
}

TEST(Manual, AVariableOfNoKnownTypeIsNotLost) {
    OwnModel own;
    own.add(Part::CustomVariables,
            {{"var_id", 5}, {"var_name", "Odd"}, {"var_type", "XX"}, {"var_min", "3"}});
    const std::string page = manualOf(own.whole);
    EXPECT_NE(elementOf(page, "vo").find("Odd"), std::string::npos);
    EXPECT_NE(elementOf(page, "v5").find("from 3"), std::string::npos);
    EXPECT_EQ(manualOf(OwnModel().variable(101, "Usual").whole).find("id=\"vo\""),
              std::string::npos);
}

TEST(Manual, PlaceholdersAreNoValues) {
    OwnModel own;
    own.add(Part::CustomVariables, {{"var_id", 101},
                                    {"var_name", "V"},
                                    {"var_type", "SV"},
                                    {"var_group", "NULL"},
                                    {"var_desc", "NULL"},
                                    {"var_format", "U4"},
                                    {"var_min", "0"},
                                    {"var_max", "0"},
                                    {"var_unit", "NULL"},
                                    {"var_defaultval", "NULL"}});
    const std::string page = manualOf(own.whole);
    EXPECT_NE(page.find("<b>V</b></td><td>U4</td><td></td><td></td><td></td></tr>"),
              std::string::npos);
}

TEST(Manual, APasswordStaysAtHome) {
    OwnModel own;
    own.add(Part::Settings, {{"set_field", "AdministratorPassword"},
                             {"set_value", "hunter2"},
                             {"set_defaultval", "hunter1"}});
    own.add(Part::Settings, {{"set_field", "DeviceID"}, {"set_value", "7"}});
    const std::string page = manualOf(own.whole);
    EXPECT_EQ(page.find("hunter"), std::string::npos);
    EXPECT_NE(elementOf(page, "s.s1").find("not shown"), std::string::npos);
    EXPECT_NE(elementOf(page, "s.s2").find("0 to 32767"), std::string::npos);
}

TEST(Manual, EveryReferenceLeadsThereAndBack) {
    OwnModel own;
    own.event(1, "Started").report(10, "Lot").variable(101, "Id");
    own.sends(1, 10, 1).carries(10, 101, 1);
    own.add(Part::Alarms, {{"alm_id", 7}, {"alm_name", "Hot"}, {"alm_set_ceid", 1}});
    own.add(Part::Limits, {{"var_id", 101}, {"limit_id", 2}});
    const std::string page = manualOf(own.whole);
    EXPECT_NE(elementOf(page, "v101").find("In reports: 10 Lot"), std::string::npos)
        << elementOf(page, "v101");
    EXPECT_NE(elementOf(page, "v101").find("Limits: 2"), std::string::npos);
    EXPECT_NE(elementOf(page, "r10").find("101 Id"), std::string::npos);
    EXPECT_NE(elementOf(page, "r10").find("1 Started"), std::string::npos);
    EXPECT_NE(elementOf(page, "e1").find("7 Hot"), std::string::npos);
    EXPECT_NE(elementOf(page, "a7").find("1 Started"), std::string::npos);
    EXPECT_NE(elementOf(page, "l.c1").find("101 Id"), std::string::npos);
}

TEST(Manual, ADataVariableTellsWithWhichEventsItIsSent) {
    OwnModel own;
    own.event(1, "Started").event(2, "Ended").report(10, "A").report(11, "B");
    own.add(Part::CustomVariables, {{"var_id", 101}, {"var_name", "Id"}, {"var_type", "DV"}});
    own.sends(1, 10, 1).sends(1, 11, 2).sends(2, 11, 1).carries(10, 101, 1).carries(11, 101, 1);
    const std::string text = elementOf(manualOf(own.whole), "v101");
    EXPECT_NE(text.find("Sent with: 1 Started, 2 Ended"), std::string::npos) << text;
}

TEST(Manual, FindingsAreAnAnnexWhereTheyAreGiven) {
    OwnModel own;
    own.variable(101, "Id");
    const std::vector<model::Finding> findings = {
        {model::Severity::Note, "unused", "secs_cusvar", jet::Value(101), "Id", "", "Nobody.", ""},
        {model::Severity::Error, "lost", "elsewhere", {}, "", "", "Bad & worse.", "Mend it."}};
    const std::string page = manualOf(own.whole, {}, std::span(findings));
    EXPECT_LT(page.find("Bad &amp; worse."), page.find("Nobody."));
    EXPECT_NE(elementOf(page, "findings").find("101 Id"), std::string::npos);
    EXPECT_EQ(manualOf(own.whole).find("findings-title"), std::string::npos);
    const auto nothing = manualOf(own.whole, {}, std::span<const model::Finding>());
    EXPECT_NE(elementOf(nothing, "findings").find("Nothing was found."), std::string::npos);
}

TEST(Manual, ALongTableComesInSheetsAndLosesNothing) {
    OwnModel own;
    for (int i = 0; i < 1001; ++i) own.variable(101 + i, "V" + std::to_string(i));
    const std::string page = manualOf(own.whole);
    EXPECT_EQ(timesIn(page, "<table class=\"variables\""), 5U);
    EXPECT_EQ(timesIn(page, "<tr id=\"v"), 1001U);
}

TEST(Manual, WhoeverFollowsTheWorkMayStopIt) {
    OwnModel own;
    for (int i = 0; i < 3000; ++i) own.variable(101 + i, "V");
    const auto stop = [](std::string_view, std::size_t done, std::size_t total) {
        EXPECT_LE(done, total);
        throw std::runtime_error("stopped");
    };
    EXPECT_THROW(model::writeManual(
                     own.whole, {}, {}, [](std::string_view) {}, stop),
                 std::runtime_error);
}

}  // namespace
}  // namespace stelvan::test
