// A long random walk of a user through the window, with a plain model beside it: screen, record set
// and file agree with the model after every step, nobody sees a box that the step does not call
// for, and the file is sound at the end. STELVAN_WALK_STEPS and STELVAN_WALK_SEED lengthen or
// change the walk.
#include <QAction>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QTableView>
#include <QTimer>
#include <random>

#include "form/tool_bar.h"
#include "jet/check/check.h"
#include "jet/database.h"
#include "tests/gui/walk_model.h"
#include "tests/support/window_bench.h"

namespace stelvan::test {
namespace {

constexpr const char* kRefusal = "Record cannot be saved. Please correct the exception.";
constexpr const char* kListed = "Item already in the selected list.";
constexpr const char* kAlone =
    "Cannot add item. Selected list already containing an item which is allowed to duplicate.";

int fromEnvironment(const char* name, int otherwise) {
    return qEnvironmentVariableIsSet(name) ? qEnvironmentVariableIntValue(name) : otherwise;
}

class RandomWalk : public WindowBench {
protected:
    std::mt19937 random_;
    std::unique_ptr<WalkModel> model_;
    int serial_ = 0;

    int pick(int below) { return std::uniform_int_distribution<int>(0, below - 1)(random_); }
    bool chance(int percent) { return pick(100) < percent; }
    QString fresh(const QString& stem) { return stem + QString::number(++serial_); }

    [[nodiscard]] const WalkKind& kind() const { return walkKind(state().category); }
    [[nodiscard]] QString shownId() const { return field(kind().idField).text(); }
    [[nodiscard]] std::string file() const { return state().databasePath; }

    /// A model whose every record can be shown: the one with Nulls is taken out first.
    std::string prepared() {
        const auto path = scratch.copyOf(model("gem.mdb"));
        jet::Database database = jet::Database::open(path);
        jet::Table& variables = database.table("secs_cusvar");
        const auto cursor = variables.row(*rowOf(variables, 253), {});
        variables.erase(cursor->rowId());
        return path.string();
    }
    static std::optional<jet::RowId> rowOf(jet::Table& table, std::int32_t id) {
        const auto rows = table.scan({0});
        while (rows->next())
            if (std::get<std::int32_t>(rows->value(0)) == id) return rows->rowId();
        return std::nullopt;
    }

    void expectNoBox() { ASSERT_EQ(dialogs.texts(), QStringList()); }
    void expectSameFile() {
        const WalkModel now(file());
        ASSERT_EQ(now.content(), model_->content());
    }
    /// Browsing: the number of records, the shown texts and the shown links are the model's.
    void expectSameScreen() {
        if (state().category == gem::NO_CATEGORY) return;
        const auto rows = model_->rowsOf(kind());
        ASSERT_EQ(state().current.records->recordCount(), static_cast<int>(rows.size()));
        const int n = static_cast<int>(rows.size());
        ASSERT_EQ(form().nav.lblRecNumber->text(),
                  QString("%1 of %2").arg(state().current.position).arg(n));
        if (n == 0) return;
        const QString id = shownId();
        const auto shown = WalkModel::shown(kind(), model_->find(kind(), id));
        for (auto f = shown.begin(); f != shown.end(); ++f)
            ASSERT_EQ(field(f.key()).text(), f.value())
                << f.key().toStdString() << " of " << id.toStdString();
        if (kind().category == 1 || kind().category == 6) {
            ASSERT_EQ(idsIn(form().reports.selected, 1), model_->linked(kind(), id));
        }
        if (kind().category == 11) {
            QStringList screen = idsIn(form().variables.selected, 1);
            QStringList linked = model_->linked(kind(), id);
            screen.sort();
            linked.sort();
            ASSERT_EQ(screen, linked);
        }
        if (kind().category >= 7 && kind().category <= 9 &&
            shown["cmbVarFormat"].toUpper() == "L") {
            ASSERT_EQ(idsIn(form().children.selected, 2), model_->children(id));
        }
    }
    static QStringList idsIn(const form::ListView* list, int column) {
        QStringList ids;
        for (int row = 0; row < list->rowCount(); ++row) ids << list->text(row, column);
        return ids;
    }

