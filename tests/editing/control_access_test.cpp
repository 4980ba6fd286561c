// Every input of every category while browsing, editing and adding, cell by cell; and the buttons.
#include "editing/control_access.h"

#include <QAction>
#include <QPushButton>
#include <QTreeWidget>
#include <set>

#include "tests/support/check_bench.h"

namespace stelvan::editing {
namespace {

using form::Colour;
using form::EditMode;

// How an input stands: o open, c closed, w closed with whatever colour it had, d closed and
// disabled, x and _ a check box that can and cannot be changed.
struct Fact {
    const char* field;
    char browsing;
    char editing;
    char adding;
};

struct Facts {
    std::vector<std::int16_t> categories;
    std::vector<Fact> fields;
    const char* list;
    char listStands[4];  // the same three columns: o open, c closed
};

const std::vector<Facts>& facts() {
    static const std::vector<Facts> all = {
        {{1},
         {{"txtEvtName", 'c', 'c', 'c'},
          {"txtEvtID", 'c', 'c', 'c'},
          {"txtEvtGroup", 'c', 'c', 'c'},
          {"txtEvtDesc", 'c', 'c', 'c'},
          {"chkEvtEnable", '_', 'x', 'x'}},
         "lvwRptList",
         "ccc"},
        {{2, 3, 4},
         {{"txtVarName", 'c', 'c', 'c'},
          {"txtVarID", 'c', 'c', 'c'},
          {"txtVarGroup", 'c', 'c', 'c'},
          {"txtVarDesc", 'c', 'c', 'c'},
          {"cmbVarFormat", 'd', 'd', 'd'},
          {"txtVarMin", 'c', 'c', 'c'},
          {"txtVarMax", 'c', 'c', 'c'},
          {"txtVarUnit", 'c', 'c', 'c'},
          {"txtVarDefValue", 'c', 'o', 'o'},
          {"txtVarValue", 'c', 'o', 'o'},
          {"txtVarLmtCEID", 'c', 'c', 'c'},
          {"txtVarLmtCEName", 'c', 'c', 'c'}},
         "lvwChildItems",
         "ccc"},
        {{5},
         {{"txtAlmName", 'c', 'o', 'o'},
          {"txtAlmID", 'c', 'c', 'o'},
          {"txtAlmGroup", 'c', 'o', 'o'},
          {"txtAlmText", 'c', 'o', 'o'},
          {"chkAlmEnable", '_', 'x', 'x'},
          {"txtAlmSetCEID", 'c', 'o', 'o'},
          {"txtAlmSetCEName", 'c', 'o', 'o'},
          {"txtAlmClrCEID", 'c', 'o', 'o'},
          {"txtAlmClrCEName", 'c', 'o', 'o'}},
         nullptr,
         ""},
        {{6},
         {{"txtEvtName", 'c', 'o', 'o'},
          {"txtEvtID", 'c', 'c', 'o'},
          {"txtEvtGroup", 'c', 'o', 'o'},
          {"txtEvtDesc", 'c', 'o', 'o'},
          {"chkEvtEnable", '_', 'x', 'x'}},
         "lvwRptList",
         "coo"},
        {{7, 8, 9},
         {{"txtVarName", 'c', 'o', 'o'},
          {"txtVarID", 'c', 'c', 'o'},
          {"txtVarGroup", 'c', 'o', 'o'},
          {"txtVarDesc", 'c', 'o', 'o'},
          {"cmbVarFormat", 'd', 'o', 'o'},
          {"txtVarMin", 'c', 'o', 'o'},
          {"txtVarMax", 'c', 'o', 'o'},
          {"txtVarUnit", 'c', 'o', 'o'},
          {"txtVarDefValue", 'c', 'o', 'o'},
          {"txtVarValue", 'c', 'o', 'o'},
          {"txtVarLmtCEID", 'c', 'o', 'o'},
          {"txtVarLmtCEName", 'c', 'o', 'o'}},
         "lvwChildItems",
         "coo"},
        {{10},
         {{"txtSttName", 'w', 'w', 'w'},
          {"txtSttValue", 'c', 'o', 'o'},
          {"txtSttDefValue", 'c', 'o', 'o'}},
         nullptr,
         ""},
        {{11},
         {{"txtRptName", 'c', 'o', 'o'},
          {"txtRptID", 'c', 'c', 'o'},
          {"txtRptDesc", 'c', 'o', 'o'},
          {"chkRptDefault", '_', 'x', 'x'}},
         "lvwVarList",
         "coo"},
        {{12},
         {{"txtLmtID", 'c', 'o', 'o'},
          {"txtLmtVarID", 'c', 'o', 'o'},
          {"txtLmtUBound", 'c', 'o', 'o'},
          {"txtLmtLBound", 'c', 'o', 'o'},
          {"txtLmtTransType", 'c', 'o', 'o'}},
         nullptr,
         ""},
    };
    return all;
}

class Access : public test::CheckBench {
protected:
    ControlAccess access{main};

