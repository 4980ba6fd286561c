// The slim tool bar under the menus: what can be done with the model besides editing one record.
//
// Each tool is an action with a picture, a key and a tool tip; its text is what a screen reader
// says. A tool without anything behind it is disabled, and so are all of them while a record is
// being added or edited.
#pragma once

#include <QToolBar>
#include <array>
#include <functional>

namespace stelvan::form {

enum class Tool { Back, Forward, Duplicate, Undo, Check, Compare, Document, Export, Import };
inline constexpr std::size_t kTools = 9;

class ToolBar : public QToolBar {
    Q_OBJECT
public:
    explicit ToolBar(QWidget* parent = nullptr);

    /// objectName "actBack", "actForward", ...
    [[nodiscard]] QAction* action(Tool tool) const { return entry(tool).action; }

    /// What a tool does, and whether it can do it now. Both must not throw.
    void setHook(
        Tool tool, std::function<void()> run, std::function<bool()> possible = [] { return true; });

    /// What a tool is about to do, in place of its own words: "Undo save of variable 101"; its key
    /// is added. Empty: its own words again.
    void setTip(Tool tool, const QString& tip);

    /// Enables what can act now: nothing unless `browsing`.
    void follow(bool browsing);
    /// The same as before, after what is possible has changed.
    void follow() { follow(browsing_); }

protected:
    void changeEvent(QEvent* event) override;

private:
    struct Entry {
        QAction* action = nullptr;
        std::function<void()> run;
        std::function<bool()> possible;
    };
    [[nodiscard]] Entry& entry(Tool tool) { return entries_[static_cast<std::size_t>(tool)]; }
    [[nodiscard]] const Entry& entry(Tool tool) const {
        return entries_[static_cast<std::size_t>(tool)];
    }
    void addTool(std::size_t index);
    void showTip(std::size_t index, const QString& tip);
    void drawIcons();

    std::array<Entry, kTools> entries_;
    bool browsing_ = true;
};

}  // namespace stelvan::form
