// One input: text, marker, locks, limits, and what counts as the user's change.
#include "form/field.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

#include "form/inputs.h"

namespace stelvan::form {
namespace {

struct Line {
    LineBox box;
    Field* field = new Field(&box);
};

struct Text {
    TextBox box{3};
    Field* field = new Field(&box);
};

struct Combo {
    explicit Combo(bool editable) {
        box.setEditable(editable);
        field = new Field(&box);
        field->setEntries({"A", "BL", "U4"});
    }
    ComboBox box;
    Field* field;
};

TEST(Field, TextsSetByTheProgramEmitNothing) {
    Line line;
    Text text;
    Combo combo(true);
    QCheckBox box;
    Field check(&box);
    for (Field* field : {line.field, text.field, combo.field, &check}) {
        QSignalSpy changed(field, &Field::changed);
        QSignalSpy chosen(field, &Field::chosen);
        field->setText("1");
        field->setText("");
        EXPECT_TRUE(changed.isEmpty());
        EXPECT_TRUE(chosen.isEmpty());
    }
}

TEST(Field, TypingIsTheUsersChange) {
    Line line;
    QSignalSpy changed(line.field, &Field::changed);
    QTest::keyClicks(&line.box, "ab");
    EXPECT_EQ(changed.size(), 2);
    EXPECT_EQ(line.field->text(), "ab");
}

TEST(Field, CheckingIsTheUsersChange) {
    QCheckBox box;
    Field check(&box);
    QSignalSpy changed(&check, &Field::changed);
    QTest::keyClick(&box, Qt::Key_Space);
    EXPECT_EQ(changed.size(), 1);
    EXPECT_EQ(check.text(), "1");
}

TEST(Field, MarkerStartsAsValidAndIsTheTagOfTheControl) {
    Line line;
    EXPECT_EQ(line.field->marker(), "0");
    EXPECT_FALSE(line.field->hasException());
    line.field->setMarker("36");
    EXPECT_TRUE(line.field->hasException());
    EXPECT_EQ(line.box.property("Tag").toString(), "36");
}

TEST(Field, LockedTextCannotBeTypedIntoButSelectedAndCopied) {
    Line line;
    Text text;
    for (Field* field : {line.field, text.field}) {
        field->setText("kept");
        field->setLocked(true);
        QTest::keyClicks(field->widget(), "x");
        EXPECT_EQ(field->text(), "kept");
        EXPECT_TRUE(field->isEnabled());
        EXPECT_FALSE(field->isOpen());
        EXPECT_NE(field->widget()->focusPolicy(), Qt::NoFocus);
    }
    EXPECT_TRUE(text.box.textInteractionFlags().testFlag(Qt::TextSelectableByKeyboard));
}

TEST(Field, LockedComboBoxIsChangedByNoKeyAndOffersNoList) {
    Combo combo(true);
    combo.field->setText("BL");
    combo.field->setLocked(true);
    combo.box.show();
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_F4, Qt::Key_A, Qt::Key_PageDown})
        QTest::keyClick(&combo.box, key);
    combo.box.showPopup();
    EXPECT_EQ(combo.field->text(), "BL");
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST(Field, WheelOverAClosedComboBoxChangesNothing) {
    Combo combo(false);
    combo.field->setText("BL");
    combo.box.show();
    combo.box.setFocus();
    QWheelEvent wheel(QPointF(5, 5), QPointF(5, 5), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&combo.box, &wheel);
    EXPECT_EQ(combo.field->text(), "BL");
}

TEST(Field, EditableComboBoxShowsATextThatItsListLacks) {
    Combo combo(true);
    combo.field->setEntries({});
    combo.field->setText("l");
    EXPECT_EQ(combo.field->text(), "l");
    combo.field->setEntries({"A", "L"});
    EXPECT_EQ(combo.field->text(), "l");
}

TEST(Field, ChoiceOnlyComboBoxShowsAForeignTextAsAHint) {
    Combo combo(false);
    combo.field->setText("115200");
    EXPECT_EQ(combo.field->text(), "");
    EXPECT_EQ(combo.field->hint(), "115200");
    combo.field->setText("U4");
    EXPECT_EQ(combo.field->text(), "U4");
    EXPECT_EQ(combo.field->hint(), "");
}

TEST(Field, TypingIntoAComboBoxKeepsItsLetterCaseAndIsChosenOnLeaving) {
    Combo combo(true);
    combo.field->setText("");
    QSignalSpy changed(combo.field, &Field::changed);
    QSignalSpy chosen(combo.field, &Field::chosen);
    QTest::keyClicks(combo.box.lineEdit(), "u4");
    EXPECT_EQ(combo.field->text(), "u4");
    EXPECT_EQ(changed.size(), 2);
    EXPECT_TRUE(chosen.isEmpty());
    combo.field->leave();
    EXPECT_EQ(chosen.size(), 1);
    combo.field->leave();
    EXPECT_EQ(chosen.size(), 1);
}

TEST(Field, LongerStoredTextIsShownWholeAndTypingIntoItIsRefused) {
    Line line;
    Text text;
    for (Field* field : {line.field, text.field}) {
        field->setMaxLength(5);
        field->setText("longer than five");
        EXPECT_EQ(field->text(), "longer than five");
        QTest::keyClicks(field->widget(), "x");
        EXPECT_EQ(field->text(), "longer than five");
        field->setText("1234");
        QTest::keyClick(field->widget(), Qt::Key_End);
        QTest::keyClicks(field->widget(), "56");
        EXPECT_EQ(field->text(), "12345");
    }
}

TEST(Field, ShortenedTextCannotGrowBeyondTheLimitAgain) {
    Line line;
    line.field->setMaxLength(3);
    line.field->setText("12345");
    QTest::keyClick(&line.box, Qt::Key_End);
    QTest::keyClick(&line.box, Qt::Key_Backspace);
    QTest::keyClick(&line.box, Qt::Key_Backspace);
    QTest::keyClicks(&line.box, "9");
    EXPECT_EQ(line.field->text(), "123");
}

TEST(Field, PastedTextIsCutAtTheLimit) {
    Text text;
    text.field->setMaxLength(6);
    text.field->setText("ab");
    text.box.moveCursor(QTextCursor::End);
    text.box.insertPlainText("cdefghij");
    EXPECT_EQ(text.field->text(), "abcdef");
}

TEST(Field, LinesTakeTabsLineBreaksAndNoBreakSpacesAsBlanks) {
    Line line;
    line.box.insert(QString("a\tb\r\nc") + QChar(0xA0) + "d\ne");
    EXPECT_EQ(line.field->text(), "a b c d e");
}

TEST(Field, LineKeepsBreaksThatTheFileHoldsWhileOtherPartsAreTyped) {
    Line line;
    line.field->setText("one\r\ntwo");
    QTest::keyClick(&line.box, Qt::Key_End);
    QTest::keyClicks(&line.box, "!");
    EXPECT_EQ(line.field->text(), "one\r\ntwo!");
}

TEST(Field, UnchangedMultiLineTextComesBackByteForByte) {
    Text text;
    const QString stored = QString("one\r\ntwo\nthree\rfour") + QChar(0xA0) + "x\ty";
    text.field->setText(stored);
    EXPECT_EQ(text.field->text(), stored);
}

TEST(Field, BreaksTypedAreCarriageReturnAndLineFeedAndOthersStayAsStored) {
    Text text;
    text.field->setText("one\ntwo\r\nthree");
    text.box.moveCursor(QTextCursor::End);
    QTest::keyClick(&text.box, Qt::Key_Return, Qt::ControlModifier);
    QTest::keyClicks(&text.box, "four");
    EXPECT_EQ(text.field->text(), "one\ntwo\r\nthree\r\nfour");
}

TEST(Field, ColoursFollowThePalette) {
    const QPalette before = QApplication::palette();
    Line line;
    line.field->setColour(Colour::ToolTipBackground);
    EXPECT_EQ(line.box.palette().color(QPalette::Base), before.color(QPalette::ToolTipBase));
    QPalette dark(QColor(0x30, 0x30, 0x30));
    dark.setColor(QPalette::ToolTipBase, QColor(0x40, 0x40, 0x20));
    dark.setColor(QPalette::ToolTipText, QColor(0xff, 0xff, 0xf0));
    QApplication::setPalette(dark);
    QApplication::processEvents();
    EXPECT_EQ(line.box.palette().color(QPalette::Base), QColor(0x40, 0x40, 0x20));
    EXPECT_EQ(line.box.palette().color(QPalette::Text), QColor(0xff, 0xff, 0xf0));
    line.field->setColour(Colour::WindowBackground);
    EXPECT_EQ(line.box.palette().color(QPalette::Base), dark.color(QPalette::Base));
    QApplication::setPalette(before);
}

TEST(Field, AListIsOfferedByF4AndAltDownAndTheButtonWhileTheFieldIsOpen) {
    Line line;
    line.field->offerChoice("Choose");
    QSignalSpy wanted(line.field, &Field::choiceWanted);
    auto* const button = line.box.findChild<QAction*>("choice");
    QTest::keyClick(&line.box, Qt::Key_F4);
    QTest::keyClick(&line.box, Qt::Key_Down, Qt::AltModifier);
    QTest::keyClick(&line.box, Qt::Key_Down);
    button->trigger();
    EXPECT_EQ(wanted.size(), 3);
    line.field->setLocked(true);
    EXPECT_FALSE(button->isVisible());
    QTest::keyClick(&line.box, Qt::Key_F4);
    EXPECT_EQ(wanted.size(), 3);
}

}  // namespace
}  // namespace stelvan::form