    form::ListView& listCalled(const char* name) {
        return *window.findChild<form::ListView*>(name);
    }

    /// Brings every input into the state opposite to what is expected, so that each cell has to be
    /// set.
    void upset(bool open) {
        for (form::Field* f : form.fields()) {
            f->setEnabled(open);
            f->setLocked(!open);
            f->setColour(open ? Colour::ToolTipBackground : Colour::WindowBackground);
        }
        for (form::ListView* list : window.findChildren<form::ListView*>()) {
            list->setOpen(open);
            list->setColour(open ? Colour::ToolTipBackground : Colour::WindowBackground);
        }
    }

    void expectStands(const char* name, char how, Colour before) {
        const form::Field& f = field(name);
        switch (how) {
            case 'o':
                EXPECT_TRUE(f.isOpen()) << name;
                EXPECT_EQ(f.colour(), Colour::ToolTipBackground) << name;
                break;
            case 'c':
                EXPECT_TRUE(f.isEnabled() && f.isLocked()) << name;
                EXPECT_EQ(f.colour(), Colour::WindowBackground) << name;
                break;
            case 'w':
                EXPECT_TRUE(f.isEnabled() && f.isLocked()) << name;
                EXPECT_EQ(f.colour(), before) << name;
                break;
            case 'd':
                EXPECT_TRUE(!f.isEnabled() && f.isLocked()) << name;
                EXPECT_EQ(f.colour(), Colour::WindowBackground) << name;
                break;
            case 'x':
                EXPECT_TRUE(f.isEnabled()) << name;
                EXPECT_EQ(f.colour(), Colour::ToolTipBackground) << name;
                break;
            default:
                EXPECT_FALSE(f.isEnabled()) << name;
                EXPECT_EQ(f.colour(), Colour::ButtonFace) << name;
                break;
        }
    }