    // What a user does.
    void stepCategory() { clickCategory(static_cast<std::int16_t>(1 + pick(11))); }
    void stepMove() {
        for (int n = 1 + pick(8); n > 0; --n) {
            QPushButton* const button = chance(60) ? form().nav.cmdNext : form().nav.cmdPrevious;
            if (button->isEnabled()) press(button);
        }
    }
    void stepGrid() {
        form().tspData->setCurrentIndex(1);
        ASSERT_FALSE(form().nav.fraDBOperation->isEnabled());
        ASSERT_EQ(form().DBGridGEM->model()->rowCount(),
                  static_cast<int>(model_->rowsOf(kind()).size()));
        ASSERT_NO_FATAL_FAILURE(useGrid());
        form().tspData->setCurrentIndex(0);
    }
    [[nodiscard]] int idColumn() const {
        const QAbstractItemModel& grid = *form().DBGridGEM->model();
        for (int c = 0; c < grid.columnCount(); ++c)
            if (grid.headerData(c, Qt::Horizontal).toString() == kind().idColumn) return c;
        return 0;
    }
    [[nodiscard]] QStringList gridIds() const {
        const QAbstractItemModel& grid = *form().DBGridGEM->model();
        QStringList ids;
        for (int row = 0; row < grid.rowCount(); ++row)
            ids << grid.index(row, idColumn()).data().toString();
        return ids;
    }
    /// Sorts, and goes to some record.
    void useGrid() {
        QTableView& grid = *form().DBGridGEM;
        const QStringList given = gridIds();
        if (given.isEmpty()) return;
        ASSERT_EQ(given.value(grid.currentIndex().row()), shownId());
        QStringList now = given;
        for (int n = pick(4); n > 0; --n) {
            emit grid.horizontalHeader()->sectionClicked(pick(grid.model()->columnCount()));
            now = gridIds();
            QStringList sorted = now;
            QStringList all = given;
            sorted.sort();
            all.sort();
            ASSERT_EQ(sorted, all);
        }
        if (chance(50)) return;
        const int row = pick(static_cast<int>(now.size()));
        grid.selectRow(row);
        QTest::keyClick(&grid, Qt::Key_Return);
        ASSERT_EQ(form().tspData->currentIndex(), 0);
        ASSERT_EQ(shownId(), now[row]);
    }
    /// Some record of some category is looked for by its identifier, and shown.
    void stepFind() {
        const WalkKind& wanted = walkKinds()[static_cast<std::size_t>(pick(11))];
        const auto rows = model_->rowsOf(wanted);
        if (rows.empty()) return;
        const QString id =
            rows[static_cast<std::size_t>(pick(static_cast<int>(rows.size())))][wanted.idColumn];
        QLineEdit& find = *form().aids.txtFind;
        find.setText(id);
        form::ListView& list = *form().aids.lvwFound;
        const QString caption = form::toQt(gem::categoryAt(wanted.category).caption);
        int row = 0;
        while (row < list.rowCount() && (list.text(row, 0) != caption ||
                                         (list.text(row, 1) != id && list.text(row, 2) != id)))
            ++row;
        ASSERT_LT(row, list.rowCount()) << id.toStdString();
        list.selectRow(row);
        QTest::keyClick(&find, Qt::Key_Return);
        ASSERT_EQ(state().category, wanted.category);
        ASSERT_EQ(shownId(), id);
        QTest::keyClick(&find, Qt::Key_Escape);
        ASSERT_TRUE(form().tvwSECSItem->isVisible());
    }
    void stepBackOrForward() {
        QAction* const action =
            form().aids.tlbModel->action(chance(70) ? form::Tool::Back : form::Tool::Forward);
        if (action->isEnabled()) action->trigger();
    }
    void stepDelete() {
        if (!form().nav.cmdDelete->isEnabled() || state().current.position == 0) return;
        const QString id = shownId();
        const bool reserved = kind().category == 11 && id.toLongLong() <= 100;
        const bool yes = chance(70);
        dialogs.answers.push_back(yes);
        press(form().nav.cmdDelete);
        dialogs.answers.clear();
        if (yes && !reserved) model_->remove(kind(), id);
    }

    /// Fields as the user leaves them; `wrong` is set when a save must be refused.
    QMap<QString, QString> typed_;
    bool wrong_ = false;

