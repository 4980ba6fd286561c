// The check of the whole model, from the command to the field at fault.
//
// It looks at the file as it was when the command was given. What changes it afterwards, here or
// elsewhere, is said beside the findings; they still lead to their records.
#pragma once

#include <QObject>
#include <QTimer>
#include <optional>

#include "browser/browser.h"
#include "tools/findings/check_run.h"
#include "tools/findings/findings_panel.h"

namespace stelvan::tools {

class ModelCheck : public QObject {
    Q_OBJECT
public:
    /// Both must outlive the object; `shell` gets the panel.
    ModelCheck(QMainWindow& shell, browser::Browser& browser);

    /// Begins a check; one that goes on is given up. Only while browsing.
    void run();
    /// Another database: nothing of the old one is listed or looked for.
    void forget();
    /// A record is about to be shown, or adding or editing has begun or ended. It does not look at
    /// the record: one that is gone must be reported by whoever displays it.
    void follow(bool editing);
    /// A record has been displayed: a mark at another one goes.
    void followDisplay();

    /// What can or cannot be done has changed.
    std::function<void()> onChanged = [] {};
    [[nodiscard]] bool running() const { return check_.running(); }

private:
    void done(CheckRun::Outcome outcome);
    void show(const model::Finding& finding);
    void showControl(gem::Control control, const QString& text);
    [[nodiscard]] form::Field& fieldFor(gem::Control control) const;
    void unmark();
    void lookForChange();

    form::Window& window_;
    browser::Browser& browser_;
    FindingsPanel* panel_;
    std::optional<jet::Database> database_;  // keeps the count of moments going
    std::uint64_t moment_ = 0;               // of the file that was looked at
    // What a finding has led to, for as long as it is on screen.
    std::optional<browser::RecordAddress> markedRecord_;
    form::Field* markedField_ = nullptr;
    form::ListView* markedList_ = nullptr;
    QTimer looks_;
    CheckRun check_;  // last: it ends before what it reports to
};

}  // namespace stelvan::tools
