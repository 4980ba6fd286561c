// What the user does to a box or a button, and what it makes of it.
#include "form/inputs.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QMainWindow>
#include <QSignalSpy>
#include <QTest>

#include "form/field.h"

namespace stelvan::form {
namespace {

struct Shown {
    QMainWindow window;
    ComboBox* combo = new ComboBox(&window);

    void show(bool editable) {
        combo->setEditable(editable);
        window.setCentralWidget(combo);
        window.show();
        QApplication::setActiveWindow(&window);
        combo->setFocus();
    }
};

TEST(Choices, AValueThatIsNoEntryChoosesNoneHoweverItCameAbout) {
    Shown shown;
    shown.show(false);
    Field field(shown.combo);
    field.setEntries({"TRUE", "FALSE"});
    for (const char* stored : {"", "maybe", "", "TRUE", ""}) {
        field.setText(stored);
        const bool isEntry = QString(stored) == "TRUE";
        EXPECT_EQ(field.text(), isEntry ? "TRUE" : "") << stored;
        EXPECT_EQ(field.hint(), isEntry ? "" : stored) << stored;
        field.setEntries({"19200", "9600"});
        EXPECT_EQ(field.text(), "") << stored;
        field.setEntries({"TRUE", "FALSE"});
    }
}

TEST(Choices, WhatIsPastedIntoAFormatBoxIsOneLineOfPlainBlanks) {
    for (const QString& pasted : {QString("U4\n"), QString("U4\t"), QString("U4\u00a0")}) {
        Shown shown;
        shown.show(true);
        Field field(shown.combo);
        QApplication::clipboard()->setText(pasted);
        QTest::keyClick(shown.combo, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(field.text(), "U4 ");
    }
}

TEST(Commands, EveryPressOfAMnemonicIsAClick) {
    QMainWindow window;
    auto* next = new CommandButton("&Next", &window);
    window.setCentralWidget(next);
    window.show();
    QApplication::setActiveWindow(&window);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QSignalSpy clicks(next, &QPushButton::clicked);
    for (int i = 0; i < 5; ++i) QTest::keyClick(&window, Qt::Key_N, Qt::AltModifier);
    EXPECT_EQ(clicks.size(), 5);
    next->setEnabled(false);
    QTest::keyClick(&window, Qt::Key_N, Qt::AltModifier);
    EXPECT_EQ(clicks.size(), 5);
}

}  // namespace
}  // namespace stelvan::form
