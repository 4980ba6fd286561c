// The find box above the tree.
#include "tests/gui/aids_bench.h"

namespace stelvan::app {
namespace {

class Find : public test::AidsBench {
protected:
    void SetUp() override { open(); }
};

TEST_F(Find, ListsWhatMatchesWhileOneTypesTheBestFirst) {
    // An identifier, then names that begin with the text, then names that hold it, then the rest.
    ASSERT_TRUE(test::elsewhere(state().databasePath,
                                "INSERT INTO secs_cusvar (var_id, var_name, var_type, var_group, "
                                "var_desc) VALUES (77001, 'x_zebrafish', 'SV', 'g', 'd')"));
    ASSERT_TRUE(test::elsewhere(state().databasePath,
                                "INSERT INTO secs_alarm (alm_id, alm_name, alm_group, alm_text) "
                                "VALUES (77002, 'Zebra_stripes', 'g', 'd')"));
    ASSERT_TRUE(test::elsewhere(state().databasePath,
                                "INSERT INTO secs_cusevent (evt_id, evt_name, evt_group, evt_text) "
                                "VALUES (77003, 'y', 'ZEBRA', 'd')"));
    ASSERT_TRUE(test::elsewhere(state().databasePath,
                                "INSERT INTO secs_report (rpt_id, rpt_name, rpt_desc) "
                                "VALUES (77004, 'z', 'about a zebra')"));
    find("zebr");
    ASSERT_EQ(aids().lvwFound->rowCount(), 4);
    EXPECT_EQ(found(0), "Custom Alarms|77002|Zebra_stripes");
    EXPECT_EQ(found(1), "Custom Status Variables|77001|x_zebrafish");
    EXPECT_EQ(found(2), "Custom Collection Events|77003|y");
    EXPECT_EQ(found(3), "Custom Reports|77004|z");
    find("77003");
    EXPECT_EQ(found(0), "Custom Collection Events|77003|y");
    EXPECT_EQ(aids().lvwFound->rowCount(), 1);
    find("Baud");
    EXPECT_EQ(found(0), "Protocol Settings||BaudRate");
}

TEST_F(Find, EnterShowsTheRecordInItsCategoryAndEscapeGivesTheTreeBack) {
    clickCategory(gem::CSTALM);
    viewAll();
    const QString id = query("SELECT evt_id FROM secs_cusevent")[40];
    find(id);
    EXPECT_TRUE(aids().lvwFound->isVisible() && !form().tvwSECSItem->isVisible());
    QTest::keyClick(aids().txtFind, Qt::Key_Return);
    EXPECT_EQ(state().category, gem::CSTEVT);
    EXPECT_EQ(form().tspData->currentIndex(), 0);
    EXPECT_EQ(shown("txtEvtID"), id);
    EXPECT_EQ(place(), "41 of 70");
    QTest::keyClick(aids().txtFind, Qt::Key_Escape);
    EXPECT_TRUE(!aids().lvwFound->isVisible() && form().tvwSECSItem->isVisible());
    EXPECT_EQ(aids().txtFind->text(), "");
    EXPECT_TRUE(form().tvwSECSItem->hasFocus());
    EXPECT_EQ(dialogs.texts(), QStringList());
}

TEST_F(Find, ADoubleClickShowsTheRecordAndTheKeysChooseAnotherRow) {
    find("e");
    ASSERT_GT(aids().lvwFound->rowCount(), 2);
    const QStringList third = found(2).split('|');
    form::ListView& list = *aids().lvwFound;
    const QPoint at = list.visualRect(list.model()->index(2, 2)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, at);
    EXPECT_EQ(form().lblPropertyType->text(), third[0]);
    aids().txtFind->setFocus();
    QTest::keyClick(aids().txtFind, Qt::Key_Up);
    EXPECT_EQ(list.selectedRow(), 1);
    QTest::keyClick(aids().txtFind, Qt::Key_Return);
    EXPECT_EQ(form().lblPropertyType->text(), found(1).split('|')[0]);
}

TEST_F(Find, IsForBrowsingOnly) {
    clickCategory(gem::CSTALM);
    edit();
    EXPECT_FALSE(aids().txtFind->isEnabled());
    EXPECT_FALSE(aids().lvwFound->isEnabled());
    key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_FALSE(aids().txtFind->hasFocus());
    cancel();
    key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(aids().txtFind->hasFocus());
}

TEST_F(Find, FindsWhatWasSavedAMomentAgoAndNoMoreWhatWasDeleted) {
    const QString name = "FreshlySaved";
    find(name);
    EXPECT_EQ(aids().lvwFound->rowCount(), 0);
    QTest::keyClick(aids().txtFind, Qt::Key_Escape);
    add(gem::CSTEVT);
    typeAndLeave("txtEvtName", name);
    typeAndLeave("txtEvtGroup", "g");
    typeAndLeave("txtEvtDesc", "d");
    save();
    expectStored();
    find(name);
    ASSERT_EQ(aids().lvwFound->rowCount(), 1);
    ASSERT_TRUE(test::elsewhere(state().databasePath,
                                "DELETE FROM secs_cusevent WHERE evt_name = 'FreshlySaved'"));
    QTest::keyClick(aids().txtFind, Qt::Key_Return);  // listed, but there no longer
    EXPECT_NE(shown("txtEvtName"), "");
    find(name);
    EXPECT_EQ(aids().lvwFound->rowCount(), 0);
}

TEST_F(Find, SaysItWithoutABoxWhereTheFileCannotBeRead) {
    state().databasePath += ".gone";
    find("e");
    EXPECT_EQ(dialogs.texts(), QStringList());
    EXPECT_EQ(aids().lvwFound->rowCount(), 0);
    EXPECT_TRUE(form().statusPanel->text().contains("gone"));
}

}  // namespace
}  // namespace stelvan::app