    void enter(const char* name, const QString& text) {
        form::Field& target = field(name);
        if (!target.isOpen() || !target.widget()->isVisible()) return;
        type(target, text);
        typed_[name] = target.text();
        leave(target);
    }
    void enterName(const char* name, const QString& stem) {
        const bool spoiled = chance(15);
        enter(name, spoiled ? fresh(stem) + " x" : fresh(stem));
        wrong_ = wrong_ || spoiled;
    }
    void flip(const char* name) {
        form::Field& box = field(name);
        QTest::mouseClick(box.widget(), Qt::LeftButton, {}, QPoint(8, box.widget()->height() / 2));
        typed_[name] = box.text();
    }
    void choose(const char* name, const QString& entry) {
        auto* const combo = qobject_cast<QComboBox*>(field(name).widget());
        combo->setFocus();
        const int index = combo->findText(entry);
        combo->setCurrentIndex(index);
        emit combo->activated(index);
        typed_[name] = entry;
    }

    void fillAlarm(bool adding) {
        if (adding || chance(40)) enterName("txtAlmName", "WalkAlarm");
        if (adding || chance(30)) enter("txtAlmGroup", fresh("G"));
        if (adding || chance(50)) enter("txtAlmText", "Text " + fresh("t"));
        if (adding) {
            enter("txtAlmSetCEName", fresh("SetName"));
            enter("txtAlmSetCEID", QString::number(900000 + 2 * ++serial_));
            if (chance(30)) {
                enter("txtAlmClrCEID", "7");
                wrong_ = true;
            }
        }
        if (chance(50)) flip("chkAlmEnable");
    }
    void fillEvent(bool adding) {
        if (adding || chance(40)) enterName("txtEvtName", "WalkEvent");
        if (adding || chance(30)) enter("txtEvtGroup", fresh("G"));
        if (adding || chance(50)) enter("txtEvtDesc", "What happened " + fresh("t"));
        if (chance(50)) flip("chkEvtEnable");
    }
    void fillReport(bool adding) {
        if (adding || chance(40)) enterName("txtRptName", "WalkReport");
        if (adding || chance(50)) enter("txtRptDesc", "Holds " + fresh("t"));
        if (chance(50)) flip("chkRptDefault");
    }
    void fillVariable(bool adding) {
        if (adding || chance(40)) enterName("txtVarName", "WalkVar");
        if (adding || chance(30)) enter("txtVarGroup", fresh("G"));
        if (adding || chance(50)) enter("txtVarDesc", "Measures " + fresh("t"));
        if (!adding) return;
        const QStringList formats{"U1", "I2", "F4", "A", "BL", "B", "U4"};
        const bool list = kind().category != 9 && chance(25);
        const QString format = list ? "L" : formats[pick(static_cast<int>(formats.size()))];
        choose("cmbVarFormat", format);
        if (list) return;
        if (format == "A") enter("txtVarValue", fresh("any text "));
        if (format == "BL") enter("txtVarDefValue", chance(50) ? "true" : "FALSE");
        if (format == "A" || format == "BL") return;
        enter("txtVarMin", "10");
        enter("txtVarMax", chance(20) ? "5" : "100");
        wrong_ = wrong_ || typed_["txtVarMax"] == "5";
        enter("txtVarDefValue", chance(15) ? "101" : "55");
        wrong_ = wrong_ || typed_["txtVarDefValue"] == "101";
        enter("txtVarValue", "10");
        enter("txtVarUnit", chance(50) ? "mm" : "0");
    }
    void fillSetting() {
        const QString name = shownId();
        if (name.startsWith("T3") || name.startsWith("T5")) {
            const bool bad = chance(30);
            enter("txtSttValue", bad ? "2.5" : QString::number(1 + pick(100)));
            wrong_ = bad;
        } else if (name == "BaudRate") {
            choose("cmbSttValue", chance(50) ? "9600" : "300");
            typed_["txtSttValue"] = field("cmbSttValue").text();
        }
    }

