#include "model/publish/html.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace stelvan::test {
namespace {

std::string escaped(std::string_view text) {
    std::string out;
    model::appendEscaped(out, text, "<br/>");
    return out;
}

std::string written(const std::function<void(model::Html&)>& write) {
    std::string out;
    const model::Sink sink = [&](std::string_view piece) { out += piece; };
    model::Html html(sink);
    write(html);
    html.finish();
    return out;
}

TEST(HtmlText, MarkupInATextIsText) {
    EXPECT_EQ(escaped("a<b>&\"c\" 'd'"), "a&lt;b&gt;&amp;&quot;c&quot; 'd'");
}

TEST(HtmlText, LineBreaksOfEveryKindAreKept) {
    EXPECT_EQ(escaped("one\r\ntwo\nthree\rfour\n\nsix"),
              "one<br/>two<br/>three<br/>four<br/><br/>six");
}

TEST(HtmlText, ControlCharactersBecomeTheirPictures) {
    EXPECT_EQ(escaped(std::string_view("a\0b\x1B\x7F\tc", 7)), "a\u2400b\u241B\u2421\tc");
}

TEST(HtmlText, WhatIsNoCharacterIsReplaced) {
    EXPECT_EQ(escaped("x\xED\xA0\x80y"), "x\uFFFDy");  // half a surrogate pair
    EXPECT_EQ(escaped("x\xFFy"), "x\uFFFDy");          // no UTF-8
    EXPECT_EQ(escaped("\xC2\x85"), "\uFFFD");          // a control character beyond ASCII
    EXPECT_EQ(escaped("\xEF\xBF\xBF"), "\uFFFD");      // a code that never is one
    EXPECT_EQ(escaped("\u00FC \u5831 \U0001F600"), "\u00FC \u5831 \U0001F600");
}

TEST(HtmlText, AStyleStringHoldsNothingButCodes) {
    EXPECT_EQ(model::cssString("a\"}"), "\"\\000061\\000022\\00007d\"");
    EXPECT_EQ(model::cssString("\xED\xA0\x80"), "\"\\00fffd\"");
}

TEST(Html, NestsAndEscapes) {
    EXPECT_EQ(written([](model::Html& html) {
                  html.open("p").attribute("title", "a\"\nb").text("x<y");
                  html.open("input").attribute("type", "text").closeEmpty();
                  html.element("b", "kicker", "z").close();
              }),
              "<p title=\"a&quot;&#10;b\">x&lt;y<input type=\"text\"/>"
              "<b class=\"kicker\">z</b></p>");
}

TEST(Html, AnElementLeftOpenIsAMistakeThatIsSeen) {
    EXPECT_THROW(written([](model::Html& html) { html.open("p"); }), std::logic_error);
    EXPECT_THROW(written([](model::Html& html) { html.text("x").attribute("a", "b"); }),
                 std::logic_error);
}

}  // namespace
}  // namespace stelvan::test
