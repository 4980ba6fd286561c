// Comparing the open model, and writing it as a document.
#include <QCheckBox>
#include <QComboBox>
#include <filesystem>

#include "tests/tools/tool_bench.h"

namespace stelvan::test {
namespace {

namespace fs = std::filesystem;

class CompareTool : public ToolBench {
protected:
    fs::path other;
    void SetUp() override {
        open();
        other = scratch.copyOf(path(), "other.mdb");
        changeElsewhere("UPDATE secs_alarm SET alm_group = 'Other' WHERE alm_id = 103");
    }
    /// What `gemdb diff` prints, without its summary.
    [[nodiscard]] std::string differences(const fs::path& from) const {
        const std::string out = runGemdb({"diff", from.string(), path()}).out;
        return out.substr(0, out.rfind('\n', out.size() - 2));
    }
    [[nodiscard]] static QString listed(const QDialog& dialog) {
        return child<QPlainTextEdit>(dialog, "txtDifferences").toPlainText();
    }
};

TEST_F(CompareTool, ListsWhatTheCommandLineListsForAFile) {
    dialogs.choices.push_back(form::toQt(other.string()));
    whenOpen("frmCompare", [this](QDialog& dialog) {
        EXPECT_FALSE(child<QPushButton>(dialog, "cmdSavePage").isEnabled());
        click(dialog, "cmdCompareFile");
        EXPECT_EQ(listed(dialog).toStdString(), differences(other));
        EXPECT_TRUE(child<QLabel>(dialog, "lblCompared").text().contains("1 item changed"));
    });
    trigger(form::Tool::Compare);
    EXPECT_EQ(awaited(), 0);
}

TEST_F(CompareTool, ListsWhatDiffersFromAFolderOfTexts) {
    const fs::path texts = scratch.path() / "texts";
    ASSERT_EQ(runGemdb({"export", other.string(), texts.string()}).status, 0);
    dialogs.choices.push_back(form::toQt(texts.string()));
    whenOpen("frmCompare", [this, texts](QDialog& dialog) {
        click(dialog, "cmdCompareFolder");
        EXPECT_EQ(listed(dialog).toStdString(), differences(texts));
    });
    trigger(form::Tool::Compare);
    EXPECT_EQ(awaited(), 0);
}

TEST_F(CompareTool, SaysThatBothSayTheSame) {
    dialogs.choices.push_back(form::toQt(path()));
    whenOpen("frmCompare", [](QDialog& dialog) {
        click(dialog, "cmdCompareFile");
        EXPECT_EQ(listed(dialog), "");
        EXPECT_TRUE(child<QLabel>(dialog, "lblCompared").text().endsWith("Both say the same."));
    });
    trigger(form::Tool::Compare);
    EXPECT_EQ(awaited(), 0);
}

TEST_F(CompareTool, KeepsTheDifferencesAsAPageButNeverInPlaceOfTheModel) {
    const fs::path page = scratch.path() / "changes.html";
    dialogs.choices = {form::toQt(other.string()), form::toQt(path()), form::toQt(page.string())};
    const std::string before = bytes();
    whenOpen("frmCompare", [&](QDialog& dialog) {
        click(dialog, "cmdCompareFile");
        click(dialog, "cmdSavePage");
        EXPECT_EQ(bytes(), before);
        ASSERT_EQ(dialogs.texts().size(), 1);
        EXPECT_TRUE(dialogs.texts().first().contains("is the model itself"));
        click(dialog, "cmdSavePage");
    });
    trigger(form::Tool::Compare);
    EXPECT_EQ(awaited(), 0);
    const fs::path printed = scratch.path() / "printed.html";
    static_cast<void>(runGemdb({"diff", other.string(), path(), "--html", printed.string()}));
    EXPECT_EQ(readFile(page), readFile(printed));
}

TEST_F(CompareTool, SaysWhyItCannotCompare) {
    dialogs.choices.push_back("/nowhere/gem.mdb");
    whenOpen("frmCompare", [this](QDialog& dialog) {
        click(dialog, "cmdCompareFile");
        ASSERT_EQ(dialogs.texts().size(), 1);
        EXPECT_TRUE(dialogs.texts().first().contains("/nowhere/gem.mdb"));
        EXPECT_FALSE(child<QPushButton>(dialog, "cmdSavePage").isEnabled());
    });
    trigger(form::Tool::Compare);
    EXPECT_EQ(awaited(), 0);
}

class DocumentTool : public ToolBench {
protected:
    void SetUp() override { open(); }
    [[nodiscard]] fs::path out(const char* name) const { return scratch.path() / name; }

