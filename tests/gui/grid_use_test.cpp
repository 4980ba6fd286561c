// What a user does in the grid of all records.
#include <QClipboard>
#include <QHeaderView>
#include <fstream>
#include <sstream>

#include "tests/gui/aids_bench.h"

namespace stelvan::app {
namespace {

class GridUse : public test::AidsBench {
protected:
    void SetUp() override { open(); }
    void clickHeader(const QString& name) {
        QHeaderView* const header = form().DBGridGEM->horizontalHeader();
        const int section = column(name);
        form().DBGridGEM->scrollTo(grid()->index(0, section));
        QTest::mouseClick(
            header->viewport(), Qt::LeftButton, {},
            QPoint(header->sectionViewportPosition(section) + 8, header->height() / 2));
    }
    [[nodiscard]] QModelIndex inRow(int row) const { return grid()->index(row, 0); }
    [[nodiscard]] int selected() const {
        const auto rows = form().DBGridGEM->selectionModel()->selectedRows();
        return rows.size() == 1 ? rows.first().row() : -1;
    }
    void doubleClick(int row) {
        form().DBGridGEM->scrollTo(inRow(row));
        const QPoint at = form().DBGridGEM->visualRect(inRow(row)).center();
        QTest::mouseClick(form().DBGridGEM->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(form().DBGridGEM->viewport(), Qt::LeftButton, {}, at);
    }
    [[nodiscard]] static std::string contentOf(const std::string& file) {
        std::ifstream in(file, std::ios::binary);
        std::ostringstream whole;
        whole << in.rdbuf();
        return whole.str();
    }
};

TEST_F(GridUse, TheCurrentRecordIsSelectedAndInSight) {
    clickCategory(gem::CSTEVT);
    goToNumber(60);
    viewAll();
    EXPECT_EQ(selected(), 59);
    const QRect cell = form().DBGridGEM->visualRect(inRow(59));
    EXPECT_TRUE(form().DBGridGEM->viewport()->rect().contains(cell.center()));
    EXPECT_EQ(place(), "60 of 70");
}

TEST_F(GridUse, EnterAndADoubleClickShowTheRecordUnderTheCursor) {
    clickCategory(gem::CSTEVT);
    viewAll();
    const QStringList ids = cells("evt_id");
    form().DBGridGEM->selectRow(33);
    form().DBGridGEM->setFocus();
    key(Qt::Key_Return);
    EXPECT_EQ(form().tspData->currentIndex(), 0);
    EXPECT_EQ(place(), "34 of 70");
    EXPECT_EQ(shown("txtEvtID"), ids[33]);
    viewAll();
    clickHeader("evt_name");
    const QString id = cells("evt_id")[7];
    doubleClick(7);
    EXPECT_EQ(form().tspData->currentIndex(), 0);
    EXPECT_EQ(shown("txtEvtID"), id);
}

TEST_F(GridUse, ItLeadsNowhereWhileEditing) {
    clickCategory(gem::CSTEVT);
    edit();
    viewAll();
    form().DBGridGEM->setFocus();
    form().DBGridGEM->selectRow(33);
    key(Qt::Key_Return);
    doubleClick(3);
    EXPECT_EQ(form().tspData->currentIndex(), 1);
    EXPECT_EQ(state().editMode, form::EditMode::Editing);
    EXPECT_EQ(place(), "1 of 70");
}

TEST_F(GridUse, AHeaderSortsUpThenDownThenNotAtAllAndMovesNoRecord) {
    ASSERT_TRUE(test::elsewhere(state().databasePath,
                                "INSERT INTO secs_cusvar (var_id, var_name, var_type, var_max, "
                                "var_group) VALUES (9, 'x', 'SV', '1e3', 'b')"));
    ASSERT_TRUE(test::elsewhere(state().databasePath,
                                "INSERT INTO secs_cusvar (var_id, var_name, var_type, var_max, "
                                "var_group) VALUES (88000, 'y', 'SV', '-2.5', 'A')"));
    clickCategory(gem::CSTVSV);
    viewAll();
    const QStringList given = cells("var_id");
    clickHeader("var_id");
    QStringList byNumber = given;
    std::ranges::sort(byNumber, {}, [](const QString& id) { return id.toLongLong(); });
    EXPECT_EQ(cells("var_id"), byNumber);
    EXPECT_EQ(byNumber.first(), "9");
    clickHeader("var_id");
    std::ranges::reverse(byNumber);
    EXPECT_EQ(cells("var_id"), byNumber);
    clickHeader("var_id");
    EXPECT_EQ(cells("var_id"), given);
    EXPECT_FALSE(form().DBGridGEM->horizontalHeader()->isSortIndicatorShown());
    // Numbers in a column of texts, before all other texts; what is empty comes last.
    clickHeader("var_max");
    QStringList numbers;
    for (const QString& text : cells("var_max")) {
        bool isNumber = false;
        text.toDouble(&isNumber);
        if (isNumber) numbers << text;
    }
    EXPECT_EQ(numbers.first(), "-2.5");
    EXPECT_TRUE(std::ranges::is_sorted(numbers, {}, [](const QString& t) { return t.toDouble(); }));
    EXPECT_EQ(cells("var_max").mid(0, numbers.size()), numbers);
    EXPECT_EQ(place(), QString("1 of %1").arg(given.size()));
    form().tspData->setCurrentIndex(0);
    press(nav().cmdNext);
    EXPECT_EQ(shown("txtVarID"), given[1]);
}

TEST_F(GridUse, SortingKeepsTheSelectedRecordAndEndsWithTheNextView) {
    clickCategory(gem::CSTEVT);
    viewAll();
    const QStringList given = cells("evt_id");
    form().DBGridGEM->selectRow(20);
    clickHeader("evt_name");
    ASSERT_NE(selected(), -1);
    EXPECT_EQ(cells("evt_id")[selected()], given[20]);
    form().tspData->setCurrentIndex(0);
    viewAll();
    EXPECT_EQ(cells("evt_id"), given);
    EXPECT_FALSE(form().DBGridGEM->horizontalHeader()->isSortIndicatorShown());
    clickHeader("evt_name");
    EXPECT_EQ(form().DBGridGEM->horizontalHeader()->sortIndicatorOrder(), Qt::AscendingOrder);
}

TEST_F(GridUse, CtrlCCopiesTheSelectedRowsWithHeaders) {
    ASSERT_TRUE(test::elsewhere(state().databasePath,
                                "UPDATE secs_report SET rpt_desc = 'say \"hi\"' WHERE rpt_id = " +
                                    query("SELECT rpt_id FROM secs_report")[1].toStdString()));
    clickCategory(gem::CSTRPT);
    viewAll();
    form().DBGridGEM->selectRow(1);
    form().DBGridGEM->setFocus();
    key(Qt::Key_C, Qt::ControlModifier);
    const auto rows = query("SELECT rpt_id, rpt_name FROM secs_report");
    const QStringList cell = rows[1].split('|');
    QStringList wanted;
    for (int c = 0; c < grid()->columnCount(); ++c) {
        const QString text = grid()->index(1, c).data().toString();
        wanted << (text.contains('"') ? "\"say \"\"hi\"\"\"" : text);
    }
    const QStringList lines = QGuiApplication::clipboard()->text().split('\n');
    ASSERT_EQ(lines.size(), 3);
    EXPECT_TRUE(lines[0].startsWith("rpt_id\trpt_name"));
    EXPECT_EQ(lines[1], wanted.join('\t'));
    EXPECT_EQ(lines[2], "");
}

TEST_F(GridUse, TheMenuExportsTheRowsAsTheyAreShown) {
    const std::string file = (scratch.path() / "rows.csv").string();
    ASSERT_TRUE(test::elsewhere(state().databasePath,
                                "UPDATE secs_cusevent SET evt_text = 'a,\"b\"' WHERE evt_id = " +
                                    query("SELECT evt_id FROM secs_cusevent")[0].toStdString()));
    clickCategory(gem::CSTEVT);
    viewAll();
    clickHeader("evt_id");
    clickHeader("evt_id");
    const QStringList ids = cells("evt_id");
    dialogs.choices.push_back(QString::fromStdString(file));
    QMetaObject::invokeMethod(form().DBGridGEM, "customContextMenuRequested",
                              Q_ARG(QPoint, QPoint(5, 5)));
    auto* const menu = window->findChild<QMenu*>("mnuGrid");
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(menu->actions().size(), 3);
    menu->actions()[1]->trigger();
    menu->actions()[2]->trigger();
    menu->close();
    ASSERT_EQ(dialogs.saved.size(), 1U);
    EXPECT_TRUE(dialogs.saved[0].start.endsWith("/Custom Collection Events.csv"));
    const QStringList lines = QString::fromStdString(contentOf(file)).split("\r\n");
    ASSERT_EQ(lines.size(), 72);
    for (int row = 0; row < 70; ++row)
        EXPECT_TRUE(lines[row + 1].startsWith(ids[row] + ",")) << row;
    EXPECT_TRUE(contentOf(file).find(",\"a,\"\"b\"\"\",") != std::string::npos);
    EXPECT_EQ(dialogs.texts(), QStringList());
}

TEST_F(GridUse, AnExportThatCannotBeWrittenLeavesWhatStoodThere) {
    clickCategory(gem::CSTEVT);
    viewAll();
    dialogs.choices.push_back("/nowhere/at/all.csv");
    all().browser.gridActions.exportRows();
    ASSERT_EQ(dialogs.texts().size(), 1);
    EXPECT_TRUE(dialogs.texts().first().contains("/nowhere/at/all.csv"));
}

}  // namespace
}  // namespace stelvan::app
