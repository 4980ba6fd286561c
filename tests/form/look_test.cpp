// Colours that read and can be told apart, whatever palette the desktop hands out.
#include "form/look.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QWidget>

namespace stelvan::form {
namespace {

struct Named {
    const char* name;
    QPalette palette;
};

QPalette paletteOf(const char* window, const char* base, const char* text, const char* tip,
                   const char* tipText, const char* greyed) {
    QPalette palette{QColor(window)};
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        const char* const shown = group == QPalette::Disabled ? greyed : text;
        palette.setColor(group, QPalette::Base, QColor(base));
        palette.setColor(group, QPalette::Button, QColor(window));
        for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
            palette.setColor(group, role, QColor(shown));
        palette.setColor(group, QPalette::ToolTipBase, QColor(tip));
        palette.setColor(group, QPalette::ToolTipText, QColor(tipText));
        QColor hint(shown);
        hint.setAlpha(100);
        palette.setColor(group, QPalette::PlaceholderText, hint);
    }
    return palette;
}

std::vector<Named> palettes() {
    return {
        {"light", paletteOf("#efefef", "#ffffff", "#000000", "#ffffdc", "#000000", "#bebebe")},
        {"light, tool tips dark",
         paletteOf("#f6f5f4", "#ffffff", "#2e3436", "#000000", "#ffffff", "#929595")},
        {"light, tool tips white",
         paletteOf("#f6f5f4", "#ffffff", "#2e3436", "#ffffff", "#000000", "#929595")},
        {"dark", paletteOf("#353538", "#1e1e20", "#e8e8ea", "#4a4528", "#f2f0e4", "#808084")},
        {"dark, tool tips glaring",
         paletteOf("#353535", "#2d2d2d", "#eeeeec", "#ffffdc", "#000000", "#919190")},
        {"dark, tool tips as inputs",
         paletteOf("#353535", "#2d2d2d", "#eeeeec", "#2d2d2d", "#ffffff", "#5a5a5a")},
    };
}

/// Each palette becomes the application's for the time of a test.
class LookTest : public testing::TestWithParam<Named> {
protected:
    LookTest() {
        keepGreyedReadable();
        QApplication::setPalette(GetParam().palette);
    }
    ~LookTest() override { QApplication::setPalette(QPalette()); }
};

TEST_P(LookTest, GreyedTextsAndHintsRead) {
    const QPalette now = QApplication::palette();
    for (const auto role :
         {QPalette::Text, QPalette::WindowText, QPalette::ButtonText, QPalette::PlaceholderText}) {
        for (const auto ground : {QPalette::Base, QPalette::Window, QPalette::Button})
            EXPECT_GE(contrast(now.color(QPalette::Disabled, role),
                               now.color(QPalette::Disabled, ground)),
                      kReadable)
                << role << " on " << ground;
    }
    EXPECT_GE(contrast(now.color(QPalette::Active, QPalette::PlaceholderText),
                       now.color(QPalette::Active, QPalette::Base)),
              kReadable);
}

TEST_P(LookTest, OpenAndClosedInputsCanBeToldApartWithoutGlare) {
    const QPalette now = QApplication::palette();
    QWidget open;
    QWidget closed;
    applyColour(open, Colour::ToolTipBackground, {});
    applyColour(closed, Colour::WindowBackground, {});
    const QColor openGround = open.palette().color(QPalette::Active, QPalette::Base);
    const QColor closedGround = closed.palette().color(QPalette::Active, QPalette::Base);
    const int difference = std::abs(openGround.red() - closedGround.red()) +
                           std::abs(openGround.green() - closedGround.green()) +
                           std::abs(openGround.blue() - closedGround.blue());
    EXPECT_GE(difference, 20);
    EXPECT_LT(contrast(openGround, closedGround), 2.3);
    for (const QWidget* input : {&open, &closed}) {
        const QPalette mine = input->palette();
        EXPECT_GE(contrast(mine.color(QPalette::Active, QPalette::Text),
                           mine.color(QPalette::Active, QPalette::Base)),
                  kReadable);
        EXPECT_GE(contrast(mine.color(QPalette::Disabled, QPalette::Text),
                           mine.color(QPalette::Disabled, QPalette::Base)),
                  kReadable);
    }
    // Marks of faults are seen on both grounds, as pictures must be.
    for (const QColor& ground :
         {openGround, closedGround, now.color(QPalette::Active, QPalette::Window)})
        EXPECT_GE(contrast(faultColour(now), ground), 3);
    EXPECT_GE(contrast(unsavedColour(now), now.color(QPalette::Active, QPalette::Window)),
              kReadable);
}

INSTANTIATE_TEST_SUITE_P(Palettes, LookTest, testing::ValuesIn(palettes()),
                         [](const testing::TestParamInfo<Named>& tested) {
                             std::string name = tested.param.name;
                             std::erase_if(name, [](char c) { return c == ',' || c == ' '; });
                             return name;
                         });

TEST(Look, ContrastIsThatOfTheUsualFormula) {
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21, 0.01);
    EXPECT_NEAR(contrast(Qt::white, Qt::white), 1, 0.01);
    EXPECT_NEAR(contrast(QColor("#777777"), Qt::white), 4.48, 0.01);
}

TEST(Look, ATextThatReadsStaysAndOneThatDoesNotIsMovedNoFurtherThanNeeded) {
    EXPECT_EQ(readable(QColor("#555555"), Qt::white), QColor("#555555"));
    const QColor moved = readable(QColor("#bebebe"), Qt::white);
    EXPECT_GE(contrast(moved, Qt::white), kReadable);
    EXPECT_LT(contrast(moved, Qt::white), 6);
}

TEST(Look, TheToolTipsOwnColoursAreKeptWhereTheyServe) {
    const QPalette light = palettes().front().palette;
    EXPECT_EQ(openGround(light).ground.color(), QColor("#ffffdc"));
    EXPECT_EQ(openGround(light).text.color(), QColor(Qt::black));
}

}  // namespace
}  // namespace stelvan::form