    /// Writes the document with a number, after `fill`; the notes that follow are taken.
    void write(int document, const fs::path& to, const std::function<void(QDialog&)>& fill) {
        dialogs.choices.push_back(form::toQt(to.string()));
        whenOpen("frmDocument", [=, this](QDialog& dialog) {
            child<QComboBox>(dialog, "cmbDocument").setCurrentIndex(document);
            fill(dialog);
            if (document != 0)
                whenOpen("frmLines", [this](QDialog& lines) {
                    notes_ = child<QPlainTextEdit>(lines, "txtLines").toPlainText();
                });
            click(dialog, "cmdWrite");
        });
        trigger(form::Tool::Document);
        EXPECT_EQ(awaited(), 0);
    }
    QString notes_;
};

TEST_F(DocumentTool, WritesTheManualOfTheCommandLine) {
    write(0, out("manual.html"), [](QDialog& dialog) {
        QTest::keyClicks(&child<QLineEdit>(dialog, "txtDocMaker"), "Wet Works");
    });
    ASSERT_EQ(runGemdb({"doc", path(), "-o", out("printed.html"), "--maker", "Wet Works"}).status,
              0);
    EXPECT_EQ(readFile(out("manual.html")), readFile(out("printed.html")));
    EXPECT_TRUE(status().startsWith("Interface manual was written to"));
}

TEST_F(DocumentTool, LeavesTheAnnexOutWhereItIsNotWanted) {
    write(0, out("manual.html"),
          [](QDialog& dialog) { child<QCheckBox>(dialog, "chkDocFindings").setChecked(false); });
    ASSERT_EQ(runGemdb({"doc", path(), "-o", out("printed.html"), "--no-findings"}).status, 0);
    EXPECT_EQ(readFile(out("manual.html")), readFile(out("printed.html")));
}

TEST_F(DocumentTool, WritesTheDictionaryAndListsWhatItCannotTell) {
    write(1, out("model.xml"), [](QDialog& dialog) {
        EXPECT_FALSE(child<QLineEdit>(dialog, "txtDocTitle").isEnabled());
        QTest::keyClicks(&child<QLineEdit>(dialog, "txtDocMaker"), "Wet Works");
    });
    const ProgramRun run =
        runGemdb({"sedd", path(), "-o", out("printed.xml"), "--supplier", "Wet Works"});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(readFile(out("model.xml")), readFile(out("printed.xml")));
    EXPECT_EQ(static_cast<std::size_t>(notes_.split('\n').size()), splitLines(run.err).size());
}

TEST_F(DocumentTool, WritesTheMessages) {
    write(2, out("model.sml"), [](QDialog&) {});
    ASSERT_EQ(runGemdb({"sml", path(), "-o", out("printed.sml")}).status, 0);
    EXPECT_EQ(readFile(out("model.sml")), readFile(out("printed.sml")));
}

TEST_F(DocumentTool, NeverTakesThePlaceOfTheModel) {
    const std::string before = bytes();
    write(0, path(), [](QDialog&) {});
    EXPECT_EQ(bytes(), before);
    ASSERT_EQ(dialogs.texts().size(), 1);
    EXPECT_TRUE(dialogs.texts().first().contains("is the model itself"));
}

}  // namespace
}  // namespace stelvan::test
