// When leaving a field counts.
#include "form/focus_watch.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QGroupBox>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabBar>
#include <QTest>

#include "form/frames.h"

namespace stelvan::form {
namespace {

using enum gem::Control;

class FocusWatchTest : public testing::Test {
protected:
    FocusWatchTest()
        : form(buildForm(window)), watch(window, *form.nav.cmdSave, *form.nav.cmdCancel) {
        form.showFrame(2);
        form.nav.cmdSave->show();
        form.nav.cmdCancel->show();
        for (Field* field : form.fields()) field->setLocked(false);
        window.show();
        window.activateWindow();
        QApplication::setActiveWindow(&window);
        from().widget()->setFocus(Qt::OtherFocusReason);
    }

    [[nodiscard]] Field& from() const { return form[txtAlmName]; }

    QMainWindow window;
    MainForm form;
    FocusWatch watch;
    QSignalSpy left{&form[txtAlmName], &Field::lostFocus};
};

TEST_F(FocusWatchTest, TabToAnotherFieldCounts) {
    ASSERT_TRUE(from().widget()->hasFocus());
    QTest::keyClick(from().widget(), Qt::Key_Tab);
    EXPECT_EQ(left.size(), 1);
}

TEST_F(FocusWatchTest, MouseOnAnotherFieldCounts) {
    QTest::mouseClick(form[txtAlmGroup].widget(), Qt::LeftButton);
    EXPECT_EQ(left.size(), 1);
}

TEST_F(FocusWatchTest, ClickOnATabCounts) {
    QTest::mouseClick(form.tspData, Qt::LeftButton, {}, form.tspData->tabRect(1).center());
    EXPECT_EQ(left.size(), 1);
}

TEST_F(FocusWatchTest, ButtonStillActsWhenABoxTookTheMouseReleaseAway) {
    form.nav.cmdNext->setEnabled(true);
    QSignalSpy clicked(form.nav.cmdNext, &QPushButton::clicked);
    QWidget box;
    QObject::connect(&from(), &Field::lostFocus, &box,
                     [&box] { QTest::mouseRelease(&box, Qt::LeftButton); });
    QTest::mousePress(form.nav.cmdNext, Qt::LeftButton);
    EXPECT_EQ(left.size(), 1);
    QApplication::processEvents();
    EXPECT_EQ(clicked.size(), 1);
    EXPECT_FALSE(form.nav.cmdNext->isDown());
}

TEST_F(FocusWatchTest, ClickAfterACheckWithoutABoxActsOnce) {
    form.nav.cmdNext->setEnabled(true);
    QSignalSpy clicked(form.nav.cmdNext, &QPushButton::clicked);
    QTest::mouseClick(form.nav.cmdNext, Qt::LeftButton);
    QApplication::processEvents();
    EXPECT_EQ(left.size(), 1);
    EXPECT_EQ(clicked.size(), 1);
}

TEST_F(FocusWatchTest, MnemonicOfAnotherFieldCounts) {
    QTest::keyClick(&window, Qt::Key_G, Qt::AltModifier);
    EXPECT_TRUE(form[txtAlmGroup].widget()->hasFocus());
    EXPECT_EQ(left.size(), 1);
}

TEST_F(FocusWatchTest, FocusMovedByTheProgramDoesNotCount) {
    form[txtAlmGroup].setFocus();
    EXPECT_TRUE(form[txtAlmGroup].widget()->hasFocus());
    EXPECT_EQ(left.size(), 0);
}

TEST_F(FocusWatchTest, FocusMovedForTheUserCounts) {
    FocusWatch::moveFocus(*form[txtAlmGroup].widget(), false);
    EXPECT_EQ(left.size(), 1);
}

TEST_F(FocusWatchTest, DisablingOrHidingTheFieldDoesNotCount) {
    from().setEnabled(false);
    EXPECT_FALSE(from().widget()->hasFocus());
    EXPECT_EQ(left.size(), 0);
    from().setEnabled(true);
    from().widget()->setFocus(Qt::OtherFocusReason);
    from().setVisible(false);
    EXPECT_FALSE(from().widget()->hasFocus());
    EXPECT_EQ(left.size(), 0);
}

TEST_F(FocusWatchTest, BringingAnotherFrameToTheFrontDoesNotCount) {
    form.showFrame(7);
    EXPECT_EQ(left.size(), 0);
}

TEST_F(FocusWatchTest, CancelIsReachedWithoutACheck) {
    QTest::mouseClick(form.nav.cmdCancel, Qt::LeftButton);
    EXPECT_TRUE(form.nav.cmdCancel->hasFocus());
    EXPECT_EQ(left.size(), 0);
}

TEST_F(FocusWatchTest, PressingSaveRunsNoCheckOfItsOwn) {
    QTest::mouseClick(form.nav.cmdSave, Qt::LeftButton);
    EXPECT_TRUE(form.nav.cmdSave->hasFocus());
    EXPECT_EQ(left.size(), 0);
}

TEST_F(FocusWatchTest, SaveByMnemonicRunsNoCheckOfItsOwn) {
    QSignalSpy clicked(form.nav.cmdSave, &QPushButton::clicked);
    QTest::keyClick(&window, Qt::Key_S, Qt::AltModifier);
    QTest::qWait(150);
    EXPECT_EQ(clicked.size(), 1);
    EXPECT_EQ(left.size(), 0);
}

TEST_F(FocusWatchTest, GoingOnToSaveByKeyCounts) {
    FocusWatch::moveFocus(*form.nav.cmdSave, false);
    EXPECT_EQ(left.size(), 1);
}

TEST_F(FocusWatchTest, MenuDoesNotCount) {
    QTest::keyClick(&window, Qt::Key_F, Qt::AltModifier);
    QTest::keyClick(&window, Qt::Key_Escape);
    form.mnuFile->hide();
    EXPECT_EQ(left.size(), 0);
}

TEST_F(FocusWatchTest, AnotherWindowInFrontDoesNotCount) {
    QDialog box(&window);
    box.show();
    QApplication::setActiveWindow(&box);
    box.close();
    QApplication::setActiveWindow(&window);
    EXPECT_EQ(left.size(), 0);
}

TEST_F(FocusWatchTest, ClosingTheWindowDoesNotCount) {
    window.close();
    EXPECT_EQ(left.size(), 0);
}

}  // namespace
}  // namespace stelvan::form
