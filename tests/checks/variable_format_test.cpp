#include "checks/variable_format.h"

#include <QComboBox>

#include "tests/support/check_bench.h"

namespace stelvan::checks {
namespace {

using form::EditMode;

class VariableFormatTest : public test::CheckBench {
protected:
    const QStringList kAll = {"",   "A",  "B", "BL", "F4", "F8", "I1", "I2",
                              "I4", "I8", "L", "U1", "U2", "U4", "U8"};
    std::vector<bool> childEditor;

    void SetUp() override {
        CheckBench::SetUp();
        format.showChildEditor = [this](bool show) { childEditor.push_back(show); };
    }

    /// Which of Max, Min, Unit, DefValue, Value are open.
    QString openFields() const {
        QString open;
        for (const char* name :
             {"txtVarMax", "txtVarMin", "txtVarUnit", "txtVarDefValue", "txtVarValue"}) {
            const form::Field& f = field(name);
            open += f.isOpen() ? '1' : '0';
            EXPECT_EQ(f.colour(), f.isOpen() ? form::Colour::ToolTipBackground
                                             : form::Colour::WindowBackground);
        }
        return open;
    }
    static constexpr gem::Control kDependents[] = {txtVarMax, txtVarMin, txtVarUnit, txtVarDefValue,
                                                   txtVarValue};
    QString texts() const {
        QStringList all;
        for (const gem::Control f : kDependents) all << form[f].text();
        return all.join('|');
    }
    void fillAll() {
        int n = 1;
        for (const gem::Control f : kDependents) form[f].setText(QString::number(n++));
    }
};

TEST_F(VariableFormatTest, listIsFilledForTheCategory) {
    for (std::int16_t kind = 0; kind <= 12; ++kind) {
        form[cmbVarFormat].setEntries({"old"});
        form[cmbVarFormat].setText("U4");
        format.lLoadVarFormat(kind);
        QStringList expected;
        if (kind == 7 || kind == 8) expected = kAll;
        if (kind == 9) {
            expected = kAll;
            expected.removeAll("L");
        }
        EXPECT_EQ(form[cmbVarFormat].entries(), expected) << kind;
        EXPECT_EQ(form[cmbVarFormat].text(), "U4") << kind;
    }
}

TEST_F(VariableFormatTest, aFormatIsKnownLetterCaseApart) {
    format.lLoadVarFormat(gem::CSTVEC);
    for (const char* known : {"A", "u4", "Bl", "f8", ""})
        EXPECT_TRUE(format.lCheckFormat(known)) << known;
    for (const char* unknown : {"L", "X", "U16", " U4"})
        EXPECT_FALSE(format.lCheckFormat(unknown)) << unknown;
    format.lLoadVarFormat(gem::GEMVEC);
    EXPECT_FALSE(format.lCheckFormat("A"));
    EXPECT_FALSE(format.lCheckFormat(""));
}

TEST_F(VariableFormatTest, theChosenFormatIsMarkedAndListed) {
    begin(gem::CSTVDV, EditMode::Adding);
    const auto marked = [&](const QString& text) {
        form[cmbVarFormat].setText(text);
        format.lVarCheckFormat();
        return form[cmbVarFormat].marker();
    };
    EXPECT_EQ(marked("U4"), "0");
    EXPECT_EQ(box.text(), "");
    EXPECT_EQ(marked("u4"), "0");
    EXPECT_EQ(marked(""), "1");
    EXPECT_EQ(box.text(), line("Variable Format", "Cannot be empty string."));
    EXPECT_EQ(marked("X"), "37");
    EXPECT_EQ(box.text(), line("Variable Format", "Invalid variable format. "));
    form[cmbVarFormat].setEntries({"A"});
    EXPECT_EQ(marked(""), "1");  // empty and not even offered
}

TEST_F(VariableFormatTest, nothingIsCheckedWhileBrowsing) {
    begin(gem::CSTVDV, EditMode::Browsing);
    form[cmbVarFormat].setText("X");
    format.lVarCheckFormat();
    EXPECT_EQ(form[cmbVarFormat].marker(), "0");
    form[txtVarMin].setText("5");
    form[cmbVarFormat].setText("L");
    format.lVarSetFormatRight();
    EXPECT_EQ(form[txtVarMin].text(), "5");
    EXPECT_TRUE(childEditor.empty());
}

TEST_F(VariableFormatTest, aClosedFormatBoxIsValid) {
    begin(gem::GEMVDV, EditMode::Editing);
    form[cmbVarFormat].setText("U4");
    form[cmbVarFormat].setEnabled(false);
    format.lVarCheckFormat();
    EXPECT_EQ(form[cmbVarFormat].marker(), "0");
}

TEST_F(VariableFormatTest, everyFormatOpensItsFields) {
    struct Row {
        const char* code;
        const char* open;   // Max, Min, Unit, DefValue, Value
        const char* texts;  // what is left of 1|2|3|4|5
        bool children;
    };
    const Row rows[] = {
        {"L", "00000", "||||", true},        {"l", "00000", "||||", true},
        {"A", "00011", "|||4|5", false},     {"BL", "00011", "|||4|5", false},
        {"B", "11011", "1|2||4|5", false},   {"F4", "11111", "1|2|3|4|5", false},
        {"F8", "11111", "1|2|3|4|5", false}, {"I1", "11111", "1|2|3|4|5", false},
        {"I2", "11111", "1|2|3|4|5", false}, {"I4", "11111", "1|2|3|4|5", false},
        {"I8", "11111", "1|2|3|4|5", false}, {"U1", "11111", "1|2|3|4|5", false},
        {"U2", "11111", "1|2|3|4|5", false}, {"U4", "11111", "1|2|3|4|5", false},
        {"U8", "11111", "1|2|3|4|5", false}, {"u8", "11111", "1|2|3|4|5", false},
        {"", "00000", "1|2|3|4|5", false},   {"X", "00000", "1|2|3|4|5", false},
    };
    for (const Row& row : rows) {
        begin(gem::CSTVSV, EditMode::Editing);
        fillAll();
        childEditor.clear();
        form[cmbVarFormat].setText(row.code);
        format.lVarSetFormatRight();
        EXPECT_EQ(openFields(), row.open) << row.code;
        EXPECT_EQ(texts(), row.texts) << row.code;
        EXPECT_EQ(childEditor, std::vector<bool>{row.children}) << row.code;
    }
}

TEST_F(VariableFormatTest, anEquipmentConstantIsNoList) {
    begin(gem::CSTVEC, EditMode::Adding);
    fillAll();
    chooseFormat("L");
    EXPECT_EQ(openFields(), "00000");
    EXPECT_EQ(texts(), "1|2|3|4|5");
    EXPECT_EQ(childEditor, std::vector<bool>{false});
    EXPECT_EQ(form[cmbVarFormat].marker(), "37");
}

TEST_F(VariableFormatTest, aFieldThatAFormatClosesHasNoFault) {
    begin(gem::CSTVDV, EditMode::Editing);
    for (const gem::Control f : kDependents) form[f].setMarker("7");
    form[cmbVarFormat].setText("A");
    format.lVarSetFormatRight();
    EXPECT_EQ(form[txtVarMax].marker(), "0");
    EXPECT_EQ(form[txtVarMin].marker(), "0");
    EXPECT_EQ(form[txtVarUnit].marker(), "0");
}

TEST_F(VariableFormatTest, textsEmptiedByAFormatComeBackWithALaterOne) {
    begin(gem::CSTVDV, EditMode::Editing);
    form[cmbVarFormat].setText("U4");
    format.lVarSetFormatRight();
    fillAll();
    chooseFormat("L");
    EXPECT_EQ(texts(), "||||");
    chooseFormat("B");
    EXPECT_EQ(texts(), "1|2||4|5");
    chooseFormat("I4");
    EXPECT_EQ(texts(), "1|2|3|4|5");
}

TEST_F(VariableFormatTest, aTextTypedMeanwhileIsNotOverwritten) {
    begin(gem::CSTVDV, EditMode::Editing);
    form[cmbVarFormat].setText("U4");
    format.lVarSetFormatRight();
    form[txtVarValue].setText("5");
    chooseFormat("L");
    chooseFormat("U1");
    form[txtVarValue].setText("9");
    chooseFormat("U2");
    EXPECT_EQ(form[txtVarValue].text(), "9");
}

TEST_F(VariableFormatTest, textsEmptiedInAFormerEditStayAway) {
    begin(gem::CSTVDV, EditMode::Editing);
    form[txtVarMin].setText("5");
    chooseFormat("L");
    form[cmbVarFormat].setText("");
    checks.beginEdit();
    chooseFormat("U4");
    EXPECT_EQ(form[txtVarMin].text(), "");
}

TEST_F(VariableFormatTest, oneChoiceActsOnce) {
    begin(gem::CSTVDV, EditMode::Adding);
    auto* const combo = qobject_cast<QComboBox*>(form[cmbVarFormat].widget());
    combo->setFocus();
    QTest::keyClick(combo, Qt::Key_Down);
    EXPECT_EQ(form[cmbVarFormat].text(), "A");
    EXPECT_EQ(childEditor.size(), 1u);
    emit form[cmbVarFormat].chosen();
    EXPECT_EQ(childEditor.size(), 1u);
}

TEST_F(VariableFormatTest, oldFaultsDoNotSurviveAChangeOfFormat) {
    begin(gem::CSTVDV, EditMode::Adding);
    chooseFormat("U1");
    typeAndLeave(form[txtVarValue], "300");
    EXPECT_EQ(form[txtVarValue].marker(), "7");
    EXPECT_EQ(box.text(), line("Variable Value", "Valid range for U1 is 0 to 255. "));
    chooseFormat("A");
    EXPECT_EQ(form[txtVarValue].marker(), "0");
    EXPECT_EQ(box.text(), "");
    chooseFormat("I1");
    EXPECT_EQ(form[txtVarValue].marker(), "10");
    EXPECT_EQ(box.text(), line("Variable Value", "Valid range for I1 is -128 to 127. "));
    chooseFormat("U8");
    EXPECT_EQ(form[txtVarValue].marker(), "0");
    EXPECT_EQ(box.text(), "");
}

TEST_F(VariableFormatTest, anUnknownFormatLeavesOnlyItsOwnFault) {
    begin(gem::CSTVDV, EditMode::Adding);
    chooseFormat("U1");
    typeAndLeave(form[txtVarValue], "300");
    chooseFormat("X9");
    EXPECT_EQ(box.text(), line("Variable Format", "Invalid variable format. "));
    chooseFormat("");
    EXPECT_EQ(box.text(), line("Variable Format", "Cannot be empty string."));
}

TEST_F(VariableFormatTest, aTypedFormatTakesTheListsSpellingWhenLeft) {
    begin(gem::CSTVDV, EditMode::Adding);
    typeAndLeave(form[cmbVarFormat], "u4");
    EXPECT_EQ(form[cmbVarFormat].text(), "U4");
    EXPECT_EQ(form[cmbVarFormat].marker(), "0");
}

TEST_F(VariableFormatTest, aStoredSpellingThatNobodyTouchedStays) {
    useDatabase("gem.mdb");
    database.lLoadData("select * from secs_cusvar where var_id = 244");
    ASSERT_EQ(failures, QStringList());
    begin(gem::CSTVSV, EditMode::Editing);
    form[cmbVarFormat].setText("l");
    checks.beginEdit();
    leave(form[cmbVarFormat]);
    EXPECT_EQ(form[cmbVarFormat].text(), "l");
}

TEST_F(VariableFormatTest, aChildOfAListIsNoListItself) {
    useDatabase("gem.mdb");
    database.lLoadData("select * from secs_cusvar where var_id = 239");
    ASSERT_EQ(failures, QStringList());
    begin(gem::CSTVSV, EditMode::Editing);
    chooseFormat("L");
    EXPECT_EQ(form[cmbVarFormat].marker(), "37");
    chooseFormat("A");
    EXPECT_EQ(form[cmbVarFormat].marker(), "0");
}

TEST_F(VariableFormatTest, verifyingAValueMarksItsField) {
    begin(gem::CSTVDV, EditMode::Adding);
    form::Field& value = form[txtVarValue];
    const auto marked = [&](const char* code, const QString& text) {
        value.setText(text);
        const bool valid = format.lVarVerifyValue(txtVarValue, code);
        EXPECT_EQ(valid, value.marker() == "0");
        return value.marker();
    };
    EXPECT_EQ(marked("U1", "255"), "0");
    EXPECT_EQ(marked("U1", "256"), "7");
    EXPECT_EQ(marked("U1", "-1"), "7");
    EXPECT_EQ(marked("U1", "1.5"), "4");
    EXPECT_EQ(marked("U1", "1 5"), "2");
    EXPECT_EQ(marked("U1", "abc"), "3");
    EXPECT_EQ(marked("I2", "-32768"), "0");
    EXPECT_EQ(marked("I2", "32768"), "11");
    EXPECT_EQ(marked("BL", "true"), "0");
    EXPECT_EQ(marked("BL", "yes"), "15");
    EXPECT_EQ(marked("BL", "False"), "0");
    EXPECT_EQ(marked("B", "256"), "16");
    EXPECT_EQ(marked("B", "255"), "0");
    EXPECT_EQ(marked("F4", "3.402e38"), "13");
    EXPECT_EQ(marked("F4", "1.5"), "0");
    EXPECT_EQ(marked("F8", "1.75e308"), "14");
    EXPECT_EQ(marked("A", "any text"), "0");
}

TEST_F(VariableFormatTest, withoutACheckTheResultReflectsTheOldMarker) {
    begin(gem::CSTVDV, EditMode::Adding);
    form::Field& value = form[txtVarValue];
    value.setText("anything");
    for (const char* code : {"L", "I8", "U8", "", "u1"}) {
        value.setMarker("7");
        EXPECT_FALSE(format.lVarVerifyValue(txtVarValue, code)) << code;
        EXPECT_EQ(value.marker(), "7") << code;
        value.setMarker("0");
        EXPECT_TRUE(format.lVarVerifyValue(txtVarValue, code)) << code;
    }
}

TEST_F(VariableFormatTest, blanksAloneLeaveTheMarker) {
    begin(gem::CSTVDV, EditMode::Adding);
    form[txtVarValue].setText("   ");
    form[txtVarValue].setMarker("7");
    EXPECT_FALSE(format.lVarVerifyValue(txtVarValue, "U1"));
    EXPECT_EQ(form[txtVarValue].marker(), "7");
}

TEST_F(VariableFormatTest, anOverflowIsReportedAndLeavesTheMarker) {
    begin(gem::CSTVDV, EditMode::Adding);
    for (const auto& [code, text] : {std::pair{"U4", "2147483648"},
                                     {"I4", "-2147483649"},
                                     {"F4", "3.5e38"},
                                     {"F8", "2e308"},
                                     {"U1", "99999999999"}}) {
        form[txtVarValue].setText(text);
        failures.clear();
        errors.handle("txtVarValue_LostFocus",
                      [&] { (void)format.lVarVerifyValue(txtVarValue, code); });
        EXPECT_EQ(form[txtVarValue].marker(), "0") << code;
        EXPECT_EQ(failures, QStringList("ERROR(6) [frmMain.lVarVerifyValue.0]: Overflow")) << code;
    }
}

}  // namespace
}  // namespace stelvan::checks
