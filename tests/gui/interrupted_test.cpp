// A save or a delete that fails, or is cut off, at each of its operations: the file is as before or
// as after, the window agrees with it, and a second try works.
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>

#include "jet/disk/file_system.h"
#include "tests/crash/faulty_file_system.h"
#include "tests/support/window_bench.h"

namespace stelvan::app {
namespace {

namespace fs = std::filesystem;
using test::Fault;

using Content = std::map<std::string, std::multiset<std::string>>;

/// Every row of the model's tables, as our own record sets read them.
Content contentOf(const fs::path& file) {
    Content content;
    db::Connection connection;
    connection.setConnectionText("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + file.string() +
                                 "; Mode=Read|Write");
    connection.open();
    for (const char* table : {"secs_alarm", "secs_cusevent", "secs_cusvar", "secs_def_evt_rpt",
                              "secs_report", "secs_rpt_var"}) {
        db::Recordset records;
        records.open(std::string("SELECT * FROM ") + table, connection);
        for (; !records.eof(); records.moveNext()) {
            std::string row;
            for (std::size_t f = 0; f < records.fieldCount(); ++f)
                row += db::toTextOrEmpty(records.field(f)) + '\x1f';
            content[table].insert(row);
        }
    }
    return content;
}

class Interrupted : public test::WindowBench {
protected:
    std::optional<test::FaultyFileSystem> files;
    std::optional<jet::FileSystemOverride> replaced;

    void TearDown() override { closeAll(); }

    [[nodiscard]] fs::path file() const { return scratch.path() / "gem.mdb"; }

    /// A fresh window on a fresh copy, over the file system that fails on demand.
    void openFresh() {
        closeAll();
        for (const auto& entry : fs::directory_iterator(scratch.path()))
            fs::remove_all(entry.path());
        dialogs.messages.clear();
        dialogs.answers.clear();
        files.emplace();
        replaced.emplace(*files);
        open();
    }
    void closeAll() {
        window.reset();
        replaced.reset();
        files.reset();
    }
};

/// What is tried again and again: prepared up to the last press, then carried out.
struct Task {
    std::function<void()> prepare;
    std::function<void()> carryOut;
    std::function<bool()> isDone;
};

class InterruptedWork : public Interrupted {
protected:
    /// Selects rows of the pool, one after the other, until the list holds as many as wanted.
    void fillUp(const form::TwoListEditor& editor, int poolColumn, int listColumn, int wanted) {
        std::set<QString> ids;
        for (int row = 0; row < editor.selected->rowCount(); ++row)
            ids.insert(editor.selected->text(row, listColumn));
        for (int row = 0; editor.selected->rowCount() < wanted; ++row) {
            ASSERT_LT(row, editor.pool->rowCount());
            if (!ids.insert(editor.pool->text(row, poolColumn)).second) continue;
            editor.pool->selectRow(row);
            press(editor.select);
        }
    }
    void saveAtOnce() {
        all().editing.save.cmdSave_Click();
        ASSERT_EQ(state().editMode, form::EditMode::Browsing);
    }

    Task saveOfAnEvent() {
        return {[this] {
                    clickCategory(gem::CSTEVT);
                    goTo("txtEvtID", "162");
                    edit();
                    type(form()[txtEvtDesc], "Changed");
                    press(form().reports.deselect);
                    form().reports.selected->selectRow(5);
                    press(form().reports.orderUp);
                    fillUp(form().reports, 1, 1, 30);
                },
                [this] { all().editing.save.cmdSave_Click(); },
                [this] { return state().editMode == form::EditMode::Browsing; }};
    }
    Task saveOfANewReport() {
        return {[this] {
                    clickCategory(gem::CSTRPT);
                    press(form().nav.cmdNew);
                    type(form()[txtRptName], "NewReport");
                    type(form()[txtRptDesc], "Description");
                    fillUp(form().variables, 1, 1, 60);
                },
                [this] { all().editing.save.cmdSave_Click(); },
                [this] { return state().editMode == form::EditMode::Browsing; }};
    }
    Task saveOfAList() {
        return {[this] {
                    clickCategory(gem::CSTVSV);
                    goTo("txtVarID", "227");
                    edit();
                    press(form().children.deselect);
                    form().children.pool->selectRow(0);
                    press(form().children.select);
                    type(form()[txtVarName], "Renamed");
                    fillUp(form().children, 1, 2, 20);
                },
                [this] { all().editing.save.cmdSave_Click(); },
                [this] { return state().editMode == form::EditMode::Browsing; }};
    }
    Task deletionOfAnEvent() {
        return {[this] {
                    clickCategory(gem::CSTEVT);
                    goTo("txtEvtID", "162");
                    edit();
                    fillUp(form().reports, 1, 1, 30);
                    saveAtOnce();
                },
                [this] {
                    dialogs.answers.push_back(true);
                    all().editing.commands.cmdDelete_Click();
                },
                [this] { return form()[txtEvtID].text() != "162"; }};
    }
    Task deletionOfAReport() {
        return {[this] {
                    clickCategory(gem::CSTRPT);
                    goTo("txtRptID", "126");
                    edit();
                    fillUp(form().variables, 1, 1, 60);
                    saveAtOnce();
                },
                [this] {
                    dialogs.answers.push_back(true);
                    all().editing.commands.cmdDelete_Click();
                },
                [this] { return form()[txtRptID].text() != "126"; }};
    }
    Task deletionOfAList() {
        return {[this] {
                    clickCategory(gem::CSTVDV);
                    goTo("txtVarID", "1057");
                    edit();
                    fillUp(form().children, 1, 2, 20);
                    saveAtOnce();
                },
                [this] {
                    dialogs.answers.push_back(true);
                    all().editing.commands.cmdDelete_Click();
                },
                [this] { return form()[txtVarID].text() != "1057"; }};
    }

