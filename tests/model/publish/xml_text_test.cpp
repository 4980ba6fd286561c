#include "model/publish/xml_text.h"

#include <gtest/gtest.h>

namespace stelvan::model {
namespace {

TEST(XmlText, KeepsEveryCharacterThatXmlHas) {
    const std::string text = "tab\t\r\n<&\"'> \xC3\xA4 \xE6\xBC\xA2 \xF0\x9F\x98\x80 \x7F";
    EXPECT_TRUE(isXmlText(text));
    EXPECT_EQ(xmlText(text), text);
}

TEST(XmlText, ReplacesEachThatItHasNot) {
    EXPECT_EQ(xmlText(std::string("a\0b", 3)),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(xmlText("\x1F"), "\xEF\xBF\xBD");
    EXPECT_EQ(xmlText("\xED\xA0\x80"), "\xEF\xBF\xBD") << "half a pair";
    EXPECT_EQ(xmlText("\xEF\xBF\xBF"), "\xEF\xBF\xBD") << "U+FFFF";
    EXPECT_EQ(xmlText("\xFF"), "\xEF\xBF\xBD") << "no UTF-8";
    EXPECT_FALSE(isXmlText("\xFF"));
}

}  // namespace
}  // namespace stelvan::model
