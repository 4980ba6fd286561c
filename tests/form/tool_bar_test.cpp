// The tool bar: what can act now is enabled, and every tool is said as well as drawn.
#include "form/tool_bar.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QMainWindow>

#include "form/tool_icons.h"

namespace stelvan::form {
namespace {

class ToolBarTest : public ::testing::Test {
protected:
    QMainWindow window;
    ToolBar* bar = new ToolBar;
    void SetUp() override { window.addToolBar(bar); }
    [[nodiscard]] bool enabled(Tool tool) const { return bar->action(tool)->isEnabled(); }
};

TEST_F(ToolBarTest, AToolWithoutAHookIsDisabledAndOneThatCannotActNowIsToo) {
    bool possible = false;
    int runs = 0;
    EXPECT_FALSE(enabled(Tool::Check));
    bar->setHook(Tool::Check, [&] { ++runs; });
    bar->setHook(
        Tool::Undo, [&] { ++runs; }, [&] { return possible; });
    EXPECT_TRUE(enabled(Tool::Check));
    EXPECT_FALSE(enabled(Tool::Undo));
    possible = true;
    bar->follow();
    EXPECT_TRUE(enabled(Tool::Undo));
    bar->action(Tool::Undo)->trigger();
    EXPECT_EQ(runs, 1);
    bar->follow(false);
    EXPECT_FALSE(enabled(Tool::Check) || enabled(Tool::Undo));
    bar->follow();
    EXPECT_FALSE(enabled(Tool::Check));
    bar->follow(true);
    EXPECT_TRUE(enabled(Tool::Check) && enabled(Tool::Undo));
    EXPECT_FALSE(enabled(Tool::Export));
}

TEST_F(ToolBarTest, EveryToolHasAPictureAKeyATipThatNamesItAndAWordForScreenReaders) {
    QStringList keys;
    for (std::size_t index = 0; index < kTools; ++index) {
        const QAction& action = *bar->action(static_cast<Tool>(index));
        const QString key = action.shortcut().toString(QKeySequence::NativeText);
        EXPECT_FALSE(action.icon().isNull()) << action.objectName().toStdString();
        EXPECT_FALSE(key.isEmpty());
        EXPECT_TRUE(action.toolTip().endsWith("(" + key + ")"));
        QWidget* const button = bar->widgetForAction(bar->action(static_cast<Tool>(index)));
        EXPECT_EQ("act" + button->accessibleName(), action.objectName());
        EXPECT_FALSE(keys.contains(key));
        keys << key;
    }
}

TEST_F(ToolBarTest, PicturesAreSeenOnALightAndOnADarkGround) {
    const auto brightest = [](const QPalette& palette, QIcon::Mode mode) {
        const QImage picture = toolIcon("back", palette).pixmap(QSize(20, 20), mode).toImage();
        int lightness = 0;
        for (int x = 0; x < picture.width(); ++x)
            for (int y = 0; y < picture.height(); ++y)
                if (picture.pixelColor(x, y).alpha() > 200)
                    lightness = std::max(lightness, picture.pixelColor(x, y).lightness());
        return lightness;
    };
    QPalette light(QColor(0xee, 0xee, 0xee));
    light.setColor(QPalette::ButtonText, Qt::black);
    QPalette dark(QColor(0x35, 0x35, 0x38));
    dark.setColor(QPalette::ButtonText, QColor(0xee, 0xee, 0xee));
    dark.setColor(QPalette::Disabled, QPalette::ButtonText, QColor(0x70, 0x70, 0x70));
    EXPECT_LT(brightest(light, QIcon::Normal), 160);
    EXPECT_GT(brightest(dark, QIcon::Normal), 200);
    EXPECT_LT(brightest(dark, QIcon::Disabled), 130);
}

}  // namespace
}  // namespace stelvan::form
