#include "app/form/form_rows.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>

#include "app/form/inputs.h"

namespace stelvan::form {
namespace {

constexpr int kLabelColumn = 0;
constexpr int kInputColumn = 1;
constexpr int kGapBetweenPairs = 18;

QString spoken(QString label) {
    return label.remove(QLatin1Char('&'));
}

QScrollArea* scrollPage(QWidget* page) {
    auto* area = new QScrollArea;
    area->setWidget(page);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->viewport()->setBackgroundRole(QPalette::Window);
    page->setBackgroundRole(QPalette::Window);
    return area;
}

}  // namespace

FormRows::FormRows(QGroupBox& frame) : page_(new QWidget), grid_(new QGridLayout(page_)) {
    auto* whole = new QVBoxLayout(&frame);
    whole->setContentsMargins(2, 2, 2, 2);
    whole->addWidget(scrollPage(page_));
    grid_->setColumnStretch(kInputColumn, 1);
    grid_->setHorizontalSpacing(10);
    grid_->setVerticalSpacing(8);
}

Field* FormRows::add(QWidget* input, const char* name, const QString& label) {
    input->setObjectName(QLatin1String(name));
    input->setAccessibleName(spoken(label));
    auto* caption = new QLabel(label);
    caption->setObjectName(QStringLiteral("lbl") + QString::fromLatin1(name).mid(3));
    caption->setBuddy(input);
    const bool tall = qobject_cast<TextBox*>(input) != nullptr;
    const bool widest = input->sizePolicy().horizontalPolicy() == QSizePolicy::Expanding;
    if (row_ != nullptr && row_->count() > 0) {
        row_->addSpacing(kGapBetweenPairs);
        row_->addWidget(caption);
    } else {
        grid_->addWidget(caption, next_, kLabelColumn,
                         tall ? Qt::AlignLeft | Qt::AlignTop : Qt::AlignLeft | Qt::AlignVCenter);
    }
    if (row_ != nullptr) {
        row_->addWidget(input, widest ? 1 : 0);
    } else {
        if (tall) grid_->setRowStretch(next_, 1);
        grid_->addWidget(input, next_++, kInputColumn, widest ? Qt::Alignment() : Qt::AlignLeft);
    }
    return new Field(input);
}

Field* FormRows::line(const char* name, const QString& label, int characters) {
    return add(new LineBox(characters), name, label);
}

Field* FormRows::text(const char* name, const QString& label, int lines) {
    return add(new TextBox(lines), name, label);
}

Field* FormRows::combo(const char* name, const QString& label) {
    auto* box = new ComboBox;
    box->setEditable(true);
    return add(box, name, label);
}

Field* FormRows::check(const char* name, const QString& caption) {
    auto* box = new QCheckBox(caption);
    box->setObjectName(QLatin1String(name));
    box->setAccessibleName(spoken(caption));
    grid_->addWidget(box, next_++, kInputColumn, Qt::AlignLeft);
    return new Field(box);
}

void FormRows::beginRow() {
    row_ = new QHBoxLayout;
    row_->setSpacing(10);
}

void FormRows::endRow() {
    row_->addStretch(0);
    grid_->addLayout(row_, next_++, kInputColumn);
    row_ = nullptr;
}

QHBoxLayout* FormRows::sharedRow(const QString& label, QWidget* buddy) {
    auto* caption = new QLabel(label);
    caption->setObjectName(QStringLiteral("lbl") + buddy->objectName().mid(3));
    caption->setBuddy(buddy);
    grid_->addWidget(caption, next_, kLabelColumn, Qt::AlignLeft | Qt::AlignVCenter);
    auto* row = new QHBoxLayout;
    row->setSpacing(10);
    grid_->addLayout(row, next_++, kInputColumn);
    return row;
}

void FormRows::below(QLayout* layout) {
    grid_->setRowStretch(next_, 3);
    grid_->addLayout(layout, next_++, kLabelColumn, 1, 2);
}

void FormRows::fillUp() {
    grid_->setRowStretch(next_++, 1);
}

}  // namespace stelvan::form
