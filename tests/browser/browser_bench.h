// A window with everything up to the browser behind it, on a copy of a sample model; edit mode and
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

#include "browser/category_table.h"
#include "browser/category_tree.h"
#include "browser/grid_view.h"
#include "browser/record_view.h"
#include "checks/value_checks.h"
#include "form/text.h"
#include "tests/support/samples.h"
#include "tests/support/scripted_dialogs.h"

namespace stelvan::test {

class BrowserBench : public ::testing::Test {
protected:
    QMainWindow window;
    form::MainForm form = form::buildForm(window);
    form::MainState state;
    ScriptedDialogs dialogs;
    QStringList failures;
    base::ErrorInfo errors{[this](const std::string& line) { failures << form::toQt(line); }};
    gem::ErrorCatalogue catalogue = gem::lInitErrInfo();
    db::DataSource adoGEM;
    db::Operations operations{errors, state.databasePath, adoGEM, state.current};
    checks::ExceptionBox box{*form.txtErrLog, dialogs, errors, catalogue};
    checks::RecordChecks checks{form, errors, box};
    checks::VariableFormat format{form.var, state, checks};
    links::EventReports eventReports{form.evt, operations};
    links::ReportVariables reportVariables{form.rpt, form.nav, operations};
    links::ListChildren listChildren{form.var, state, operations, dialogs};
    settings::SettingInputs settingInputs{form.stt, state, errors, box, dialogs};
    browser::RecordView view{
        form, state, errors, {eventReports, reportVariables, listChildren}, settingInputs};
    browser::GridView grid{form, state, errors, adoGEM};
    browser::CategoryTable categories;
    browser::CategoryTree tree{form, state, categories, operations, view, grid, format};
    QStringList upward;  // calls of edit mode and control access
    int loads = 0;
    ScratchDir scratch;

    void SetUp() override {
        categories.lInitPropInfo();
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
        state.databasePath = scratch.copyOf(sample(name)).string();
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
