// What is remembered from one start to the next, in a settings file of the test's own.
#include "app/user_memory.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QHeaderView>
#include <QSplitter>
#include <QTest>
#include <fstream>

#include "app/frm_main.h"
#include "form/text.h"
#include "tests/support/models.h"
#include "tests/support/scripted_dialogs.h"

namespace stelvan::app {
namespace {

class UserMemoryTest : public testing::Test {
protected:
    [[nodiscard]] QString at(const char* name) const {
        return form::toQt((scratch.path() / name).string());
    }
    [[nodiscard]] UserPlaces places() const { return {at("stelvan.ini"), at("demo")}; }
    QString modelIn(const char* folder) {
        std::filesystem::create_directories(scratch.path() / folder);
        std::ofstream(scratch.path() / folder / "gem.mdb") << "x";
        return at(folder) + "/gem.mdb";
    }
    [[nodiscard]] QStringList recent() const {
        QStringList paths;
        for (const RecentModel& model : UserMemory(places()).recentModels()) paths << model.path;
        return paths;
    }

    test::ScratchDir scratch;
    test::ScriptedDialogs dialogs;
};

TEST_F(UserMemoryTest, TheModelOpenedLastComesFirstAndEachOnce) {
    const QString a = modelIn("a");
    const QString b = modelIn("b");
    const UserMemory memory(places());
    EXPECT_TRUE(recent().isEmpty());
    memory.noteOpened(a);
    memory.noteOpened(b);
    EXPECT_EQ(recent(), (QStringList{b, a}));
    memory.noteOpened(a);
    EXPECT_EQ(recent(), (QStringList{a, b}));
    EXPECT_LT(memory.recentModels().front().opened.secsTo(QDateTime::currentDateTime()), 60);
    memory.noteOpened(at("none/gem.mdb"));
    EXPECT_EQ(recent(), (QStringList{a, b}));
}

TEST_F(UserMemoryTest, TenModelsAreRemembered) {
    const UserMemory memory(places());
    for (int i = 0; i < 12; ++i) memory.noteOpened(modelIn(std::to_string(i).c_str()));
    EXPECT_EQ(recent().size(), 10);
    EXPECT_EQ(recent().front(), at("11/gem.mdb"));
    EXPECT_EQ(recent().back(), at("2/gem.mdb"));
}

TEST_F(UserMemoryTest, WithoutAPlaceNothingIsKept) {
    const UserMemory memory({});
    memory.noteOpened(modelIn("a"));
    EXPECT_TRUE(memory.recentModels().empty());
    EXPECT_TRUE(std::filesystem::exists(scratch.path() / "a" / "gem.mdb"));
}

TEST_F(UserMemoryTest, ADamagedFileIsForgotten) {
    std::ofstream(scratch.path() / "stelvan.ini") << "[\x01\xff broken\nrecentModels\\size=9\n";
    EXPECT_TRUE(recent().isEmpty());
    FrmMain window(dialogs, QString(), places());
    window.show();
    EXPECT_TRUE(window.isVisible());
}

TEST_F(UserMemoryTest, AModelThatTheWindowOpensIsRemembered) {
    const QString path = form::toQt(scratch.copyOf(test::model("gem.mdb")).string());
    FrmMain window(dialogs, QString(), places());
    window.start(path);
    EXPECT_EQ(recent(), QStringList{path});
}

TEST_F(UserMemoryTest, TheWindowStandsAsItStoodWithItsDividersAndColumns) {
    const QRect wanted(10, 20, 770, 560);
    QList<int> tree;
    {
        FrmMain window(dialogs, QString(), places());
        window.show();
        window.setGeometry(wanted);
        window.window().form.splTree->setSizes({150, 560});
        QCoreApplication::processEvents();
        tree = window.window().form.splTree->sizes();
        window.window().form.reports.pool->draggedColumns().setWidths(
            {{"Name ID", QVariantList{77, 55}}});
        window.close();
    }
    FrmMain again(dialogs, QString(), places());
    again.show();
    QCoreApplication::processEvents();
    EXPECT_EQ(again.geometry(), wanted);
    EXPECT_EQ(again.window().form.splTree->sizes(), tree);
    form::ListView& pool = *again.window().form.reports.pool;
    pool.setHeaders({"Name", "ID"});
    pool.setWidths({1, -10});
    EXPECT_EQ(pool.columnWidth(0), 77);
    EXPECT_EQ(pool.columnWidth(1), 55);
}

}  // namespace
}  // namespace stelvan::app
