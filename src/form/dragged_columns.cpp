#include "form/dragged_columns.h"

#include <QAbstractItemModel>
#include <QEvent>
#include <QHeaderView>
#include <algorithm>

namespace stelvan::form {

DraggedColumns::DraggedColumns(QHeaderView& header) : QObject(&header), header_(header) {
    header.viewport()->installEventFilter(this);
    connect(&header, &QHeaderView::sectionResized, this, [this] {
        if (pressed_) note();
    });
}

QString DraggedColumns::key() const {
    QStringList headers;
    for (int c = 0; c < header_.count(); ++c)
        headers << header_.model()->headerData(c, Qt::Horizontal).toString();
    return headers.join(QLatin1Char(' '));
}

void DraggedColumns::note() {
    QVariantList sizes;
    for (int c = 0; c < header_.count(); ++c) sizes << header_.sectionSize(c);
    widths_.insert(key(), sizes);
}

bool DraggedColumns::any() const {
    return header_.count() > 0 && widths_.contains(key());
}

void DraggedColumns::apply() {
    if (!any()) return;
    const QVariantList sizes = widths_.value(key()).toList();
    if (sizes.size() != header_.count()) return;
    for (int c = 0; c < header_.count(); ++c)
        if (!header_.isSectionHidden(c))
            header_.resizeSection(c, std::max(sizes[c].toInt(), header_.minimumSectionSize()));
}

bool DraggedColumns::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress) pressed_ = true;
    if (event->type() == QEvent::MouseButtonRelease) pressed_ = false;
    return QObject::eventFilter(watched, event);
}

}  // namespace stelvan::form
