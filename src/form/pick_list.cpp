#include "form/pick_list.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

namespace stelvan::form {
namespace {

constexpr int kLines = 14;
constexpr int kLetters = 48;
constexpr int kMargin = 4;

bool movesInList(int key) {
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp ||
           key == Qt::Key_PageDown;
}

}  // namespace

PickList::PickList(QWidget& owner)
    : QFrame(&owner, Qt::Popup), txtPickFind_(new QLineEdit), lvwPick_(new ListView) {
    setObjectName(QStringLiteral("pickList"));
    setFrameShape(QFrame::StyledPanel);
    txtPickFind_->setObjectName(QStringLiteral("txtPickFind"));
    txtPickFind_->setPlaceholderText(QStringLiteral("Find…"));
    txtPickFind_->setAccessibleName(QStringLiteral("Find"));
    lvwPick_->setObjectName(QStringLiteral("lvwPick"));
    lvwPick_->setAccessibleName(QStringLiteral("Choices"));
    lvwPick_->setFocusPolicy(Qt::NoFocus);  // the keys stay with what is typed
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->setSpacing(kMargin);
    column->addWidget(txtPickFind_);
    column->addWidget(lvwPick_, 1);
    setFocusProxy(txtPickFind_);
    txtPickFind_->installEventFilter(this);
    connect(txtPickFind_, &QLineEdit::textChanged, lvwPick_, &ListView::setNarrowing);
    connect(lvwPick_, &QTreeView::clicked, this, &PickList::choose);
}

void PickList::open(const QWidget& below, const QStringList& headers,
                    const std::vector<int>& widths, const std::vector<ListRow>& rows,
                    int selected) {
    lvwPick_->setAccessibleName(below.accessibleName());
    lvwPick_->setHeaders(headers);
    lvwPick_->setRows(rows);
    txtPickFind_->clear();
    place(below);
    show();
    lvwPick_->setWidths(widths);
    if (selected >= 0) lvwPick_->selectRow(selected);
    txtPickFind_->setFocus(Qt::PopupFocusReason);
}

void PickList::place(const QWidget& below) {
    const int wanted = kLetters * fontMetrics().averageCharWidth();
    resize(std::max(below.width(), wanted), kLines * (fontMetrics().height() + kMargin));
    const QRect screen = below.screen()->availableGeometry();
    QPoint at = below.mapToGlobal(QPoint(0, below.height()));
    if (at.y() + height() > screen.bottom()) at.setY(below.mapToGlobal(QPoint()).y() - height());
    at.setX(std::clamp(at.x(), screen.left(), std::max(screen.left(), screen.right() - width())));
    move(at.x(), std::max(at.y(), screen.top()));
}

void PickList::choose() {
    const int row = lvwPick_->selectedRow();
    if (row < 0) return;
    const QStringList texts = lvwPick_->row(row).texts;
    close();
    emit chosen(texts);
}

bool PickList::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QFrame::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (movesInList(key)) {
        QApplication::sendEvent(lvwPick_, event);
    } else if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        choose();
    } else if (key == Qt::Key_Escape) {
        close();
    } else {
        return QFrame::eventFilter(watched, event);
    }
    return true;
}

}  // namespace stelvan::form
