// The dialog of earlier copies, alone and from the first dialog.
#include "app/frm_copies.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <fstream>

#include "app/frm_gem_database.h"
#include "form/text.h"
#include "model/core/sink.h"
#include "tests/support/models.h"
#include "tests/support/scripted_dialogs.h"

namespace stelvan::app {
namespace {

namespace fs = std::filesystem;

class CopiesDialog : public testing::Test {
protected:
    QStringList failures;
    base::ErrorInfo errors{[this](const std::string& line) { failures << form::toQt(line); }};
    test::ScriptedDialogs boxes;
    test::ScratchDir scratch;
    fs::path folder = scratch.path() / "copies";
    fs::path file = scratch.path() / "gem.mdb";
    std::chrono::sys_seconds now{std::chrono::seconds(1'773'479'700)};
    model::KeptCopies kept{folder, [this] { return now; }};

    void SetUp() override {
        for (const char* text : {"first", "second", "third"}) {
            std::ofstream(file) << text;
            if (std::string(text) != "third") (void)kept.keep(file);
            now += std::chrono::hours(1);
        }
    }
    [[nodiscard]] QString path() const { return form::toQt(file.string()); }
    std::unique_ptr<FrmCopies> shown(FrmCopies::Model model = FrmCopies::Model::Free) {
        auto made =
            std::make_unique<FrmCopies>(errors, boxes, path(), form::toQt(folder.string()), model);
        made->show();
        QApplication::setActiveWindow(made.get());
        return made;
    }
    static QTreeWidget& list(const QWidget& dialog) {
        return *dialog.findChild<QTreeWidget*>("lvwCopies");
    }
    static QPushButton& button(const QWidget& dialog, const char* name) {
        return *dialog.findChild<QPushButton*>(name);
    }
    static void choose(const QWidget& dialog, int row) {
        QTreeWidget& copies = list(dialog);
        QTest::mouseClick(copies.viewport(), Qt::LeftButton, {},
                          copies.visualItemRect(copies.topLevelItem(row)).center());
    }
};

TEST_F(CopiesDialog, ListsDateAndSizeTheNewestFirst) {
    const auto dialog = shown();
    QTreeWidget& copies = list(*dialog);
    ASSERT_EQ(copies.topLevelItemCount(), 2);
    EXPECT_EQ(copies.topLevelItem(0)->text(1), "6 bytes");
    EXPECT_EQ(copies.topLevelItem(1)->text(1), "5 bytes");
    EXPECT_TRUE(copies.topLevelItem(0)->text(0).contains("2026"));
    EXPECT_NE(copies.topLevelItem(0)->text(0), copies.topLevelItem(1)->text(0));
    EXPECT_TRUE(button(*dialog, "cmdRestore").isEnabled());
}

TEST_F(CopiesDialog, RestoresTheChosenOneOnceThatIsConfirmed) {
    const auto dialog = shown();
    choose(*dialog, 1);
    QTest::mouseClick(&button(*dialog, "cmdRestore"), Qt::LeftButton);
    ASSERT_EQ(boxes.questions.size(), 1U);
    EXPECT_EQ(model::readWhole(file), "third") << "No changes nothing";
    boxes.answers = {true};
    QTest::mouseClick(&button(*dialog, "cmdRestore"), Qt::LeftButton);
    EXPECT_EQ(model::readWhole(file), "first");
    EXPECT_EQ(model::readWhole(kept.of(file).front().path), "third");
    ASSERT_EQ(boxes.messages.size(), 1U);
    EXPECT_TRUE(boxes.messages.front().text.startsWith(path() + " is again as it was on "));
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(failures, QStringList());
}

TEST_F(CopiesDialog, SaysWhyACopyCannotBeRestored) {
    const auto dialog = shown();
    const std::ifstream open(file);
    boxes.answers = {true};
    QTest::mouseClick(&button(*dialog, "cmdRestore"), Qt::LeftButton);
    ASSERT_EQ(boxes.messages.size(), 1U);
    EXPECT_TRUE(boxes.messages.front().text.startsWith("The copy could not be restored: "));
    EXPECT_TRUE(boxes.messages.front().text.contains("is open in this program"));
    EXPECT_EQ(boxes.messages.front().icon, form::Icon::Exclamation);
    EXPECT_EQ(model::readWhole(file), "third");
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(CopiesDialog, OfAModelThatIsOpenHereOnlyLists) {
    const auto dialog = shown(FrmCopies::Model::OpenHere);
    EXPECT_EQ(list(*dialog).topLevelItemCount(), 2);
    EXPECT_FALSE(button(*dialog, "cmdRestore").isEnabled());
    dialog->cmdRestore_Click();
    EXPECT_TRUE(boxes.questions.empty());
    EXPECT_EQ(model::readWhole(file), "third");
}

TEST_F(CopiesDialog, SaysWhereThereAreNone) {
    fs::remove_all(folder);
    const auto dialog = shown();
    EXPECT_EQ(list(*dialog).topLevelItemCount(), 0);
    EXPECT_TRUE(
        dialog->findChild<QLabel*>("lblCopies")->text().startsWith("There are no copies of "));
    EXPECT_FALSE(button(*dialog, "cmdRestore").isEnabled());
}

class FromTheFirstDialog : public CopiesDialog {
protected:
    /// Presses "Earlier copies..." and hands the dialog that opens to `look`.
    void openCopies(FrmGEMDatabase& first, const std::function<void(FrmCopies&)>& look) {
        bool seen = false;
        QTimer::singleShot(0, &first, [&] {
            auto* const opened = qobject_cast<FrmCopies*>(QApplication::activeModalWidget());
            if (opened == nullptr) return;
            seen = true;
            look(*opened);
            opened->reject();
        });
        QTest::mouseClick(&button(first, "cmdCopies"), Qt::LeftButton);
        EXPECT_TRUE(seen);
    }
    [[nodiscard]] UserMemory memory() const {
        return UserMemory({form::toQt((scratch.path() / "stelvan.ini").string()), QString(),
                           form::toQt(folder.string())});
    }
};

TEST_F(FromTheFirstDialog, TheCopiesOfTheModelInTheFieldAreListed) {
    memory().noteOpened(path());
    FrmGEMDatabase first(errors, boxes, QString(), nullptr, memory());
    first.show();
    QTest::mouseClick(&button(first, "cmdCopies"), Qt::LeftButton);
    ASSERT_EQ(boxes.messages.size(), 1U);
    EXPECT_EQ(boxes.messages.front().text, "Please select the GEM Database!");
    auto& recent = *first.findChild<QTreeWidget*>("lvwRecent");
    QTest::mouseClick(recent.viewport(), Qt::LeftButton, {},
                      recent.visualItemRect(recent.topLevelItem(0)).center());
    openCopies(first, [&](FrmCopies& copies) {
        EXPECT_EQ(list(copies).topLevelItemCount(), 2);
        EXPECT_TRUE(button(copies, "cmdRestore").isEnabled());
        boxes.answers = {true};
        QTest::mouseClick(&button(copies, "cmdRestore"), Qt::LeftButton);
    });
    EXPECT_EQ(model::readWhole(file), "second");
    EXPECT_TRUE(first.isVisible());
}

TEST_F(FromTheFirstDialog, TheModelThatIsOpenIsNotReplaced) {
    FrmGEMDatabase first(errors, boxes, QString(), nullptr, memory());
    fs::create_symlink(file, scratch.path() / "linked.mdb");
    first.setOpenModel(form::toQt((scratch.path() / "linked.mdb").string()));
    first.show();
    first.findChild<QLineEdit*>("txtGEMDatabase")->setText(path());
    openCopies(first, [&](FrmCopies& copies) {
        EXPECT_EQ(list(copies).topLevelItemCount(), 2);
        EXPECT_FALSE(button(copies, "cmdRestore").isEnabled());
    });
}

}  // namespace
}  // namespace stelvan::app
