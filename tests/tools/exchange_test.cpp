// The model as texts, out of the window and into it.
#include <QMenu>
#include <filesystem>
#include <fstream>

#include "db/undo.h"
#include "tests/tools/tool_bench.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;

class ExchangeTool : public ToolBench {
protected:
    [[nodiscard]] fs::path texts() const { return scratch.path() / "texts"; }
    [[nodiscard]] QString textsFolder() const { return form::toQt(texts().string()); }

    void chooseTexts() { dialogs.choices.push_back(textsFolder()); }
    /// Exports by the command line, so that the texts are those that everybody gets.
    void writeTexts() const {
        const ProgramRun run = runGemdb({"export", path(), texts().string()});
        ASSERT_EQ(run.status, 0) << run.err;
    }
    void replaceInText(const std::string& file, const std::string& from, const std::string& to) {
        std::string text = readFile(texts() / file);
        const std::size_t at = text.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        text.replace(at, from.size(), to);
        std::ofstream(texts() / file) << text;
    }
    /// Alarm 103 has another group in the texts than in the file.
    void prepareChange() {
        open();
        clickCategory(gem::CSTALM);
        const QStringList name = query("SELECT alm_name FROM secs_alarm WHERE alm_id = 103");
        ASSERT_EQ(name.size(), 1);
        writeTexts();
        replaceInText("alarms.toml", "alm_name = \"" + name.front().toStdString() + "\"",
                      "alm_name = \"Renamed\"");
    }
    void import() {
        chooseTexts();
        chooseFrom(form::Tool::Import, "mnuImportTexts");
        EXPECT_EQ(awaited(), 0);
    }
    void exportBy(const char* way) { chooseFrom(form::Tool::Export, way); }
    /// A tool that offers several ways: chosen from its menu, as a click does.
    void chooseFrom(form::Tool tool, const char* way) {
        trigger(tool);
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        auto* const chosen = menu->findChild<QAction*>(QLatin1String(way));
        ASSERT_NE(chosen, nullptr) << way;
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(chosen).center());
    }
    [[nodiscard]] QStringList renamed() const {
        return query("SELECT alm_id FROM secs_alarm WHERE alm_name = 'Renamed'");
    }
};

TEST_F(ExchangeTool, ExportWritesTheTextsOfTheCommandLine) {
    open();
    chooseTexts();
    exportBy("mnuExportTexts");
    const fs::path other = scratch.path() / "other";
    ASSERT_EQ(runGemdb({"export", path(), other.string()}).status, 0);
    int files = 0;
    for (const auto& entry : fs::directory_iterator(other)) {
        ++files;
        EXPECT_EQ(readFile(texts() / entry.path().filename()), readFile(entry.path()));
    }
    EXPECT_GE(files, 5);
    EXPECT_EQ(status(), "The model was exported to " + textsFolder());
    EXPECT_TRUE(dialogs.questions.empty());
}

TEST_F(ExchangeTool, ExportAsksBeforeItReplacesTexts) {
    open();
    writeTexts();
    replaceInText("events.toml", "[[", "# mine\n[[");
    const std::string mine = readFile(texts() / "events.toml");
    chooseTexts();
    exportBy("mnuExportTexts");
    ASSERT_EQ(dialogs.questions.size(), 1U);
    EXPECT_TRUE(dialogs.questions.front().text.contains("events.toml"));
    EXPECT_EQ(readFile(texts() / "events.toml"), mine);
    dialogs.answers = {true};
    chooseTexts();
    exportBy("mnuExportTexts");
    EXPECT_EQ(readFile(texts() / "events.toml").find("# mine"), std::string::npos);
}

TEST_F(ExchangeTool, ExportThatCannotBeWrittenSaysWhy) {
    open();
    std::ofstream(texts()) << "a file, not a folder";
    chooseTexts();
    exportBy("mnuExportTexts");
    ASSERT_EQ(dialogs.texts().size(), 1);
    EXPECT_TRUE(dialogs.texts().first().contains(textsFolder()));
}