    Task undoOfADeletion() {
        return {[this] {
                    const Task deletion = deletionOfAReport();
                    deletion.prepare();
                    deletion.carryOut();
                },
                [this] { all().editing.undo.cmdUndo_Click(); },
                [this] { return form()[txtRptID].text() == "126"; }};
    }

    /// The file before and after, and how many operations it takes.
    void measure(const Task& task) {
        openFresh();
        task.prepare();
        before = contentOf(file());
        files->startOver(0, Fault::Stop);
        task.carryOut();
        operations = files->operations();
        ASSERT_TRUE(task.isDone());
        ASSERT_EQ(dialogs.texts(), QStringList());
        after = contentOf(file());
        ASSERT_NE(before, after);
        ASSERT_GE(operations, 5U);
    }

    void failEverywhere(const Task& task, Fault fault) {
        measure(task);
        int failed = 0;
        for (std::uint64_t n = 1; n <= operations; ++n) {
            SCOPED_TRACE("operation " + std::to_string(n));
            openFresh();
            task.prepare();
            files->startOver(n, fault);
            task.carryOut();
            files->startOver(0, Fault::Stop);
            if (task.isDone()) {
                EXPECT_EQ(contentOf(file()), after);
                continue;
            }
            ++failed;
            EXPECT_EQ(dialogs.messages.size(), 1U) << "one failure, one box";
            EXPECT_EQ(contentOf(file()), before);
            dialogs.messages.clear();
            task.carryOut();
            EXPECT_TRUE(task.isDone()) << "a second try works";
            EXPECT_EQ(dialogs.texts(), QStringList());
            EXPECT_EQ(contentOf(file()), after);
        }
        EXPECT_GT(failed, 0);
    }

    void stopEverywhere(const Task& task, Fault fault) {
        measure(task);
        foundBefore = foundAfter = 0;
        for (std::uint64_t n = 1; n <= operations; ++n) {
            SCOPED_TRACE("operation " + std::to_string(n));
            openFresh();
            task.prepare();
            files->startOver(n, fault);
            bool stopped = false;
            try {
                task.carryOut();
            } catch (const test::Crash&) {
                stopped = true;
            }
            expectWhole(file(), !stopped);
            for (std::uint32_t seed = 0; seed < kPowerCuts; ++seed) {
                const fs::path folder = scratch.path() / "cut";
                fs::remove_all(folder);
                files->powerCut(folder, seed);
                expectWhole(folder / "gem.mdb", !stopped);
            }
        }
        EXPECT_GT(foundBefore, 0);
        EXPECT_GT(foundAfter, 0);
    }

    static constexpr std::uint32_t kPowerCuts = 3;
    Content before;
    Content after;
    std::uint64_t operations = 0;
    int foundBefore = 0;
    int foundAfter = 0;

private:
    /// What another program finds in the file, on a copy, so that the stopped one cannot interfere.
    void expectWhole(const fs::path& path, bool mustBeDone) {
        const fs::path folder = scratch.path() / "found";
        fs::remove_all(folder);
        fs::create_directory(folder);
        for (const auto& entry : fs::directory_iterator(path.parent_path()))
            if (entry.is_regular_file())
                fs::copy_file(entry.path(), folder / entry.path().filename());
        test::FaultyFileSystem sound;
        const jet::FileSystemOverride others(sound);
        const Content found = contentOf(folder / path.filename());
        ++(found == after ? foundAfter : foundBefore);
        EXPECT_TRUE(found == after || (!mustBeDone && found == before));
    }
};

TEST_F(InterruptedWork, ASaveOfAnEventAndItsReportsFails) {
    failEverywhere(saveOfAnEvent(), Fault::IoError);
}

TEST_F(InterruptedWork, ASaveOfANewReportFindsNoSpace) {
    failEverywhere(saveOfANewReport(), Fault::NoSpace);
}

TEST_F(InterruptedWork, ASaveOfAListAndItsChildrenFails) {
    failEverywhere(saveOfAList(), Fault::IoError);
}

TEST_F(InterruptedWork, ADeletionOfAReportFails) {
    failEverywhere(deletionOfAReport(), Fault::IoError);
}

TEST_F(InterruptedWork, ADeletionOfAListFails) {
    failEverywhere(deletionOfAList(), Fault::NoSpace);
}

TEST_F(InterruptedWork, AnUndoOfADeletionFails) {
    failEverywhere(undoOfADeletion(), Fault::IoError);
}

TEST_F(InterruptedWork, AnUndoOfADeletionIsCutOff) {
    stopEverywhere(undoOfADeletion(), Fault::StopTorn);
}

TEST_F(InterruptedWork, ASaveOfAnEventIsCutOff) {
    stopEverywhere(saveOfAnEvent(), Fault::StopTorn);
}

TEST_F(InterruptedWork, ASaveOfANewReportIsCutOff) {
    stopEverywhere(saveOfANewReport(), Fault::Stop);
}

TEST_F(InterruptedWork, ASaveOfAListIsCutOff) {
    stopEverywhere(saveOfAList(), Fault::StopTorn);
}

TEST_F(InterruptedWork, ADeletionOfAnEventIsCutOff) {
    stopEverywhere(deletionOfAnEvent(), Fault::Stop);
}

TEST_F(InterruptedWork, ADeletionOfAListIsCutOff) {
    stopEverywhere(deletionOfAList(), Fault::StopTorn);
}

TEST_F(InterruptedWork, ADeletionOfAReportIsCutOff) {
    stopEverywhere(deletionOfAReport(), Fault::StopTorn);
}

}  // namespace
}  // namespace stelvan::app
