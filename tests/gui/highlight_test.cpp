// The highlight of the tree always stands on the category that is shown.
#include <QLabel>
#include <QTabBar>
#include <QTableView>

#include "tests/support/window_bench.h"

namespace stelvan::app {
namespace {

class Highlight : public test::WindowBench {
protected:
    [[nodiscard]] QPoint at(std::int16_t category) const {
        QTreeWidget* const tree = form().tvwSECSItem;
        return tree->visualItemRect(tree->topLevelItem(category - 1)).center();
    }
    [[nodiscard]] std::int16_t highlighted() const {
        QTreeWidget* const tree = form().tvwSECSItem;
        const auto selected = tree->selectedItems();
        if (selected.size() != 1) return 0;
        return static_cast<std::int16_t>(tree->indexOfTopLevelItem(selected.first()) + 1);
    }
    [[nodiscard]] QWidget* nodes() const { return form().tvwSECSItem->viewport(); }
};

TEST_F(Highlight, StaysWhereOtherButtonsAndOtherPressesAreMeant) {
    open();
    clickCategory(gem::CSTALM);
    EXPECT_EQ(highlighted(), gem::CSTALM);
    QTest::mouseClick(nodes(), Qt::RightButton, {}, at(gem::CSTEVT));
    EXPECT_EQ(highlighted(), gem::CSTALM);
    QTest::mouseClick(nodes(), Qt::MiddleButton, {}, at(gem::CSTEVT));
    EXPECT_EQ(highlighted(), gem::CSTALM);
    QTest::mouseClick(nodes(), Qt::LeftButton, Qt::ControlModifier, at(gem::CSTALM));
    EXPECT_EQ(highlighted(), gem::CSTALM);
    QTest::mousePress(nodes(), Qt::LeftButton, {}, at(gem::CSTEVT));
    QTest::mouseRelease(nodes(), Qt::LeftButton, {}, at(gem::CSTRPT));
    EXPECT_EQ(highlighted(), gem::CSTALM);
    EXPECT_EQ(state().category, gem::CSTALM);
}

TEST_F(Highlight, IsOnNoneWhereALoadFailed) {
    open();
    clickCategory(gem::CSTALM);
    state().databasePath += ".gone";
    QTest::mouseClick(nodes(), Qt::LeftButton, {}, at(gem::CSTEVT));
    EXPECT_EQ(dialogs.messages.size(), 1U);
    EXPECT_EQ(highlighted(), 0);
}

TEST_F(Highlight, FollowsTheKeys) {
    open();
    clickCategory(gem::CSTALM);
    form().tvwSECSItem->setFocus();
    QTest::keyClick(form().tvwSECSItem, Qt::Key_Down);
    EXPECT_EQ(state().category, gem::CSTEVT);
    EXPECT_EQ(highlighted(), gem::CSTEVT);
}

TEST_F(Highlight, AClickOnTheChosenTabShowsWhatThereIsNow) {
    open();
    clickCategory(gem::CSTALM);
    QTabBar* const tabs = form().tspData;
    tabs->setCurrentIndex(1);
    const QAbstractItemModel* const before = form().DBGridGEM->model();
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center());
    EXPECT_NE(form().DBGridGEM->model(), nullptr);
    EXPECT_NE(form().DBGridGEM->model(), before);
}

TEST_F(Highlight, PressingNextFiveTimesQuicklyMovesFiveRecords) {
    open();
    clickCategory(gem::CSTALM);
    for (int i = 0; i < 5; ++i) QTest::keyClick(window.get(), Qt::Key_N, Qt::AltModifier);
    EXPECT_EQ(form().nav.lblRecNumber->text(), "6 of 90");
}

}  // namespace
}  // namespace stelvan::app