TEST_F(ExchangeTool, ImportListsTheChangesAndWritesNothingUntilAgreedTo) {
    prepareChange();
    const std::string before = bytes();
    QString lines, heading;
    whenOpen("frmLines", [&](QDialog& dialog) {
        lines = child<QPlainTextEdit>(dialog, "txtLines").toPlainText();
        heading = child<QLabel>(dialog, "lblHeading").text();
        EXPECT_EQ(bytes(), before);
        EXPECT_TRUE(child<QPushButton>(dialog, "cmdClose").isDefault());
        click(dialog, "cmdClose");
    });
    import();
    EXPECT_EQ(bytes(), before);
    const ProgramRun run = runGemdb({"import", texts().string(), path(), "--dry-run"});
    const std::vector<std::string> printed = splitLines(run.out);
    EXPECT_EQ(lines.toStdString() + "\n" + printed.back() + "\n", run.out);
    EXPECT_TRUE(heading.endsWith(QString::fromStdString(printed.back())));
}

TEST_F(ExchangeTool, ImportThatIsAgreedToIsOneUnitThatCanBeTakenBack) {
    prepareChange();
    const std::string exported = readFile(texts() / "alarms.toml");
    db::UndoHistory history;
    bool asked = false;
    all().tools.exchange.mayWrite = [&] { return asked = true; };
    all().tools.exchange.noteDone = [&](const std::string& what, jet::RowChanges changes) {
        history.add(what, std::move(changes));
    };
    whenOpen("frmLines", [](QDialog& dialog) { click(dialog, "cmdAccept"); });
    import();
    EXPECT_TRUE(asked);
    EXPECT_EQ(renamed(), QStringList{"103"});
    EXPECT_EQ(history.next(), "Import of " + texts().string());
    static_cast<void>(history.undo(path()));
    EXPECT_TRUE(renamed().isEmpty());
}

TEST_F(ExchangeTool, ImportIsTakenBackByTheWindowsUndo) {
    prepareChange();
    whenOpen("frmLines", [](QDialog& dialog) { click(dialog, "cmdAccept"); });
    import();
    EXPECT_EQ(renamed(), QStringList{"103"});
    trigger(form::Tool::Undo);
    EXPECT_TRUE(renamed().isEmpty());
    EXPECT_EQ(dialogs.texts(), QStringList());
}

TEST_F(ExchangeTool, ImportIsNotDoneWhereItMayNotWrite) {
    prepareChange();
    const std::string before = bytes();
    all().tools.exchange.mayWrite = [] { return false; };
    whenOpen("frmLines", [](QDialog& dialog) { click(dialog, "cmdAccept"); });
    import();
    EXPECT_EQ(bytes(), before);
}

TEST_F(ExchangeTool, RecordsShownAreLoadedAnewAfterAnImport) {
    prepareChange();
    goTo("txtAlmID", "103");
    whenOpen("frmLines", [](QDialog& dialog) { click(dialog, "cmdAccept"); });
    import();
    EXPECT_EQ(form()[txtAlmID].text(), "103");
    EXPECT_EQ(form()[txtAlmName].text(), "Renamed");
    EXPECT_EQ(status(), "Imported: 0 rows added, 1 changed, 0 removed");
    EXPECT_FALSE(form().aids.lblNotice->isVisible());
}

TEST_F(ExchangeTool, ImportOfWhatTheModelSaysAlreadySaysSo) {
    open();
    writeTexts();
    const std::string before = bytes();
    import();
    ASSERT_EQ(dialogs.texts().size(), 1);
    EXPECT_TRUE(dialogs.texts().first().contains("nothing to import"));
    EXPECT_EQ(bytes(), before);
}

