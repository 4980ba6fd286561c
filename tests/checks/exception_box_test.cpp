#include "checks/exception_box.h"

#include "tests/support/check_bench.h"

namespace stelvan::checks {
namespace {

using ExceptionBoxTest = test::CheckBench;

TEST_F(ExceptionBoxTest, linesAreAppendedInOrderAndEndInCrLf) {
    box.lLogError("Alarm ID", "Must be numeric.");
    box.lLogError("Alarm Name", "Cannot be empty string.");
    EXPECT_EQ(box.text(),
              "[Alarm ID]: Must be numeric.\r\n[Alarm Name]: Cannot be empty string.\r\n");
    EXPECT_EQ(form.txtErrLog->toPlainText(),
              "[Alarm ID]: Must be numeric.\n[Alarm Name]: Cannot be empty string.\n");
}

TEST_F(ExceptionBoxTest, trailingBlanksOfMessagesAreKept) {
    box.logMarker("Variable Max", "11");
    EXPECT_EQ(box.text(), "[Variable Max]: Valid range for I1 is -32,767 to 32,767. \r\n");
}

TEST_F(ExceptionBoxTest, clearedBoxStartsAfresh) {
    box.lLogError("A", "b");
    box.clear();
    EXPECT_EQ(box.text(), "");
    EXPECT_EQ(form.txtErrLog->toPlainText(), "");
    box.lLogError("C", "d");
    EXPECT_EQ(box.text(), "[C]: d\r\n");
}

TEST_F(ExceptionBoxTest, immediateComplaintsAreABoxWithTheExclamationIcon) {
    box.lReportError("Invalid value. Must be an integer.");
    ASSERT_EQ(dialogs.messages.size(), 1u);
    EXPECT_EQ(dialogs.messages[0].text, "Invalid value. Must be an integer.");
    EXPECT_EQ(dialogs.messages[0].icon, form::Icon::Exclamation);
    EXPECT_EQ(dialogs.messages[0].title, "");  // the default one
    EXPECT_EQ(box.text(), "");
}

TEST_F(ExceptionBoxTest, theBoxCannotBeTypedInto) {
    EXPECT_TRUE(form.txtErrLog->isReadOnly());
}

}  // namespace
}  // namespace stelvan::checks