    void clickRow(form::ListView* list, int row) {
        list->selectRow(row);
        ASSERT_EQ(list->selectedRow(), row);
    }
    /// Some changes in a two-list editor; gives the ids that the selected list must then hold.
    QStringList changeLinks(const form::TwoListEditor& e, int poolColumn, int listColumn) {
        QStringList ids = idsIn(e.selected, listColumn);
        for (int n = pick(5); n > 0; --n) changeLink(e, poolColumn, ids);
        EXPECT_EQ(idsIn(e.selected, listColumn), ids);
        return ids;
    }
    void changeLink(const form::TwoListEditor& e, int poolColumn, QStringList& ids) {
        const int size = static_cast<int>(ids.size());
        const int row = size > 0 ? pick(size) : 0;
        const int what = pick(6);
        if (what < 3 && e.pool->rowCount() > 0) {
            const int chosen = pick(e.pool->rowCount());
            const QString id = e.pool->text(chosen, poolColumn);
            clickRow(e.pool, chosen);
            press(e.select);
            if (dialogs.texts().isEmpty()) {
                EXPECT_FALSE(ids.contains(id));
                ids << id;
            } else {
                EXPECT_TRUE(ids.contains(id) ? dialogs.texts() == QStringList(kListed)
                                             : dialogs.texts() == QStringList(kAlone));
                dialogs.messages.clear();
            }
        } else if (what == 3 && size > 0) {
            clickRow(e.selected, row);
            press(e.deselect);
            ids.removeAt(row);
        } else if (what == 4 && size > 0) {
            clickRow(e.selected, row);
            press(e.orderUp);
            if (row > 0) ids.swapItemsAt(row, row - 1);
        } else if (size > 0) {
            clickRow(e.selected, row);
            press(e.orderDown);
            if (row + 1 < size) ids.swapItemsAt(row, row + 1);
        }
    }

    /// Whether a save of this record can be foretold: what came with the file may break rules of
    /// its own.
    bool foretold(bool adding, const QString& id) {
        if (duplicated_) return false;
        return adding || (kind().category == 1) || walked_.contains(kind().table + id);
    }
    bool duplicated_ = false;
    QStringList walked_;

    void stepChange() {
        const bool custom = kind().custom;
        const bool adding = custom && form().nav.cmdNew->isEnabled() && chance(50);
        if (!adding && (!form().nav.cmdUpdate->isEnabled() || state().current.position == 0))
            return;
        const QString before = adding ? QString() : shownId();
        if (!adding && QStringList{"U8", "I8"}.contains(field("cmbVarFormat").text())) return;
        press(adding ? form().nav.cmdNew : form().nav.cmdUpdate);
        typed_.clear();
        wrong_ = false;
        fill(adding);
        const QString id = shownId();
        wrong_ = wrong_ || id.isEmpty();  // there is no identifier behind the highest possible one
        const bool isList = kind().category >= 7 && kind().category <= 9 &&
                            field("cmbVarFormat").text().toUpper() == "L";
        QStringList links;
        if (kind().category == 6) links = changeLinks(form().reports, 1, 1);
        if (kind().category == 11) {
            links = changeLinks(form().variables, 1, 1);
            wrong_ = wrong_ || links.isEmpty();
        }
        if (isList && form().children.pool->isVisible())
            links = changeLinks(form().children, 1, 2);
        else if (isList)
            links = model_->children(before);
        finish(adding, before, id, isList, links);
    }
    /// A record like the one shown, under another name.
    void stepDuplicate() {
        QAction* const duplicate = form().aids.tlbModel->action(form::Tool::Duplicate);
        if (!duplicate->isEnabled() || state().current.position == 0) return;
        const QString before = shownId();
        const auto original = WalkModel::shown(kind(), model_->find(kind(), before));
        if (QStringList{"U8", "I8"}.contains(original["cmbVarFormat"])) return;
        duplicate->trigger();
        ASSERT_EQ(state().editMode, form::EditMode::Adding);
        typed_.clear();
        for (auto f = original.begin(); f != original.end(); ++f) {
            const form::Field& copy = field(f.key());
            if (f.key() == kind().idField) continue;
            if (copy.isOpen()) {
                ASSERT_EQ(copy.text(), f.value()) << f.key().toStdString();
            }
            typed_[f.key()] = copy.text();
        }
        const QMap<int, const char*> names{{5, "txtAlmName"}, {6, "txtEvtName"},
                                           {7, "txtVarName"}, {8, "txtVarName"},
                                           {9, "txtVarName"}, {11, "txtRptName"}};
        enter(names[kind().category], fresh("WalkCopy"));
        const QString id = shownId();
        wrong_ = id.isEmpty();
        const bool isList = original["cmbVarFormat"].trimmed().toUpper() == "L";
        QStringList links;
        if (kind().category == 6 || kind().category == 11) links = model_->linked(kind(), before);
        duplicated_ = true;
        finish(true, before, id, isList, links);
        duplicated_ = false;
    }
    void fill(bool adding) {
        switch (kind().category) {
            case 1:
                flip("chkEvtEnable");
                break;
            case 5:
                fillAlarm(adding);
                break;
            case 6:
                fillEvent(adding);
                break;
            case 7:
            case 8:
            case 9:
                fillVariable(adding);
                break;
            case 10:
                fillSetting();
                break;
            case 11:
                fillReport(adding);
                break;
            default:
                break;
        }
    }
    void finish(bool adding, const QString& before, const QString& id, bool isList,
                const QStringList& links) {
        ASSERT_EQ(dialogs.texts(), QStringList()) << kind().table << ' ' << id.toStdString();
        if (chance(20)) {
            press(form().nav.cmdCancel);
            return;
        }
        press(form().nav.cmdSave);
        if (state().editMode != form::EditMode::Browsing) {
            ASSERT_EQ(dialogs.texts(), QStringList(kRefusal));
            ASSERT_NE(exceptions(), QString());
            ASSERT_TRUE(wrong_ || !foretold(adding, id)) << exceptions().toStdString();
            dialogs.messages.clear();
            press(form().nav.cmdCancel);
            ASSERT_EQ(exceptions(), QString());
            return;
        }
        ASSERT_FALSE(wrong_) << kind().table << ' ' << id.toStdString();
        take(adding, before, id);
        if (kind().category == 6 || kind().category == 11) model_->relink(kind(), id, links);
        if (isList) model_->rechild(id, links);
        walked_ << kind().table + id;
    }
    /// The save succeeded: the model takes over what was typed.
    void take(bool adding, const QString& before, const QString& id) {
        WalkRow row;
        if (adding) {
            const auto rows = model_->rowsOf(walkKind(kind().category));
            for (const QString& column : columnsOf(rows)) row[column] = "0";
        } else {
            row = model_->find(kind(), before);
        }
        QMap<QString, QString> fields = WalkModel::shown(kind(), row);
        if (adding)
            for (QString& text : fields) text = text == "0" ? QString() : text;
        if (adding && fields.contains("chkAlmEnable")) fields["chkAlmEnable"] = "0";
        if (adding && fields.contains("chkEvtEnable")) fields["chkEvtEnable"] = "0";
        if (adding && fields.contains("chkRptDefault")) fields["chkRptDefault"] = "0";
        for (auto f = typed_.begin(); f != typed_.end(); ++f)
            if (fields.contains(f.key())) fields[f.key()] = f.value();
        fields[kind().idField] = id;
        const WalkRow stored = WalkModel::stored(kind(), row, fields);
        if (adding) {
            model_->add(kind(), stored);
        } else {
            model_->put(kind(), before, stored);
        }
    }
    static QStringList columnsOf(const std::vector<WalkRow>& rows) {
        return rows.empty() ? QStringList() : QStringList(rows.front().keys());
    }