TEST_F(ExchangeTool, RefusedImportShowsAllLinesAndWritesNothing) {
    open();
    writeTexts();
    replaceInText("alarms.toml", "alm_name = \"", "alm_name = \"\"\"\n");
    replaceInText("reports.toml", "rpt_name = \"", "rpt_name = <<<< \"");
    const std::string before = bytes();
    const ProgramRun run = runGemdb({"import", texts().string(), path()});
    ASSERT_EQ(run.status, 2);
    const std::vector<std::string> printed = splitLines(run.err);
    ASSERT_GT(printed.size(), 1U) << run.err;
    QStringList lines;
    whenOpen("frmLines", [&](QDialog& dialog) {
        lines = child<QPlainTextEdit>(dialog, "txtLines").toPlainText().split('\n');
        EXPECT_EQ(dialog.findChild<QPushButton*>("cmdAccept"), nullptr);
    });
    import();
    ASSERT_EQ(static_cast<std::size_t>(lines.size()), printed.size());
    for (qsizetype at = 0; at < lines.size(); ++at)
        EXPECT_TRUE(printed[static_cast<std::size_t>(at)].ends_with(lines[at].toStdString()))
            << lines[at].toStdString();
    EXPECT_EQ(bytes(), before);
}

TEST_F(ExchangeTool, ImportRefusesWhatWasChangedWhileItsListWasRead) {
    prepareChange();
    whenOpen("frmLines", [this](QDialog& dialog) {
        changeElsewhere("UPDATE secs_alarm SET alm_group = 'Other' WHERE alm_id = 103");
        click(dialog, "cmdAccept");
    });
    import();
    ASSERT_EQ(dialogs.texts().size(), 1);
    EXPECT_TRUE(dialogs.texts().first().contains("nothing was imported"));
    EXPECT_TRUE(renamed().isEmpty());
    EXPECT_EQ(query("SELECT alm_group FROM secs_alarm WHERE alm_id = 103"), QStringList{"Other"});
}

TEST_F(ExchangeTool, TablesAreThoseOfTheCommandLineAndOneIsTakenBackIn) {
    open();
    clickCategory(gem::CSTALM);
    goTo("txtAlmID", "103");
    chooseTexts();
    exportBy("mnuExportSheets");
    const fs::path other = scratch.path() / "other";
    ASSERT_EQ(runGemdb({"export", path(), other.string(), "--csv"}).status, 0);
    for (const auto& entry : fs::directory_iterator(other))
        EXPECT_EQ(readFile(texts() / entry.path().filename()), readFile(entry.path()));
    const QString name = form()[txtAlmName].text();
    replaceInText("custom-alarms.csv", name.toStdString(), "Renamed");
    dialogs.choices.push_back(form::toQt((texts() / "custom-alarms.csv").string()));
    QString lines;
    whenOpen("frmLines", [&](QDialog& dialog) {
        lines = child<QPlainTextEdit>(dialog, "txtLines").toPlainText();
        click(dialog, "cmdAccept");
    });
    chooseFrom(form::Tool::Import, "mnuImportSheet");
    EXPECT_EQ(awaited(), 0);
    EXPECT_TRUE(lines.contains("Renamed")) << lines.toStdString();
    EXPECT_EQ(renamed(), QStringList{"103"});
    EXPECT_EQ(form()[txtAlmName].text(), "Renamed");
}

TEST_F(ExchangeTool, NothingActsWhileARecordIsEdited) {
    open();
    clickCategory(gem::CSTALM);
    edit();
    for (const form::Tool tool :
         {form::Tool::Compare, form::Tool::Document, form::Tool::Export, form::Tool::Import}) {
        EXPECT_FALSE(action(tool)->isEnabled());
        action(tool)->trigger();
    }
    EXPECT_TRUE(dialogs.folders.empty());
    press(form().nav.cmdCancel);
    EXPECT_TRUE(action(form::Tool::Import)->isEnabled());
}

}  // namespace
}  // namespace stelvan::test