    void expectAll(const Facts& expected, std::int16_t category, int column) {
        constexpr EditMode kModes[] = {EditMode::Browsing, EditMode::Editing, EditMode::Adding};
        const bool locked = column == 0;
        for (const bool wereOpen : {true, false}) {
            upset(wereOpen);
            const Colour before = wereOpen ? Colour::ToolTipBackground : Colour::WindowBackground;
            state.editMode = kModes[column];
            access.lSetCtrlAccess(category, locked);
            std::set<QString> named;
            for (const Fact& fact : expected.fields) {
                expectStands(fact.field,
                             column == 0   ? fact.browsing
                             : column == 1 ? fact.editing
                                           : fact.adding,
                             before);
                named.insert(fact.field);
            }
            for (const form::Field* f : form.fields())
                if (!named.contains(f->widget()->objectName())) {
                    EXPECT_EQ(f->isEnabled(), wereOpen) << f->widget()->objectName().toStdString();
                    EXPECT_EQ(f->colour(), before) << f->widget()->objectName().toStdString();
                }
            for (const char* list : {"lvwRptList", "lvwVarList", "lvwChildItems"}) {
                const bool concerned =
                    expected.list != nullptr && std::string(list) == expected.list;
                const bool open = concerned ? expected.listStands[column] == 'o' : wereOpen;
                EXPECT_EQ(listCalled(list).isOpen(), open) << list;
                EXPECT_EQ(listCalled(list).colour(),
                          open ? Colour::ToolTipBackground : Colour::WindowBackground)
                    << list;
            }
        }
    }
};

TEST_F(Access, EveryInputOfEveryCategoryStandsAsItShould) {
    for (const Facts& expected : facts())
        for (const std::int16_t category : expected.categories)
            for (const int column : {0, 1, 2}) {
                SCOPED_TRACE("category " + std::to_string(category) + ", column " +
                             std::to_string(column));
                expectAll(expected, category, column);
            }
    EXPECT_TRUE(failures.isEmpty());
}

TEST_F(Access, NoCategoryConcernsNoInput) {
    expectAll({{0}, {}, nullptr, ""}, gem::NO_CATEGORY, 0);
}

TEST_F(Access, ClosedInputsShowTheirTextAndCannotBeTypedInto) {
    form.showFrame(2);
    access.lSetCtrlAccess(gem::CSTALM, true);
    form[txtAlmName].setText("Door");
    form[txtAlmName].setFocus();
    QTest::keyClicks(form[txtAlmName].widget(), "xyz");
    EXPECT_EQ(form[txtAlmName].text(), "Door");
    access.lSetCtrlAccess(gem::CSTALM, false);
    QTest::keyClicks(form[txtAlmName].widget(), "xyz");
    EXPECT_NE(form[txtAlmName].text(), "Door");
}

TEST_F(Access, AClosedListCannotBeChanged) {
    form.showFrame(1);
    form.children.showSelected(true);
    form.children.selected->setHeaders({"Duplicate", "Name", "ID"});
    form.children.selected->setRows({{{"", "A", "1"}, false}, {{"", "B", "2"}, false}});
    access.lSetCtrlAccess(gem::CSTVSV, true);
    QTest::keyClick(form.children.selected, Qt::Key_Space);
    QTest::keyClick(form.children.selected, Qt::Key_Down);
    EXPECT_FALSE(form.children.selected->isChecked(0));
    EXPECT_EQ(form.children.selected->selectedRow(), 0);
}

struct MarkFacts {
    std::vector<std::int16_t> categories;
    QStringList names;
};

TEST_F(Access, AnEditBeginsWithTheseMarkersAtZeroAndNoOthers) {
    const MarkFacts all[] = {
        {{2, 3, 4, 7, 8, 9},
         {"txtVarName", "txtVarID", "txtVarGroup", "txtVarDesc", "txtVarDefValue", "txtVarValue",
          "txtVarMax", "txtVarMin", "txtVarUnit", "cmbVarFormat", "txtVarLmtCEID",
          "txtVarLmtCEName"}},
        {{5},
         {"txtAlmName", "txtAlmID", "txtAlmGroup", "txtAlmText", "txtAlmSetCEID", "txtAlmClrCEID",
          "txtAlmSetCEName", "txtAlmClrCEName"}},
        {{6}, {"txtEvtName", "txtEvtID", "txtEvtGroup", "txtEvtDesc"}},
        {{10}, {"txtSttValue", "txtSttDefValue"}},
        {{11}, {"txtRptName", "txtRptID", "txtRptDesc"}},
        {{0, 1, 12}, {}},
    };
    for (const MarkFacts& expected : all)
        for (const std::int16_t category : expected.categories) {
            for (form::Field* f : form.fields()) f->setMarker("37");
            state.category = category;
            access.lInitCtrlForEdit();
            for (const form::Field* f : form.fields()) {
                const QString name = f->widget()->objectName();
                EXPECT_EQ(f->marker(), expected.names.contains(name) ? "0" : "37")
                    << category << " " << name.toStdString();
            }
        }
}

TEST_F(Access, GivingUpAnAdditionBlanksTheseInputsAndNoOthers) {
    const MarkFacts all[] = {
        {{5},
         {"txtAlmName", "txtAlmID", "txtAlmGroup", "txtAlmText", "chkAlmEnable", "txtAlmSetCEID",
          "txtAlmSetCEName", "txtAlmClrCEID", "txtAlmClrCEName"}},
        {{6}, {"txtEvtName", "txtEvtID", "txtEvtGroup", "txtEvtDesc", "chkEvtEnable"}},
        {{7, 8, 9},
         {"txtVarName", "txtVarID", "txtVarGroup", "txtVarDesc", "cmbVarFormat", "txtVarMin",
          "txtVarMax", "txtVarUnit", "txtVarDefValue", "txtVarValue", "txtVarLmtCEID",
          "txtVarLmtCEName"}},
        {{11}, {"txtRptID", "txtRptName", "txtRptDesc", "chkRptDefault"}},
        {{12}, {"txtLmtID", "txtLmtVarID", "txtLmtUBound", "txtLmtLBound", "txtLmtTransType"}},
        {{0, 1, 2, 3, 4, 10}, {}},
    };
    for (const MarkFacts& expected : all)
        for (const std::int16_t category : expected.categories) {
            for (form::Field* f : form.fields()) f->setText("1");
            access.lClearInput(category);
            for (const form::Field* f : form.fields()) {
                const QString name = f->widget()->objectName();
                const QString blank = f->kind() == form::Field::Kind::Check ? "0" : "";
                const QString kept =
                    f->kind() == form::Field::Kind::Combo && f->text().isEmpty() ? "" : "1";
                EXPECT_EQ(f->text(), expected.names.contains(name) ? blank : kept)
                    << category << " " << name.toStdString();
            }
        }
}

constexpr std::int16_t kGem[] = {1, 2, 3, 4, 10};
constexpr std::int16_t kGemVariables[] = {2, 3, 4};
constexpr std::int16_t kCustom[] = {5, 6, 7, 8, 9};
constexpr std::int16_t kOthers[] = {0, 12, 13};

class Buttons : public Access {
protected:
    struct Stand {
        bool inEdit, add, edit, remove;
        bool operator==(const Stand&) const = default;
    };
    Stand stand() const {
        return {!form.nav.cmdSave->isHidden() && !form.nav.cmdCancel->isHidden(),
                form.nav.cmdNew->isEnabled(), form.nav.cmdUpdate->isEnabled(),
                form.nav.cmdDelete->isEnabled()};
    }
    /// Everything the other way round first.
    Stand after(std::int16_t category, bool editing) {
        form.nav.cmdSave->setVisible(!editing);
        form.nav.cmdCancel->setVisible(!editing);
        for (QPushButton* b : {form.nav.cmdNew, form.nav.cmdUpdate, form.nav.cmdDelete})
            b->setEnabled(!b->isEnabled());
        access.lSetEditMode(category, editing);
        return stand();
    }
    void hold(const char* model, const char* sql) {
        useDatabase(model);
        db::Connection connection;
        connection.setConnectionText(database.connectionText());
        connection.open();
        state.current.records = std::make_shared<db::Recordset>();
        state.current.records->open(sql, connection);
    }
};

TEST_F(Buttons, WhileEditingOnlySaveAndCancelCanBeUsed) {
    for (std::int16_t category = 1; category <= 11; ++category)
        EXPECT_EQ(after(category, true), (Stand{true, false, false, false})) << category;
    for (const std::int16_t category : kOthers)
        EXPECT_EQ(after(category, true), (Stand{false, false, false, false})) << category;
    EXPECT_FALSE(form.mnuFileDB->isEnabled());
    EXPECT_FALSE(form.tvwSECSItem->isEnabled());
    EXPECT_FALSE(form.nav.cmdPrevious->isEnabled());
    EXPECT_FALSE(form.nav.cmdNext->isEnabled());
}

TEST_F(Buttons, BrowsingOpensMenuAndTreeAndLeavesTheMoveButtonsAlone) {
    form.nav.cmdNext->setEnabled(false);
    after(gem::CSTALM, true);
    after(gem::CSTALM, false);
    EXPECT_TRUE(form.mnuFileDB->isEnabled());
    EXPECT_TRUE(form.tvwSECSItem->isEnabled());
    EXPECT_FALSE(form.nav.cmdNext->isEnabled());
}

TEST_F(Buttons, WithoutARecordSetCustomCategoriesOnlyOfferToAdd) {
    form.nav.cmdUpdate->setEnabled(true);
    form.nav.cmdDelete->setEnabled(true);
    for (std::int16_t category = 5; category <= 9; ++category) {
        access.lSetEditMode(category, false);
        EXPECT_TRUE(form.nav.cmdNew->isEnabled()) << category;
        EXPECT_TRUE(form.nav.cmdSave->isHidden()) << category;
    }
}

TEST_F(Buttons, BrowsingRecords) {
    hold("gem.mdb", "select * from secs_alarm");
    for (const std::int16_t category : kGem)
        EXPECT_EQ(after(category, false), (Stand{false, false, true, false})) << category;
    for (const std::int16_t category : kCustom)
        EXPECT_EQ(after(category, false), (Stand{false, true, true, true})) << category;
    form[txtRptID].setText("100");
    EXPECT_EQ(after(11, false), (Stand{false, true, false, false}));
    form[txtRptID].setText("101");
    EXPECT_EQ(after(11, false), (Stand{false, true, true, true}));
    for (const std::int16_t category : kOthers)
        EXPECT_EQ(after(category, false), (Stand{false, false, false, false})) << category;
}

TEST_F(Buttons, BrowsingAnEmptyCategory) {
    hold("gem_empty.mdb", "select * from secs_alarm");
    for (const std::int16_t category : kGem)
        EXPECT_EQ(after(category, false), (Stand{false, false, false, false})) << category;
    for (const std::int16_t category : kCustom)
        EXPECT_EQ(after(category, false), (Stand{false, true, false, false})) << category;
    EXPECT_EQ(after(11, false), (Stand{false, true, true, true}))
        << "an empty report frame stays open";
}

TEST_F(Buttons, AGemListCannotBeEditedHoweverItCameUp) {
    hold("gem.mdb", "select * from secs_gemvar");
    for (const char* code : {"L", "l", " L "}) {
        form[cmbVarFormat].setText(code);
        for (const std::int16_t category : kGemVariables)
            EXPECT_EQ(after(category, false), (Stand{false, false, false, false})) << code;
        EXPECT_EQ(after(1, false), (Stand{false, false, true, false}));
    }
}

}  // namespace
}  // namespace stelvan::editing
