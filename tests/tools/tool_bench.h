// The whole window, and what the tests of its tools do in it.
#pragma once

#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTimer>
#include <QTreeView>
#include <functional>

#include "form/tool_bar.h"
#include "tests/support/run_gemdb.h"
#include "tests/support/window_bench.h"

namespace stelvan::test {

class ToolBench : public WindowBench {
protected:
    [[nodiscard]] QAction* action(form::Tool tool) const {
        return form().aids.tlbModel->action(tool);
    }
    [[nodiscard]] std::string path() const { return state().databasePath; }
    [[nodiscard]] std::string bytes() const { return readFile(path()); }
    [[nodiscard]] QString status() const { return form().statusPanel->text(); }

    template <class Widget>
    [[nodiscard]] static Widget& child(const QWidget& parent, const char* name) {
        auto* const found = parent.findChild<Widget*>(QLatin1String(name));
        if (found == nullptr) throw std::logic_error(std::string("no ") + name);
        return *found;
    }

    /// Chooses a tool, as a click on it does.
    void trigger(form::Tool tool) const {
        ASSERT_TRUE(action(tool)->isEnabled()) << action(tool)->objectName().toStdString();
        action(tool)->trigger();
    }

    /// Works with the next dialog of a name once it is open; it is closed afterwards.
    void whenOpen(const char* name, std::function<void(QDialog&)> work) {
        ++awaited_;
        auto* const timer = new QTimer(window.get());
        timer->setInterval(5);
        QObject::connect(timer, &QTimer::timeout, timer, [this, timer, name, work] {
            auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr || dialog->objectName() != QLatin1String(name)) return;
            timer->stop();
            timer->deleteLater();
            --awaited_;
            work(*dialog);
            if (dialog->isVisible()) dialog->reject();
        });
        timer->start();
    }
    /// How many dialogs were waited for and did not come.
    [[nodiscard]] int awaited() const { return awaited_; }

    static void click(const QDialog& dialog, const char* button) {
        press(&child<QPushButton>(dialog, button));
    }

    /// Changes the file as another program does.
    void changeElsewhere(const std::string& sql) const {
        const ProgramRun run = runGemdb({"sql", path(), sql});
        ASSERT_EQ(run.status, 0) << run.err;
    }

private:
    int awaited_ = 0;
};

}  // namespace stelvan::test
