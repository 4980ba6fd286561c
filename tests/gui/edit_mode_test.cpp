// Into an edit and out of it again: what opens, what Cancel brings back, where the focus goes.
#include <QAction>
#include <QLabel>

#include "tests/gui/edit_bench.h"

namespace stelvan::app {
namespace {

class EditMode : public test::EditBench {};

TEST_F(EditMode, CancelOfTheFifthRecordShowsTheFifthWithItsStoredValues) {
    open();
    clickCategory(gem::CSTALM);
    goToNumber(5);
    const QString name = form()[txtAlmName].text();
    const QString text = form()[txtAlmText].text();
    edit();
    type(form()[txtAlmName], "Other");
    type(form()[txtAlmText], "Other");
    cancel();
    EXPECT_EQ(place(), "5 of 90");
    EXPECT_EQ(form()[txtAlmName].text(), name);
    EXPECT_EQ(form()[txtAlmText].text(), text);
    expectStored();
}

TEST_F(EditMode, CancelOfAnAdditionReturnsToTheRecordBefore) {
    open();
    clickCategory(gem::CSTRPT);
    goToNumber(7);
    const QString name = form()[txtRptName].text();
    press(nav().cmdNew);
    EXPECT_EQ(place(), "61 of 61");
    EXPECT_EQ(form()[txtRptName].text(), "");
    EXPECT_EQ(form().variables.selected->rowCount(), 0);
    cancel();
    EXPECT_EQ(place(), "7 of 60");
    EXPECT_EQ(form()[txtRptName].text(), name);
    EXPECT_EQ(test::exportTable(file(), "secs_report").size(), 60U);
}

TEST_F(EditMode, CancelOfAnAdditionToAnEmptyCategoryShowsNothing) {
    open("gem_empty.mdb");
    for (const std::int16_t category :
         {gem::CSTALM, gem::CSTEVT, gem::CSTVDV, gem::CSTVSV, gem::CSTVEC, gem::CSTRPT}) {
        add(category);
        EXPECT_EQ(place(), "1 of 1") << category;
        for (form::Field* f : form().fields())
            if (f->widget()->isVisible() && f->isOpen() && f->kind() == form::Field::Kind::Line)
                type(*f, "5");
        cancel();
        EXPECT_EQ(place(), "0 of 0") << category;
        for (const form::Field* f : form().fields())
            if (f->widget()->isVisible() && f->kind() != form::Field::Kind::Check) {
                EXPECT_EQ(f->text(), "") << f->widget()->objectName().toStdString();
            }
        expectStored();
    }
}

TEST_F(EditMode, TheFirstIdentifierIsOneHundredAndOne) {
    open("gem_empty.mdb");
    add(gem::CSTALM);
    EXPECT_EQ(form()[txtAlmID].text(), "101");
    cancel();
    add(gem::CSTVSV);
    EXPECT_EQ(form()[txtVarID].text(), "101");
}

TEST_F(EditMode, WithoutANextIdentifierAddingGoesOnWithAnEmptyOne) {
    open("gem_edges.mdb");
    add(gem::CSTALM);
    EXPECT_EQ(form()[txtAlmID].text(), "");
    EXPECT_TRUE(form()[txtAlmName].widget()->hasFocus());
}

TEST_F(EditMode, AnAlarmsIdentifierOpensOnlyWhileAdding) {
    open();
    add(gem::CSTALM);
    EXPECT_TRUE(form()[txtAlmID].isOpen());
    EXPECT_EQ(form()[txtAlmID].colour(), form::Colour::ToolTipBackground);
    cancel();
    edit();
    EXPECT_FALSE(form()[txtAlmID].isOpen());
    EXPECT_EQ(form()[txtAlmID].colour(), form::Colour::WindowBackground);
}

TEST_F(EditMode, AGemVariableOpensItsTwoValuesOnly) {
    open();
    for (const std::int16_t category : {gem::GEMVDV, gem::GEMSDV, gem::GEMVEC}) {
        clickCategory(category);
        while (!nav().cmdUpdate->isEnabled()) press(nav().cmdNext);
        edit();
        for (const form::Field* f : form().fields()) {
            if (!f->widget()->isVisible()) continue;
            const QString name = f->widget()->objectName();
            const bool opens = name == "txtVarDefValue" || name == "txtVarValue";
            EXPECT_EQ(f->colour() == form::Colour::ToolTipBackground, opens) << name.toStdString();
            EXPECT_EQ(f->isOpen(), opens) << name.toStdString();
        }
        EXPECT_TRUE(form()[txtVarDefValue].widget()->hasFocus());
        cancel();
    }
}

TEST_F(EditMode, AListShownBeforeDoesNotKeepTheValuesOfAGemVariableDisabled) {
    open();
    clickCategory(gem::CSTVSV);
    goTo("txtVarID", "227");
    edit();
    EXPECT_FALSE(form()[txtVarDefValue].isEnabled());
    cancel();
    clickCategory(gem::GEMSDV);
    while (!nav().cmdUpdate->isEnabled()) press(nav().cmdNext);
    edit();
    EXPECT_TRUE(form()[txtVarDefValue].isOpen() && form()[txtVarValue].isOpen());
}

TEST_F(EditMode, TheFocusGoesWhereTheWorkBegins) {
    open();
    const std::pair<std::int16_t, const char*> starts[] = {
        {gem::GEMEVT, "chkEvtEnable"}, {gem::GEMVEC, "txtVarDefValue"}, {gem::CSTALM, "txtAlmName"},
        {gem::CSTEVT, "txtEvtName"},   {gem::CSTVDV, "txtVarName"},     {gem::CSTVSV, "txtVarName"},
        {gem::CSTVEC, "txtVarName"}};
    for (const auto& [category, name] : starts) {
        clickCategory(category);
        edit();
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        EXPECT_EQ(QApplication::focusWidget()->objectName(), name) << category;
        cancel();
        EXPECT_EQ(QApplication::focusWidget(), nav().cmdUpdate) << category;
    }
    clickCategory(gem::CSTRPT);
    goTo("txtRptID", "101");
    edit();
    EXPECT_TRUE(form()[txtRptName].widget()->hasFocus());
}

TEST_F(EditMode, WhileEditingTheRecordCannotBeLeft) {
    open();
    clickCategory(gem::CSTALM);
    goToNumber(2);
    edit();
    EXPECT_FALSE(form().tvwSECSItem->isEnabled());
    EXPECT_FALSE(form().mnuFileDB->isEnabled());
    EXPECT_FALSE(nav().cmdPrevious->isEnabled() || nav().cmdNext->isEnabled());
    cancel();
    EXPECT_TRUE(nav().cmdPrevious->isEnabled() && nav().cmdNext->isEnabled());
    EXPECT_TRUE(form().mnuFileDB->isEnabled());
}

TEST_F(EditMode, WithoutAnyRecordEditAndDeleteDoNothingAndAskNothing) {
    open("gem_empty.mdb");
    clickCategory(gem::CSTRPT);
    EXPECT_TRUE(nav().cmdUpdate->isEnabled() && nav().cmdDelete->isEnabled());
    press(nav().cmdUpdate);
    press(nav().cmdDelete);
    EXPECT_TRUE(dialogs.questions.empty());
    expectStored();
}

TEST_F(EditMode, CancelThrowsAwayListsAndTheExceptionBox) {
    open();
    clickCategory(gem::CSTEVT);
    goTo("txtEvtID", "162");
    const QStringList before = columnOf(form().reports.selected, 1);
    edit();
    EXPECT_TRUE(form().reports.pool->isVisible());
    EXPECT_EQ(form().reports.pool->rowCount(), 60);
    press(form().reports.deselect);
    typeAndLeave("txtEvtGroup", "");
    EXPECT_NE(exceptions(), "");
    cancel();
    EXPECT_EQ(columnOf(form().reports.selected, 1), before);
    EXPECT_TRUE(form().reports.pool->isHidden());
    expectStored();
}

TEST_F(EditMode, CancelOfAListVariableBringsItsStoredChildrenBack) {
    open();
    clickCategory(gem::CSTVSV);
    goTo("txtVarID", "227");
    const QStringList before = columnOf(form().children.selected, 2);
    ASSERT_EQ(before.size(), 5);
    edit();
    EXPECT_TRUE(form().children.pool->isVisible());
    press(form().children.deselect);
    cancel();
    EXPECT_EQ(columnOf(form().children.selected, 2), before);
    EXPECT_TRUE(form().children.selected->isVisible());
    EXPECT_TRUE(form().children.pool->isHidden());
    expectStored();
}

TEST_F(EditMode, AReportIsEditedInTheOrderOfItsNumbersAndBrowsedInTheOrderOfTheirTexts) {
    open();
    clickCategory(gem::CSTRPT);
    goTo("txtRptID", "126");
    const QStringList browsed = columnOf(form().variables.selected, 4);
    EXPECT_LT(browsed.indexOf("10"), browsed.indexOf("2"));
    edit();
    EXPECT_EQ(columnOf(form().variables.selected, 4).indexOf("10"), 9);
    cancel();
    EXPECT_EQ(columnOf(form().variables.selected, 4), browsed);
}

TEST_F(EditMode, ReservedReportsCannotBeEditedOrDeleted) {
    open();
    clickCategory(gem::CSTRPT);
    goTo("txtRptID", "100");
    EXPECT_FALSE(nav().cmdUpdate->isEnabled() || nav().cmdDelete->isEnabled());
    goTo("txtRptID", "101");
    EXPECT_TRUE(nav().cmdUpdate->isEnabled() && nav().cmdDelete->isEnabled());
}

TEST_F(EditMode, ARecordThatWasShownOnlyInPartIsShownWholeBeforeItIsEdited) {
    open();
    clickCategory(gem::CSTVSV);
    while (form()[txtVarID].text() != "253" && state().current.position < 190) {
        press(nav().cmdNext);
        if (!dialogs.messages.empty()) break;
    }
    ASSERT_EQ(dialogs.messages.size(), 1U) << "Nulls cannot be shown";
    dialogs.messages.clear();
    edit();
    EXPECT_EQ(form()[txtVarID].text(), "253");
    EXPECT_EQ(dialogs.texts(), QStringList());
}

}  // namespace
}  // namespace stelvan::app
