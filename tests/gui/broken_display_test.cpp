// Records whose display breaks off at a Null: the buttons follow the record, and nothing that was
// typed stays behind the break.
#include <QLabel>

#include "tests/support/window_bench.h"

namespace stelvan::app {
namespace {

class BrokenDisplay : public test::WindowBench {
protected:
    void elsewhere(const std::string& sql) {
        db::Connection connection;
        connection.setConnectionText(window->window().operations.connectionText());
        connection.open();
        connection.execute(sql);
    }
};

TEST_F(BrokenDisplay, AGemListStaysClosedWhereItsFormatWasNotReached) {
    open();
    elsewhere("UPDATE secs_gemvar SET var_group = Null WHERE var_format = 'L'");
    int lists = 0;
    for (const std::int16_t category : {gem::GEMVDV, gem::GEMSDV, gem::GEMVEC}) {
        clickCategory(category);
        for (int left = state().current.count(); left > 0; --left) {
            const auto format = state().current.records->field("var_format");
            const bool isList = db::toTextOrEmpty(format) == "L";
            EXPECT_EQ(form().nav.cmdUpdate->isEnabled(), !isList)
                << form().nav.lblRecNumber->text().toStdString();
            lists += isList ? 1 : 0;
            if (left > 1) press(form().nav.cmdNext);
        }
    }
    EXPECT_GT(lists, 0);
    EXPECT_EQ(dialogs.messages.size(), static_cast<std::size_t>(lists));
}

TEST_F(BrokenDisplay, WhatWasTypedBehindTheBreakGoesWithTheCancel) {
    open();
    elsewhere("UPDATE secs_alarm SET alm_group = Null WHERE alm_id = 102");
    clickCategory(gem::CSTALM);
    goTo("txtAlmID", "102");
    ASSERT_EQ(dialogs.messages.size(), 1U);
    edit();
    type(form()[txtAlmText], "typed and given up");
    press(form().nav.cmdCancel);
    EXPECT_EQ(form()[txtAlmName].text(),
              query("SELECT alm_name FROM secs_alarm WHERE alm_id = 102").value(0));
    EXPECT_EQ(form()[txtAlmText].text(), "");
}

TEST_F(BrokenDisplay, WhatHasNoColumnIsBlankAlsoWhereTheDisplayBreaks) {
    open();
    clickCategory(gem::CSTVSV);
    edit();
    type(form()[txtVarLmtCEName], "nowhere");
    elsewhere("UPDATE secs_cusvar SET var_group = Null WHERE var_id = " +
              form()[txtVarID].text().toStdString());
    press(form().nav.cmdCancel);
    EXPECT_EQ(form()[txtVarLmtCEName].text(), "");
}

TEST_F(BrokenDisplay, AColumnThatIsMissingIsNamed) {
    open();
    clickCategory(gem::CSTALM);
    try {
        (void)state().current.records->field("alm_missing");
        ADD_FAILURE();
    } catch (const base::RunTimeError& failure) {
        EXPECT_EQ(failure.number(), 3265);
        EXPECT_NE(std::string(failure.what()).find("alm_missing"), std::string::npos);
    }
}

}  // namespace
}  // namespace stelvan::app
