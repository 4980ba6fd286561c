#include "form/form_rows.h"

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <algorithm>

#include "form/inputs.h"

namespace stelvan::form {
namespace {

constexpr int kLabelColumn = 0;
constexpr int kInputColumn = 1;
constexpr int kSecondLabelColumn = 2;
constexpr int kSecondInputColumn = 3;
constexpr int kColumns = 4;
constexpr int kGapBetweenPairs = 4;
constexpr int kSpacing = 10;

bool takesAllWidth(const QWidget& input) {
    return input.sizePolicy().horizontalPolicy() == QSizePolicy::Expanding;
}

Qt::Alignment labelAlignment(const QWidget& input) {
    const bool tall = qobject_cast<const TextBox*>(&input) != nullptr;
    return Qt::AlignLeft | (tall ? Qt::AlignTop : Qt::AlignVCenter);
}

QString spoken(QString label) {
    return label.remove(QLatin1Char('&'));
}

/// As wide as its page needs, and as low as there is room. The input that has the focus stays in
/// sight.
class PageArea : public QScrollArea {
public:
    explicit PageArea(QWidget* page) {
        setWidget(page);
        setWidgetResizable(true);
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        viewport()->setBackgroundRole(QPalette::Window);
        page->setBackgroundRole(QPalette::Window);
        page->installEventFilter(this);
        // By itself it follows the focus only where its own Tab handling moved it.
        connect(qApp, &QApplication::focusChanged, this,
                [this](QWidget*, QWidget* to) { show(to); });
    }

    [[nodiscard]] QSize minimumSizeHint() const override {
        const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
        const QScreen* const screen = QGuiApplication::primaryScreen();
        // With letters so large that a page is wider than the screen, it scrolls all the same.
        const int most =
            screen == nullptr ? QWIDGETSIZE_MAX : screen->availableSize().width() / 4 * 3;
        QSize hint = QScrollArea::minimumSizeHint();
        hint.setWidth(std::min(widget()->minimumSizeHint().width() + bar, most));
        return hint;
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == widget() && event->type() == QEvent::LayoutRequest) updateGeometry();
        return QScrollArea::eventFilter(watched, event);
    }
    void resizeEvent(QResizeEvent* event) override {
        QScrollArea::resizeEvent(event);
        show(QApplication::focusWidget());
    }

private:
    void show(QWidget* focused) {
        if (focused != nullptr && widget()->isAncestorOf(focused)) ensureWidgetVisible(focused);
    }
};

}  // namespace

FormRows::FormRows(QGroupBox& frame, MainForm& form)
    : form_(form), page_(new QWidget), grid_(new QGridLayout(page_)) {
    auto* whole = new QVBoxLayout(&frame);
    whole->setContentsMargins(2, 2, 2, 2);
    whole->addWidget(new PageArea(page_));
    grid_->setColumnStretch(kInputColumn, 1);
    grid_->setHorizontalSpacing(kSpacing);
    grid_->setVerticalSpacing(8);
}

void FormRows::add(QWidget* input, gem::Control name, const QString& label) {
    form_.add(name, input);
    input->setAccessibleName(spoken(label));
    auto* caption = new QLabel(label);
    caption->setObjectName(QStringLiteral("lbl") + input->objectName().mid(3));
    caption->setBuddy(input);
    if (inRow_) {
        row_.push_back({caption, input});
    } else {
        place({caption, input}, kColumns - 1);
        ++next_;
    }
}

void FormRows::place(const Labelled& first, int span) {
    grid_->addWidget(first.label, next_, kLabelColumn, labelAlignment(*first.input));
    grid_->addWidget(first.input, next_, kInputColumn, 1, span,
                     takesAllWidth(*first.input) ? Qt::Alignment() : Qt::AlignLeft);
}

void FormRows::line(gem::Control name, const QString& label, int characters) {
    add(new LineBox(characters), name, label);
}

void FormRows::text(gem::Control name, const QString& label, int lines) {
    add(new TextBox(lines), name, label);
}

void FormRows::combo(gem::Control name, const QString& label) {
    auto* box = new ComboBox;
    box->setEditable(true);
    add(box, name, label);
}

void FormRows::check(gem::Control name, const QString& caption) {
    auto* box = new QCheckBox(caption);
    form_.add(name, box);
    box->setAccessibleName(spoken(caption));
    grid_->addWidget(box, next_++, kInputColumn, 1, kColumns - 1, Qt::AlignLeft);
}

void FormRows::beginRow() {
    row_.clear();
    inRow_ = true;
}

void FormRows::endRow() {
    inRow_ = false;
    if (row_.size() == 2) {
        place(row_[0], 1);
        row_[1].label->setContentsMargins(kSpacing, 0, 0, 0);
        grid_->addWidget(row_[1].label, next_, kSecondLabelColumn);
        grid_->addWidget(row_[1].input, next_, kSecondInputColumn);
    } else {
        placeRow();
    }
    ++next_;
}

void FormRows::placeRow() {
    auto* inputs = new QHBoxLayout;
    inputs->setSpacing(kSpacing);
    grid_->addWidget(row_.front().label, next_, kLabelColumn, labelAlignment(*row_.front().input));
    for (const Labelled& one : row_) {
        if (inputs->count() > 0) {
            inputs->addSpacing(kGapBetweenPairs);
            inputs->addWidget(one.label);
        }
        inputs->addWidget(one.input, takesAllWidth(*one.input) ? 1 : 0);
    }
    inputs->addStretch(0);
    grid_->addLayout(inputs, next_, kInputColumn, 1, kColumns - 1);
}

QHBoxLayout* FormRows::sharedRow(const QString& label, QWidget* buddy) {
    auto* caption = new QLabel(label);
    caption->setObjectName(QStringLiteral("lbl") + buddy->objectName().mid(3));
    caption->setBuddy(buddy);
    grid_->addWidget(caption, next_, kLabelColumn, Qt::AlignLeft | Qt::AlignVCenter);
    auto* row = new QHBoxLayout;
    row->setSpacing(kSpacing);
    grid_->addLayout(row, next_++, kInputColumn, 1, kColumns - 1);
    return row;
}

void FormRows::beside(QWidget* text) {
    grid_->addWidget(text, next_++, kInputColumn, 1, kColumns - 1);
}

void FormRows::below(QWidget* area) {
    QSizePolicy kept = area->sizePolicy();
    kept.setRetainSizeWhenHidden(true);
    area->setSizePolicy(kept);
    grid_->addWidget(area, next_++, kLabelColumn, 1, kColumns);
}

void FormRows::fillUp() {
    grid_->setRowStretch(next_++, 1);
}

}  // namespace stelvan::form