    void step() {
        const int what = pick(100);
        if (what < 12 || state().category == gem::NO_CATEGORY) {
            stepCategory();
        } else if (what < 40) {
            stepMove();
        } else if (what < 45) {
            stepGrid();
        } else if (what < 52) {
            stepDelete();
        } else if (what < 58) {
            stepFind();
        } else if (what < 61) {
            stepBackOrForward();
        } else if (what < 66) {
            stepDuplicate();
        } else {
            stepChange();
        }
    }
};

TEST_F(RandomWalk, NeverLetsScreenRecordSetAndFileDiffer) {
    random_.seed(static_cast<unsigned>(fromEnvironment("STELVAN_WALK_SEED", 20260)));
    const std::string path = prepared();
    window = std::make_unique<app::FrmMain>(dialogs, QString());
    window->start(QString::fromStdString(path));
    window->resize(1200, 900);
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    model_ = std::make_unique<WalkModel>(path);

    const int steps = fromEnvironment("STELVAN_WALK_STEPS", 1200);
    for (int n = 0; n < steps; ++n) {
        SCOPED_TRACE("step " + std::to_string(n));
        ASSERT_NO_FATAL_FAILURE(step());
        ASSERT_NO_FATAL_FAILURE(expectNoBox());
        ASSERT_NO_FATAL_FAILURE(expectSameScreen());
        if (n % 10 == 9) {
            ASSERT_NO_FATAL_FAILURE(expectSameFile());
        }
    }
    expectSameFile();
    EXPECT_FALSE(jet::anyFault(jet::check(path)));
}

}  // namespace
}  // namespace stelvan::test
