// What a click on a category does.
#include <QGroupBox>

#include "tests/browser/browser_bench.h"

namespace stelvan::test {
namespace {

class CategoryTreeTest : public BrowserBench {
protected:
    void SetUp() override {
        BrowserBench::SetUp();
        useModel("gem.mdb");
    }
    [[nodiscard]] QTreeWidgetItem* node(int index) const {
        return form.tvwSECSItem->topLevelItem(index - 1);
    }
    void clickNode(int index) {
        QTest::mouseClick(form.tvwSECSItem->viewport(), Qt::LeftButton, {},
                          form.tvwSECSItem->visualItemRect(node(index)).center());
    }
};

TEST_F(CategoryTreeTest, TreeHoldsElevenNodesWithPicturesAndNoChildren) {
    ASSERT_EQ(form.tvwSECSItem->topLevelItemCount(), 11);
    EXPECT_EQ(node(1)->text(0), "GEM Collection Events");
    EXPECT_EQ(node(11)->text(0), "Custom Reports");
    for (int i = 1; i <= 11; ++i) {
        EXPECT_EQ(node(i)->childCount(), 0);
        const QIcon icon = node(i)->icon(0);
        EXPECT_NE(icon.pixmap(16, QIcon::Normal).toImage(),
                  icon.pixmap(16, QIcon::Selected).toImage());
    }
    tree.buildNodes();
    EXPECT_EQ(form.tvwSECSItem->topLevelItemCount(), 11);
    EXPECT_EQ(loads, 0);
}

TEST_F(CategoryTreeTest, ClickingGemStatusVariablesRunsItsQueryAndShowsTheCaptionedVariableFrame) {
    clickNode(3);
    EXPECT_EQ(state.current.adoGEM.recordSource, "select * from secs_gemvar where var_type = 'SV'");
    EXPECT_EQ(form.frontFrame(), 1);
    EXPECT_EQ(form.Frame[1]->title(), "GEM Status Variables");
    EXPECT_EQ(form.lblPropertyType->text(), "GEM Status Variables");
    EXPECT_EQ(form.statusPanel->text(), "GEM Status Variables");
    EXPECT_EQ(state.category, gem::GEMSDV);
    EXPECT_EQ(state.current.position, 1);
    EXPECT_FALSE(form[txtVarName].text().isEmpty());
    EXPECT_EQ(upward, (QStringList{"lSetEditMode 3 0", "lSetCtrlAccess 3 1"}));
    EXPECT_TRUE(failures.isEmpty()) << failures.join("\n").toStdString();
}

TEST_F(CategoryTreeTest, ClickingProtocolSettingsShowsFrameFive) {
    clickNode(10);
    EXPECT_EQ(form.frontFrame(), 5);
    EXPECT_FALSE(form[txtSttName].text().isEmpty());
}

TEST_F(CategoryTreeTest, ClickingCustomReportsShowsFrameSixWithTheColumnsOfItsVariables) {
    clickNode(11);
    EXPECT_EQ(form.frontFrame(), 6);
    EXPECT_EQ(form.variables.selected->headers(),
              (QStringList{"Name", "ID", "Type", "Gem", "Order"}));
}

TEST_F(CategoryTreeTest, ClickingEventsGivesTheReportListItsTwoColumnsAndRows) {
    for (const int index : {1, 6}) {
        clickNode(index);
        EXPECT_EQ(form.frontFrame(), 3);
        EXPECT_EQ(form.reports.selected->headers(), (QStringList{"Name", "ID"}));
    }
    click("CSTEVT");
    ASSERT_TRUE(moveToText(form[txtEvtID], "162"));
    EXPECT_EQ(form.reports.selected->rowCount(), 12);
}

TEST_F(CategoryTreeTest, EmptyCategoryShowsItsFrameWithTheNavigatorAtZero) {
    useModel("gem_empty.mdb");
    for (std::int16_t index = 1; index <= gem::kCategories; ++index) {
        clickNode(index);
        EXPECT_EQ(form.frontFrame(), static_cast<int>(gem::categoryAt(index).kind));
        EXPECT_EQ(position(), "0 of 0");
        EXPECT_FALSE(form.nav.cmdNext->isEnabled());
        EXPECT_FALSE(form.nav.cmdPrevious->isEnabled());
    }
    EXPECT_TRUE(failures.isEmpty()) << failures.join("\n").toStdString();
}

TEST_F(CategoryTreeTest, FormatInLowerCaseCountsAsAList) {
    click("CSTVSV");
    ASSERT_TRUE(moveToText(form[txtVarID], "244"));
    EXPECT_EQ(form[cmbVarFormat].text(), "l");
    EXPECT_FALSE(form.children.selected->isHidden());
    view.cmdNext_Click();
    EXPECT_TRUE(form.children.selected->isHidden());
}

TEST_F(CategoryTreeTest, LimitFrameIsNeverBroughtToTheFront) {
    for (int index = 1; index <= 11; ++index) {
        clickNode(index);
        EXPECT_NE(form.frontFrame(), 4);
    }
}

TEST_F(CategoryTreeTest, ClickOnTheSameNodeLoadsAgain) {
    clickNode(5);
    view.cmdNext_Click();
    EXPECT_EQ(state.current.position, 2);
    clickNode(5);
    EXPECT_EQ(loads, 2);
    EXPECT_EQ(state.current.position, 1);
}

TEST_F(CategoryTreeTest, KeysThatSelectAnotherNodeLoadItOnce) {
    clickNode(1);
    form.tvwSECSItem->setFocus();
    QTest::keyClick(form.tvwSECSItem, Qt::Key_Down);
    EXPECT_EQ(loads, 2);
    EXPECT_EQ(state.category, gem::GEMVDV);
    QTest::keyClick(form.tvwSECSItem, Qt::Key_End);
    EXPECT_EQ(state.category, gem::CSTRPT);
    QTest::keyClick(form.tvwSECSItem, Qt::Key_End);
    EXPECT_EQ(loads, 3);
}

TEST_F(CategoryTreeTest, FocusOnTheTreeOrRebuildingItLoadsNothing) {
    form.nav.cmdNew->setEnabled(true);
    form.tvwSECSItem->setFocus();
    form.tspData->setFocus();
    form.tvwSECSItem->setFocus();
    tree.buildNodes();
    EXPECT_EQ(loads, 0);
}

TEST_F(CategoryTreeTest, DraggingOverNodesSelectsNoneWithoutALoad) {
    clickNode(1);
    QWidget* port = form.tvwSECSItem->viewport();
    QTest::mousePress(port, Qt::LeftButton, {}, form.tvwSECSItem->visualItemRect(node(1)).center());
    QMouseEvent move(QEvent::MouseMove, form.tvwSECSItem->visualItemRect(node(4)).center(),
                     port->mapToGlobal(form.tvwSECSItem->visualItemRect(node(4)).center()),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(port, &move);
    EXPECT_EQ(form.tvwSECSItem->currentItem(), node(1));
    QTest::mouseRelease(port, Qt::LeftButton, {},
                        form.tvwSECSItem->visualItemRect(node(4)).center());
    EXPECT_EQ(form.tvwSECSItem->currentItem(), node(1));
}

TEST_F(CategoryTreeTest, UnknownKeyOnlyAppliesBrowseMode) {
    click("gemsdv");
    EXPECT_EQ(loads, 0);
    EXPECT_EQ(state.category, gem::NO_CATEGORY);
    EXPECT_EQ(upward, (QStringList{"lSetEditMode 0 0", "lSetCtrlAccess 0 1"}));
}

TEST_F(CategoryTreeTest, IndexOutsideTheTableIsReportedAsABoundsFailure) {
    errors.handle("tvwSECSItem_NodeClick", [&] { tree.lUpdatePropInfo(12); });
    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(failures.first().startsWith("ERROR(9) [frmMain.lUpdatePropInfo.0]:"));
}

TEST_F(CategoryTreeTest, FailedLoadIsReportedOnceAndLeavesNothingOfAnyRecord) {
    clickNode(5);
    const std::string good = state.databasePath;
    state.databasePath = (scratch.path() / "missing" / "gem.mdb").string();
    form.tspData->setCurrentIndex(1);
    clickNode(7);
    ASSERT_EQ(failures.size(), 1) << failures.join("\n").toStdString();
    EXPECT_TRUE(failures.first().contains("[frmMain.lLoadData.0]:"));
    EXPECT_EQ(state.category, gem::NO_CATEGORY);
    EXPECT_EQ(state.current.records, nullptr);
    EXPECT_EQ(position(), "0 of 0");
    EXPECT_EQ(form.frontFrame(), 0);
    EXPECT_EQ(form.statusPanel->text(), "");
    EXPECT_EQ(form[txtAlmName].text(), "");
    EXPECT_EQ(form.tspData->currentIndex(), 0);
    for (const QPushButton* button : {form.nav.cmdNew, form.nav.cmdUpdate, form.nav.cmdDelete,
                                      form.nav.cmdPrevious, form.nav.cmdNext})
        EXPECT_FALSE(button->isEnabled());
    state.databasePath = good;
    clickNode(7);
    EXPECT_EQ(failures.size(), 1);
    EXPECT_EQ(state.category, gem::CSTVDV);
}

TEST_F(CategoryTreeTest, FormatListIsLoadedForCustomVariables) {
    click("CSTVSV");
    EXPECT_EQ(form[cmbVarFormat].entries().size(), 15);
    click("CSTVEC");
    EXPECT_EQ(form[cmbVarFormat].entries().size(), 14);
    EXPECT_FALSE(form[cmbVarFormat].entries().contains("L"));
}

}  // namespace
}  // namespace stelvan::test
