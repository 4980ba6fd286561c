// A window with all its controls and the checks behind them, but without the commands: what a field
// check does can be seen by typing into a field and leaving it.
#pragma once

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QTest>

#include "checks/checks.h"
#include "form/text.h"
#include "settings/setting_inputs.h"
#include "tests/support/models.h"
#include "tests/support/qt_text.h"
#include "tests/support/scripted_dialogs.h"

namespace stelvan::test {

class CheckBench : public ::testing::Test {
protected:
    using enum gem::Control;

    QMainWindow window;
    ScriptedDialogs dialogs;
    QStringList failures;
    form::Window main{window, dialogs,
                      [this](const std::string& line) { failures << form::toQt(line); }};
    checks::Checks allChecks{main};
    form::MainForm& form = main.form;
    form::MainState& state = main.state;
    base::ErrorInfo& errors = main.errors;
    db::Operations& database = main.operations;
    checks::ExceptionBox& box = allChecks.box;
    checks::RecordChecks& records = allChecks.records;
    checks::VariableFormat& format = allChecks.format;
    checks::FieldChecks& checks = allChecks.fields;
    ScratchDir scratch;

    void SetUp() override {
        allChecks.catalogue = gem::lInitErrInfo();
        checks.connectFields();
        window.show();
        window.activateWindow();
        QApplication::setActiveWindow(&window);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    /// Works on a copy of a sample model.
    void useDatabase(const std::string& modelName) {
        state.databasePath = scratch.copyOf(model(modelName)).string();
    }

    /// Opens every input of a category's frame, as adding and editing do.
    void begin(std::int16_t category, form::EditMode mode) {
        state.category = category;
        state.editMode = mode;
        form.showFrame(frameOf(category));
        QApplication::processEvents();
        for (form::Field* field : form.fields()) {
            field->setLocked(false);
            field->setEnabled(true);
            field->setMarker(QStringLiteral("0"));
        }
        if (gem::isCustomVariable(category)) format.lLoadVarFormat(category);
        checks.beginEdit();
    }

    static int frameOf(std::int16_t category) { return static_cast<int>(gem::kindOf(category)); }

    [[nodiscard]] form::Field& field(const QString& name) const {
        for (form::Field* f : form.fields()) {
            if (f->widget()->objectName() == name) return *f;
        }
        throw std::logic_error("no such field: " + name.toStdString());
    }

    /// Replaces the text of a field by keystrokes.
    static void type(form::Field& field, const QString& text) {
        QWidget* const widget = field.widget();
        widget->setFocus();
        ASSERT_TRUE(widget->hasFocus()) << widget->objectName().toStdString();
        QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(widget, Qt::Key_Delete);
        QTest::keyClicks(widget, text);
    }
    /// Tab, as a user leaves a field.
    static void leave(form::Field& field) {
        field.widget()->setFocus();
        QTest::keyClick(field.widget(), Qt::Key_Tab);
        ASSERT_FALSE(field.widget()->hasFocus()) << field.widget()->objectName().toStdString();
    }
    static void typeAndLeave(form::Field& field, const QString& text) {
        type(field, text);
        leave(field);
    }
    /// Chooses or types a format.
    void chooseFormat(const QString& code) { type(form[cmbVarFormat], code); }

    /// One line of the "Exception:" box.
    static QString line(const QString& caption, const QString& message) {
        return '[' + caption + "]: " + message + "\r\n";
    }
};

}  // namespace stelvan::test
