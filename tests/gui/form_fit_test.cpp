// The window fits a small screen, and nothing in it jumps.
#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>

#include "tests/support/window_bench.h"

namespace stelvan::test {
namespace {

constexpr QSize kPanelPc(800, 600);

class FormFit : public WindowBench {
protected:
    void SetUp() override {
        open();
        window->resize(kPanelPc);
        settle();
    }
    static void settle() {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
    [[nodiscard]] const QScrollArea& page() const {
        return *form()
                    .Frame[static_cast<std::size_t>(form().frontFrame())]
                    ->findChild<QScrollArea*>();
    }
    void expectFits() {
        settle();
        EXPECT_EQ(window->size(), kPanelPc) << state().category;
        EXPECT_EQ(page().horizontalScrollBar()->maximum(), 0) << state().category;
    }
    [[nodiscard]] int top(gem::Control input) const {
        return form()[input].widget()->mapTo(window.get(), QPoint()).y();
    }
};

TEST_F(FormFit, NobodyScrollsSidewaysOnAPanelPcAndEditingNeverChangesTheWindowsSize) {
    for (std::int16_t category = gem::GEMEVT; category <= gem::CSTRPT; ++category) {
        clickCategory(category);
        expectFits();
        if (form().nav.cmdUpdate->isEnabled()) {
            const QRect place = form().nav.cmdNext->geometry();
            edit();
            expectFits();
            EXPECT_EQ(form().nav.cmdNext->geometry(), place) << category;
            press(form().nav.cmdCancel);
            expectFits();
        }
        if (form().nav.cmdNew->isEnabled()) {
            press(form().nav.cmdNew);
            expectFits();
            press(form().nav.cmdCancel);
        }
    }
}

TEST_F(FormFit, EveryButtonOfTheNavigatorShowsItsWholeCaption) {
    clickCategory(gem::CSTALM);
    edit();
    settle();
    for (const auto* button : form().nav.fraDBOperation->findChildren<QPushButton*>())
        EXPECT_GE(button->width(),
                  button->fontMetrics().size(Qt::TextShowMnemonic, button->text()).width())
            << button->objectName().toStdString();
}

TEST_F(FormFit, WhatStandsBelowTheDescriptionKeepsItsPlaceBetweenListsAndOtherVariables) {
    for (const QSize size : {kPanelPc, QSize(1200, 900)}) {
        window->resize(size);
        clickCategory(gem::CSTVSV);
        settle();
        const int format = top(cmbVarFormat);
        const int value = top(txtVarValue);
        goTo("txtVarID", "227");
        settle();
        ASSERT_TRUE(form().children.selected->isVisible());
        EXPECT_EQ(top(cmbVarFormat), format);
        EXPECT_EQ(top(txtVarValue), value);
        edit();
        settle();
        EXPECT_EQ(top(cmbVarFormat), format);
        press(form().nav.cmdCancel);
    }
}

TEST_F(FormFit, DescriptionsHaveSixLinesAtMost) {
    window->resize(1900, 1400);
    for (const auto& [category, text] : std::map<std::int16_t, gem::Control>{
             {gem::CSTVSV, txtVarDesc}, {gem::CSTEVT, txtEvtDesc}, {gem::CSTRPT, txtRptDesc}}) {
        clickCategory(category);
        settle();
        const QWidget& box = *form()[text].widget();
        const int line = box.fontMetrics().lineSpacing();
        EXPECT_GE(box.height(), 6 * line) << category;
        EXPECT_LE(box.height(), 7 * line) << category;
    }
}

}  // namespace
}  // namespace stelvan::test
