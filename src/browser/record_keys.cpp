#include "browser/record_keys.h"

#include <QAction>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTableView>
#include <QTreeWidget>

#include "browser/go_to_id.h"

namespace stelvan::browser {

RecordKeys::RecordKeys(form::Window& window, RecordView& records, RecordJump& jump, FindBox& find,
                       ModelIndex& index)
    : window_(window), records_(records), jump_(jump), find_(find), index_(index), areas_(window) {}

void RecordKeys::add(const char* name, const QList<QKeySequence>& keys, When when,
                     std::function<void()> run) {
    QWidget* const shell = window_.form.tvwSECSItem->window();
    auto* const action = new QAction(this);
    action->setObjectName(QLatin1String(name));
    action->setShortcuts(keys);
    connect(action, &QAction::triggered, this, std::move(run));
    shell->addAction(action);
    if (when == When::Browsing) browsing_.push_back(action);
}

void RecordKeys::addMoves() {
    const auto addMove = [this](const char* name, int key,
                                const std::function<void(std::int32_t count)>& run) {
        const QKeySequence keys(Qt::CTRL | static_cast<Qt::Key>(key));
        moveKeys_ << keys;
        add(name, {keys}, When::Browsing, [this, run] { move(run); });
    };
    addMove("actFirst", Qt::Key_Home, [this](std::int32_t) { records_.showRecord(1); });
    addMove("actLast", Qt::Key_End, [this](std::int32_t count) { records_.showRecord(count); });
    addMove("actPrevious", Qt::Key_PageUp, [this](std::int32_t) { records_.cmdPrevious_Click(); });
    addMove("actNext", Qt::Key_PageDown, [this](std::int32_t) { records_.cmdNext_Click(); });
}

void RecordKeys::install() {
    addMoves();
    add("actGoToID", {QKeySequence(Qt::CTRL | Qt::Key_G)}, When::Browsing, [this] { goToId(); });
    add("actFind", {QKeySequence(Qt::CTRL | Qt::Key_F)}, When::Browsing, [this] { find_.begin(); });
    add("actNextArea", {QKeySequence(Qt::Key_F6)}, When::Always, [this] { areas_.walk(false); });
    add("actPreviousArea", {QKeySequence(Qt::SHIFT | Qt::Key_F6)}, When::Always,
        [this] { areas_.walk(true); });
    add("actOtherTab",
        {QKeySequence(Qt::CTRL | Qt::Key_Tab), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab),
         QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab)},
        When::Browsing, [this] {
            QTabBar& tabs = *window_.form.tspData;
            tabs.setCurrentIndex(1 - tabs.currentIndex());
        });
    window_.form.DBGridGEM->installEventFilter(this);
    window_.form.txtErrLog->installEventFilter(this);
    for (const form::Field* field : window_.form.fields())
        field->widget()->installEventFilter(this);
}

void RecordKeys::follow(bool editing) {
    for (QAction* const action : browsing_) action->setEnabled(!editing);
}

void RecordKeys::move(const std::function<void(std::int32_t count)>& step) {
    const std::int32_t count = window_.state.current.count();
    if (window_.state.editing() || count == 0) return;
    if (window_.form.tspData->currentIndex() == 0) step(count);
}

void RecordKeys::goToId() {
    if (window_.state.editing() || window_.operations.path().empty()) return;
    QWidget* const shell = window_.form.tvwSECSItem->window();
    (new GoToId(jump_, index_, window_, shell))->open();
}

bool RecordKeys::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && !window_.state.editing()) {
        const auto& pressed = static_cast<const QKeyEvent&>(*event);
        if (moveKeys_.contains(QKeySequence(pressed.keyCombination()))) {
            // Accepted, the key goes to the widget itself; else to the record.
            event->setAccepted(watched == window_.form.DBGridGEM);
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace stelvan::browser
