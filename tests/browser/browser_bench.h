// A window with everything up to the browser behind it, on a copy of a model; edit mode and
// control access, which lie further up, only note their calls.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QStringList>
#include <QTabBar>
#include <QTest>
#include <QTreeWidget>

#include "browser/browser.h"
#include "form/text.h"
#include "tests/support/models.h"
#include "tests/support/scripted_dialogs.h"

namespace stelvan::test {

class BrowserBench : public ::testing::Test {
protected:
    using enum gem::Control;

    QMainWindow window;
    ScriptedDialogs dialogs;
    QStringList failures;
    form::Window main{window, dialogs,
                      [this](const std::string& line) { failures << form::toQt(line); }};
    checks::Checks checks{main};
    links::LinkEditors links{checks};
    settings::SettingInputs settingInputs{checks};
    browser::Browser browser{links, settingInputs};
    form::MainForm& form = main.form;
    form::MainState& state = main.state;
    base::ErrorInfo& errors = main.errors;
    db::Operations& operations = main.operations;
    browser::RecordView& view = browser.records;
    browser::GridView& grid = browser.grid;
    browser::CategoryTree& tree = browser.tree;
    QStringList upward;  // calls of edit mode and control access
    int loads = 0;
    ScratchDir scratch;

    void SetUp() override {
        checks.catalogue = gem::lInitErrInfo();
        tree.buildNodes();
        tree.connectTree();
        tree.lSetEditMode = [this](std::int16_t c, bool editing) {
            upward << QStringLiteral("lSetEditMode %1 %2").arg(c).arg(editing);
        };
        tree.lSetCtrlAccess = [this](std::int16_t c, bool locked) {
            upward << QStringLiteral("lSetCtrlAccess %1 %2").arg(c).arg(locked);
        };
        operations.onLoaded = [this] {
            ++loads;
            view.lUpdateNavigator();
            view.lDisplayField();
        };
        QObject::connect(form.tspData, &QTabBar::currentChanged, &window,
                         [this] { grid.tspData_Click(); });
        window.show();
        QApplication::setActiveWindow(&window);
    }

    void useModel(const std::string& name) {
        state.databasePath = scratch.copyOf(model(name)).string();
    }

    void click(const char* key) { tree.tvwSECSItem_NodeClick(QLatin1String(key)); }

    void moveTo(std::int32_t position) {
        while (state.current.position < position) view.cmdNext_Click();
    }

    /// Steps to the first record with this text in the field; false when there is none.
    bool moveToText(const form::Field& field, const QString& text) {
        for (std::int32_t left = state.current.records->recordCount(); left > 0; --left) {
            if (field.text() == text) return true;
            view.cmdNext_Click();
        }
        return false;
    }

    [[nodiscard]] QString position() const { return form.nav.lblRecNumber->text(); }

    /// Runs a statement on the model, as another program would.
    void execute(const std::string& sql) {
        db::Connection connection;
        connection.setConnectionText(operations.connectionText());
        connection.open();
        connection.execute(sql);
    }
};

}  // namespace stelvan::test
