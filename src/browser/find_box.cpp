#include "browser/find_box.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTreeWidget>
#include <algorithm>

#include "form/text.h"

namespace stelvan::browser {
namespace {

constexpr std::size_t kMost = 500;

}  // namespace

FindBox::FindBox(form::Window& window, RecordJump& jump, ModelIndex& index)
    : window_(window), jump_(jump), index_(index) {
    texts_.setSingleShot(true);
    texts_.setInterval(0);
    connect(&texts_, &QTimer::timeout, this, [this] { lookIntoTexts(); });
}

void FindBox::connectControls() {
    const form::Aids& aids = window_.form.aids;
    aids.txtFind->installEventFilter(this);
    aids.lvwFound->installEventFilter(this);
    connect(aids.txtFind, &QLineEdit::textChanged, this, [this] { look(); });
    connect(aids.lvwFound, &form::ListView::rowActivated, this, [this] { showSelected(); });
}

void FindBox::follow(bool editing) {
    window_.form.aids.txtFind->setEnabled(!editing);
    window_.form.aids.lvwFound->setEnabled(!editing);
}

void FindBox::begin() {
    QLineEdit& find = *window_.form.aids.txtFind;
    if (!find.isEnabled()) return;
    find.setFocus(Qt::ShortcutFocusReason);
    find.selectAll();
}

void FindBox::end() {
    window_.form.aids.txtFind->clear();
}

void FindBox::look() {
    texts_.stop();
    found_.clear();
    query_ = foldedQuery(form::toUtf8(window_.form.aids.txtFind->text()));
    say(QString());
    const bool looking = !query_.empty();
    if (looking) {
        try {
            index_.refresh(window_.operations.path());
            found_ = search(index_, query_, kMost);
            moment_ = index_.moment();
            if (found_.size() < kMost) texts_.start();
        } catch (const jet::Error& failure) {
            say(form::toQt(failure.what()));
        }
    }
    list();
    window_.form.aids.lvwFound->setVisible(looking);
    window_.form.tvwSECSItem->setVisible(!looking);
}

void FindBox::lookIntoTexts() {
    if (moment_ != index_.moment()) return look();
    const std::size_t before = found_.size();
    try {
        // A file that has changed meanwhile is looked through from the beginning.
        if (!searchTexts(index_, query_, kMost, found_)) return look();
    } catch (const jet::Error& failure) {
        say(form::toQt(failure.what()));
    }
    if (found_.size() == before) return;
    form::ListView& view = *window_.form.aids.lvwFound;
    const int selected = view.selectedRow();
    list();
    view.selectRow(std::max(selected, 0));
}

void FindBox::list() {
    std::vector<form::ListRow> rows;
    rows.reserve(found_.size());
    listed_.clear();
    for (const Match& match : found_) {
        const IndexedItem& item = index_.items()[match.item];
        const QString id = item.id == kNoId ? QString() : QString::number(item.id);
        rows.push_back({{form::toQt(gem::categoryAt(item.category).caption), id,
                         form::toQt(index_.nameOf(item))}});
        listed_.push_back(jump_.addressOf(item));
    }
    window_.form.aids.lvwFound->setRows(rows);
}

void FindBox::say(const QString& failure) {
    const QString usual = QStringLiteral("Find a record of any category (Ctrl+F)");
    window_.form.aids.txtFind->setToolTip(failure.isEmpty() ? usual : form::asToolTip(failure));
    if (!failure.isEmpty()) window_.form.statusPanel->setText(failure);
}

void FindBox::showSelected() {
    const int row = window_.form.aids.lvwFound->selectedRow();
    if (row < 0 || static_cast<std::size_t>(row) >= listed_.size()) return;
    const RecordAddress address = listed_[static_cast<std::size_t>(row)];
    jump_.show(address);
}

bool FindBox::key(QObject* watched, int key) {
    form::ListView& found = *window_.form.aids.lvwFound;
    switch (key) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            showSelected();
            return true;
        case Qt::Key_Escape:
            end();
            window_.form.tvwSECSItem->setFocus(Qt::OtherFocusReason);
            return true;
        case Qt::Key_Down:
        case Qt::Key_Up:
            if (watched == &found || found.rowCount() == 0) return false;
            found.selectRow(std::clamp(found.selectedRow() + (key == Qt::Key_Down ? 1 : -1), 0,
                                       found.rowCount() - 1));
            return true;
        default:
            return false;
    }
}

bool FindBox::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && key(watched, static_cast<QKeyEvent*>(event)->key()))
        return true;
    return QObject::eventFilter(watched, event);
}

}  // namespace stelvan::browser
