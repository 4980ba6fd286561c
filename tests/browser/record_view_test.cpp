// The record on screen: moving, displaying, clearing.
#include "gem/kinds.h"
#include "tests/browser/browser_bench.h"

namespace stelvan::test {
namespace {

class RecordViewTest : public BrowserBench {
protected:
    void SetUp() override {
        BrowserBench::SetUp();
        useModel("gem.mdb");
    }
    [[nodiscard]] bool canMove() const {
        return form.nav.cmdPrevious->isEnabled() || form.nav.cmdNext->isEnabled();
    }
};

TEST_F(RecordViewTest, NoRecordSetGivesZeroOfZeroAndLeavesEditAndDelete) {
    form.nav.cmdUpdate->setEnabled(true);
    form.nav.cmdDelete->setEnabled(true);
    view.lUpdateNavigator();
    EXPECT_EQ(position(), "0 of 0");
    EXPECT_FALSE(canMove());
    EXPECT_TRUE(form.nav.cmdUpdate->isEnabled());
    EXPECT_TRUE(form.nav.cmdDelete->isEnabled());
}

TEST_F(RecordViewTest, EmptyRecordSetGivesZeroOfZeroFourClosedButtonsAndBlankFields) {
    click("CSTALM");
    useModel("gem_empty.mdb");
    form.nav.cmdUpdate->setEnabled(true);
    tree.lUpdatePropInfo(gem::CSTALM);
    EXPECT_EQ(position(), "0 of 0");
    EXPECT_FALSE(canMove());
    EXPECT_FALSE(form.nav.cmdDelete->isEnabled());
    EXPECT_FALSE(form.nav.cmdUpdate->isEnabled());
    EXPECT_EQ(form[txtAlmName].text(), "");
    EXPECT_FALSE(form[chkAlmEnable].checked());
}

TEST_F(RecordViewTest, OneRecordShowsOneOfOneWithBothMovesClosed) {
    useModel("gem_edges.mdb");
    click("CSTALM");
    EXPECT_EQ(position(), "1 of 1");
    EXPECT_FALSE(canMove());
    EXPECT_EQ(form[txtAlmID].text(), "2147483647");
}

TEST_F(RecordViewTest, NextOnTheLastAndPreviousOnTheFirstStay) {
    click("CSTRPT");
    const std::int32_t count = state.current.records->recordCount();
    const QString first = form[txtRptID].text();
    view.cmdPrevious_Click();
    EXPECT_EQ(state.current.position, 1);
    EXPECT_EQ(form[txtRptID].text(), first);
    EXPECT_FALSE(form.nav.cmdPrevious->isEnabled());
    moveTo(count);
    const QString last = form[txtRptID].text();
    view.cmdNext_Click();
    EXPECT_EQ(position(), QString("%1 of %1").arg(count));
    EXPECT_EQ(form[txtRptID].text(), last);
    EXPECT_FALSE(form.nav.cmdNext->isEnabled());
    EXPECT_TRUE(form.nav.cmdPrevious->isEnabled());
}

TEST_F(RecordViewTest, NextFromPastTheEndShowsTheFirstPreviousFromBeforeTheStartTheLast) {
    click("CSTRPT");
    const std::int32_t count = state.current.records->recordCount();
    const QString first = form[txtRptID].text();
    state.current.records->moveLast();
    state.current.records->moveNext();
    view.cmdNext_Click();
    EXPECT_EQ(position(), QString("1 of %1").arg(count));
    EXPECT_EQ(form[txtRptID].text(), first);
    state.current.records->moveFirst();
    state.current.records->movePrevious();
    view.cmdPrevious_Click();
    EXPECT_EQ(position(), QString("%1 of %1").arg(count));
    EXPECT_NE(form[txtRptID].text(), first);
}

TEST_F(RecordViewTest, GemListVariableClosesEditWhenReachedByMovingAnyOtherOpensIt) {
    for (const char* key : {"GEMVDV", "GEMSDV", "GEMVEC"}) {
        click(key);
        for (std::int32_t n = state.current.records->recordCount(); n > 1; --n) {
            view.cmdNext_Click();
            EXPECT_EQ(form.nav.cmdUpdate->isEnabled(), form[cmbVarFormat].text().toUpper() != "L")
                << form[txtVarID].text().toStdString();
        }
    }
    click("GEMSDV");
    ASSERT_TRUE(moveToText(form[cmbVarFormat], "L"));
}

TEST_F(RecordViewTest, DeleteStaysClosedForGemItemsAndSettings) {
    for (const char* key : {"GEMEVT", "GEMVDV", "GEMSDV", "GEMVEC", "GEMSTT"}) {
        click(key);
        EXPECT_FALSE(form.nav.cmdDelete->isEnabled()) << key;
    }
    for (const char* key : {"CSTALM", "CSTEVT", "CSTVDV", "CSTVSV", "CSTVEC", "CSTRPT"}) {
        click(key);
        EXPECT_TRUE(form.nav.cmdDelete->isEnabled()) << key;
    }
}

TEST_F(RecordViewTest, PlaceholdersOfLimitsAndUnitShowAsBlank) {
    struct Case {
        const char* minimum;
        const char* maximum;
        const char* shownMinimum;
        const char* shownMaximum;
    };
    const Case cases[] = {{"0", "100", "0", "100"}, {"0", "NULL", "", ""},
                          {" null ", "", "", ""},   {"NULL", "5", "NULL", "5"},
                          {"-5", "0", "-5", "0"},   {"0", "0", "", ""}};
    click("CSTVSV");
    const std::string id = form[txtVarID].text().toStdString();
    for (const Case& c : cases) {
        execute("UPDATE secs_cusvar SET var_min='" + std::string(c.minimum) + "', var_max='" +
                c.maximum +
                "', var_unit='null', var_val='0', var_defaultval=' Null ' WHERE var_id=" + id);
        click("CSTVSV");
        EXPECT_EQ(form[txtVarMin].text(), c.shownMinimum) << c.minimum << "/" << c.maximum;
        EXPECT_EQ(form[txtVarMax].text(), c.shownMaximum) << c.minimum << "/" << c.maximum;
        EXPECT_EQ(form[txtVarUnit].text(), "");
        EXPECT_EQ(form[txtVarValue].text(), "0");
        EXPECT_EQ(form[txtVarDefValue].text(), "");
    }
    EXPECT_TRUE(failures.isEmpty()) << failures.join("\n").toStdString();
}

TEST_F(RecordViewTest, AlarmWhoseSetEventIsZeroShowsItBlank) {
    click("CSTALM");
    ASSERT_TRUE(moveToText(form[txtAlmID], "1"));
    const db::Value stored = state.current.records->field("alm_set_ceid");
    EXPECT_EQ(db::toText(stored), "0");
    EXPECT_EQ(form[txtAlmSetCEID].text(), "");
}

TEST_F(RecordViewTest, ClearingInTheSettingsCategoryLeavesItsFields) {
    click("GEMSTT");
    const QString name = form[txtSttName].text();
    const QString value = form[txtSttValue].text();
    view.lClearField();
    EXPECT_FALSE(name.isEmpty());
    EXPECT_EQ(form[txtSttName].text(), name);
    EXPECT_EQ(form[txtSttValue].text(), value);
}

TEST_F(RecordViewTest, ClearingBlanksTheFieldsOfTheCategoryAndNothingWithoutARecordSet) {
    click("CSTVSV");
    form[txtVarLmtCEID].setText("7");
    form[txtAlmName].setText("other category");
    view.lClearField();
    for (const gem::FieldFacts& facts : gem::fieldsOf(gem::CSTVSV))
        EXPECT_EQ(form[facts.control].text(), "") << facts.column;
    EXPECT_EQ(form[txtVarLmtCEID].text(), "");
    EXPECT_EQ(form[txtAlmName].text(), "other category");
    state.category = gem::CSTALM;
    state.current.drop();
    view.lClearField();
    EXPECT_EQ(form[txtAlmName].text(), "other category");
}

TEST_F(RecordViewTest, NullInAShownColumnIsReportedAsNinetyFourAndMovingOnIsFree) {
    click("CSTVSV");
    ASSERT_TRUE(moveToText(form[txtVarID], "252"));
    ASSERT_TRUE(failures.isEmpty()) << failures.join("\n").toStdString();
    view.cmdNext_Click();
    ASSERT_EQ(failures.size(), 1);
    EXPECT_TRUE(failures.first().startsWith("ERROR(94) [frmMain.lDisplayField.0]:"));
    EXPECT_TRUE(view.incomplete());
    view.cmdNext_Click();
    EXPECT_EQ(failures.size(), 1);
    EXPECT_FALSE(view.incomplete());
    EXPECT_EQ(form[txtVarID].text(), "254");
}

TEST_F(RecordViewTest, RecordWithNullsCanBeShownWholeWithoutAReport) {
    click("CSTVSV");
    ASSERT_TRUE(moveToText(form[txtVarID], "252"));
    view.cmdNext_Click();
    view.displayNullsAsEmpty();
    EXPECT_EQ(failures.size(), 1);
    EXPECT_FALSE(view.incomplete());
    EXPECT_EQ(form[txtVarID].text(), "253");
    EXPECT_EQ(form[txtVarGroup].text(), "");
}

TEST_F(RecordViewTest, EveryCategoryPagesFromFirstToLastAndBack) {
    for (const char* model : {"gem.mdb", "gem_int_flags.mdb"}) {
        useModel(model);
        for (std::int16_t index = 1; index <= gem::kCategories; ++index) {
            failures.clear();
            tree.tvwSECSItem_NodeClick(form::toQt(gem::categoryAt(index).key));
            const std::int32_t count = state.current.records->recordCount();
            ASSERT_GT(count, 0) << model << index;
            for (std::int32_t n = 1; n <= count; ++n) {
                EXPECT_EQ(position(), QString("%1 of %2").arg(n).arg(count));
                view.cmdNext_Click();
            }
            for (std::int32_t n = count; n > 1; --n) view.cmdPrevious_Click();
            EXPECT_EQ(position(), QString("1 of %1").arg(count));
            for (const QString& failure : failures) {
                const bool knownNull =
                    index == gem::CSTVSV && failure.startsWith("ERROR(94) [frmMain.lDisplay");
                EXPECT_TRUE(knownNull || QLatin1String(model) == "gem_int_flags.mdb")
                    << model << index << failure.toStdString();
                EXPECT_TRUE(failure.startsWith("ERROR(94) [frmMain.lDisplayField.0]:"))
                    << failure.toStdString();
            }
        }
    }
}

TEST_F(RecordViewTest, AMoveButtonThatClosesHandsTheFocusToTheOther) {
    click("CSTRPT");
    moveTo(state.current.records->recordCount() - 1);
    form.nav.cmdNext->setFocus();
    view.cmdNext_Click();
    EXPECT_FALSE(form.nav.cmdNext->isEnabled());
    EXPECT_TRUE(form.nav.cmdPrevious->hasFocus());
}

TEST_F(RecordViewTest, ChildrenOfAnotherVariableNeverStayInSight) {
    click("CSTVSV");
    ASSERT_TRUE(moveToText(form[txtVarID], "227"));
    EXPECT_GT(form.children.selected->rowCount(), 0);
    view.cmdPrevious_Click();
    EXPECT_TRUE(form.children.selected->isHidden());
    click("GEMVEC");
    EXPECT_TRUE(form.children.selected->isHidden());
}

TEST_F(RecordViewTest, ListsAreEmptyWhereNoRecordIsShown) {
    click("CSTEVT");
    ASSERT_TRUE(moveToText(form[txtEvtID], "162"));
    click("CSTRPT");
    ASSERT_TRUE(moveToText(form[txtRptID], "126"));
    ASSERT_EQ(form.variables.selected->rowCount(), 14);
    useModel("gem_empty.mdb");
    click("CSTEVT");
    click("CSTRPT");
    EXPECT_EQ(form.reports.selected->rowCount(), 0);
    EXPECT_EQ(form.variables.selected->rowCount(), 0);
}

TEST_F(RecordViewTest, SettingsShowTheInputOfTheirKindAndNoOther) {
    click("GEMSTT");
    ASSERT_TRUE(moveToText(form[txtSttName], "BaudRate"));
    EXPECT_TRUE(form[cmbSttValue].isVisible());
    EXPECT_FALSE(form[txtSttValue].isVisible());
    ASSERT_TRUE(moveToText(form[txtSttName], "DeviceID"));
    EXPECT_FALSE(form[cmbSttValue].isVisible());
    EXPECT_TRUE(form[txtSttValue].isVisible());
    EXPECT_FALSE(form[txtSttValue].isOpen());
}

TEST_F(RecordViewTest, BindingNamesEachFieldsColumnAndRunsTheFormatChange) {
    int formatChanges = 0;
    view.cmbVarFormat_Change = [&formatChanges] { ++formatChanges; };
    for (const std::int16_t category : {gem::CSTALM, gem::CSTVSV, gem::LIMIT}) {
        state.category = category;
        view.lLinkDataField();
    }
    EXPECT_EQ(form[txtAlmClrCEID].widget()->property("DataField").toString(), "alm_clr_ceid");
    EXPECT_EQ(form[txtVarMin].widget()->property("DataField").toString(), "var_min");
    EXPECT_EQ(form[txtLmtUBound].widget()->property("DataField").toString(), "upperdb");
    EXPECT_EQ(formatChanges, 1);
}

}  // namespace
}  // namespace stelvan::test
