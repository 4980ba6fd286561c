// Texts between the floors below and the widgets.
#include "form/text.h"

#include <gtest/gtest.h>

#include <QTextDocument>

namespace stelvan::form {
namespace {

TEST(Text, EveryTextSurvivesBothWays) {
    const std::string texts[] = {"",
                                 "plain",
                                 "Grüße 日本語",
                                 "\xF0\x9F\x98\x80 beyond the basic plane",
                                 "\xEF\xBB\xBF"
                                 "begins with a mark",
                                 "a\r\nb\tc",
                                 "\xED\xA0\xBD",
                                 "a\xED\xB0\x80z",
                                 "\xED\xA0\xBD!\xED\xB8\x80"};
    for (const std::string& text : texts) EXPECT_EQ(toUtf8(toQt(text)), text);
}

TEST(Text, HalfASurrogatePairIsOneCodeUnit) {
    EXPECT_EQ(toQt("\xED\xA0\xBD"), QString(QChar(0xD83D)));
    EXPECT_EQ(toQt("\xF0\x9F\x98\x80").size(), 2);
}

TEST(Text, OneLineHasABlankForEachLineBreak) {
    const QString text = QString::fromUtf16(u"a\r\nb\u00A0c\td");
    EXPECT_EQ(onOneLine(text), QString::fromUtf16(u"a b\u00A0c d"));
    EXPECT_EQ(withPlainBlanks(text), QStringLiteral("a b c d"));
}

TEST(Text, DifferenceKeepsWhatBothVersionsShare) {
    const Difference inserted = differenceOf(u"abcd", u"abXcd");
    EXPECT_EQ(inserted.prefix, 2);
    EXPECT_EQ(inserted.suffix, 2);
    const Difference doubled = differenceOf(u"aa", u"aaa");
    EXPECT_EQ(doubled.prefix + doubled.suffix, 2);
}

TEST(ToolTips, ShowATextLetterByLetter) {
    EXPECT_EQ(asToolTip("plain & simple"), "plain & simple");
    for (const char* text : {"<b>bold</b>", "a <img src='x'> b", "<html>", "two\n<i>lines</i>"}) {
        QTextDocument shown;
        // As a tool tip decides.
        const QString tip = asToolTip(text);
        Qt::mightBeRichText(tip) ? shown.setHtml(tip) : shown.setPlainText(tip);
        EXPECT_EQ(shown.toPlainText(), text);
    }
}

}  // namespace
}  // namespace stelvan::form
