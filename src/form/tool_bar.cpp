#include "form/tool_bar.h"

#include <QAction>
#include <QEvent>
#include <QKeySequence>

#include "form/text.h"
#include "form/tool_icons.h"

namespace stelvan::form {
namespace {

struct ToolFacts {
    const char* name;
    const char* icon;
    const char* text;
    const char* tip;
    const char* key;
    bool endsGroup = false;
};

constexpr std::array<ToolFacts, kTools> kFacts = {{
    {"actBack", "back", "Back", "Back to the record seen before", "Alt+Left"},
    {"actForward", "forward", "Forward", "Forward to the record seen after", "Alt+Right", true},
    {"actDuplicate", "duplicate", "Duplicate", "Add a record like the one shown", "Ctrl+D"},
    {"actUndo", "undo", "Undo", "Undo the last save or delete", "Ctrl+Z", true},
    {"actCheck", "check", "Check", "Check the whole model", "F7"},
    {"actCompare", "compare", "Compare", "Compare the model with another one", "F8", true},
    {"actDocument", "document", "Document", "Write the model as a document", "Ctrl+Shift+D"},
    {"actExport", "export", "Export", "Export the model", "Ctrl+Shift+E"},
    {"actImport", "import", "Import", "Import into the model", "Ctrl+Shift+I"},
}};

}  // namespace

ToolBar::ToolBar(QWidget* parent) : QToolBar(parent) {
    setObjectName(QStringLiteral("tlbModel"));
    setWindowTitle(QStringLiteral("Tools"));
    setAccessibleName(QStringLiteral("Tools"));
    setMovable(false);
    setFloatable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);  // it cannot be hidden by mistake
    setIconSize(QSize(20, 20));
    for (std::size_t index = 0; index < kTools; ++index) addTool(index);
    drawIcons();
    follow();
}

void ToolBar::addTool(std::size_t index) {
    const ToolFacts& facts = kFacts[index];
    Entry& made = entries_[index];
    made.action = addAction(QLatin1String(facts.text));
    made.action->setObjectName(QLatin1String(facts.name));
    made.action->setShortcut(QKeySequence(QLatin1String(facts.key)));
    widgetForAction(made.action)->setAccessibleName(QLatin1String(facts.text));
    showTip(index, QLatin1String(facts.tip));
    connect(made.action, &QAction::triggered, this, [this, index] {
        if (entries_[index].run) entries_[index].run();
    });
    if (facts.endsGroup) addSeparator();
}

void ToolBar::showTip(std::size_t index, const QString& tip) {
    QAction& action = *entries_[index].action;
    const QString whole =
        tip + QStringLiteral(" (%1)").arg(action.shortcut().toString(QKeySequence::NativeText));
    action.setToolTip(asToolTip(whole));
    widgetForAction(&action)->setAccessibleDescription(whole);
}

void ToolBar::setTip(Tool tool, const QString& tip) {
    const auto index = static_cast<std::size_t>(tool);
    showTip(index, tip.isEmpty() ? QString(QLatin1String(kFacts[index].tip)) : tip);
}

void ToolBar::setHook(Tool tool, std::function<void()> run, std::function<bool()> possible) {
    entry(tool).run = std::move(run);
    entry(tool).possible = std::move(possible);
    follow();
}

void ToolBar::follow(bool browsing) {
    browsing_ = browsing;
    for (const Entry& tool : entries_)
        tool.action->setEnabled(browsing && tool.run && tool.possible());
}

void ToolBar::drawIcons() {
    for (std::size_t index = 0; index < kTools; ++index)
        entries_[index].action->setIcon(toolIcon(QLatin1String(kFacts[index].icon), palette()));
}

void ToolBar::changeEvent(QEvent* event) {
    QToolBar::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) drawIcons();
}

}  // namespace stelvan::form
