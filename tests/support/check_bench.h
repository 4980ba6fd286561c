// A window with all its controls and the checks behind them, but without the commands: what a field
// check does can be seen by typing into a field and leaving it.
#pragma once

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QTest>

#include "checks/field_checks.h"
#include "form/focus_watch.h"
#include "form/text.h"
#include "settings/setting_inputs.h"
#include "tests/support/qt_text.h"
#include "tests/support/samples.h"
#include "tests/support/scripted_dialogs.h"

namespace stelvan::test {

class CheckBench : public ::testing::Test {
protected:
    QMainWindow window;
    form::MainForm form = form::buildForm(window);
    form::MainState state;
    ScriptedDialogs dialogs;
    QStringList failures;
    base::ErrorInfo errors{[this](const std::string& line) { failures << form::toQt(line); }};
    gem::ErrorCatalogue catalogue = gem::lInitErrInfo();
    db::DataSource adoGEM;
    db::Operations database{errors, state.databasePath, adoGEM, state.current};
    checks::ExceptionBox box{*form.txtErrLog, dialogs, errors, catalogue};
    checks::RecordChecks records{form, errors, box};
    checks::VariableFormat format{form.var, state, records};
    checks::ValueChecks values{form.var, errors, format};
    checks::FieldChecks checks{form, state, database, records, format, values};
    form::FocusWatch focusWatch{window, *form.nav.cmdSave, *form.nav.cmdCancel};
    ScratchDir scratch;

    void SetUp() override {
        checks.connectFields();
        window.show();
        window.activateWindow();
        QApplication::setActiveWindow(&window);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    /// Works on a copy of a sample model.
    void useDatabase(const std::string& sampleName) {
        state.databasePath = scratch.copyOf(sample(sampleName)).string();
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
        if (form::isCustomVariable(category)) format.lLoadVarFormat(category);
        checks.beginEdit();
    }

    static int frameOf(std::int16_t category) {
        if (form::isVariable(category)) return 1;
        if (category == form::CSTALM) return 2;
        if (category == form::CSTEVT || category == form::GEMEVT) return 3;
        return category == form::GEMSTT ? 5 : 6;
    }

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
    void chooseFormat(const QString& code) { type(*form.var.cmbVarFormat, code); }

    /// One line of the "Exception:" box.
    static QString line(const QString& caption, const QString& message) {
        return '[' + caption + "]: " + message + "\r\n";
    }
};

}  // namespace stelvan::test
