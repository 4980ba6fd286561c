#include "tools/picture/picture_view.h"

#include <QEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScrollArea>
#include <cmath>

#include "base/text.h"
#include "form/look.h"
#include "form/text.h"

namespace stelvan::tools {
namespace {

using model::PictureBox;
using Kind = PictureBox::Kind;

constexpr double kLine = 18;  // units of a text line
constexpr double kCorner = 6;
constexpr double kTextLeft = 12;
constexpr double kBetween = 8;  // from the identifier to the name

QString nounOf(Kind kind) {
    switch (kind) {
        case Kind::Event:
            return QStringLiteral("event");
        case Kind::Report:
            return QStringLiteral("report");
        case Kind::Variable:
            return QStringLiteral("variable");
        case Kind::More:
            break;
    }
    return QString();
}

/// The whole name, where the box shows a part of it.
QString nameOf(const PictureBox& box) {
    if (box.kind == Kind::More || !box.item) return form::toQt(box.name);
    return form::onOneLine(form::toQt(box.item->name()));
}

QString spoken(const PictureBox& box) {
    QStringList words = {nounOf(box.kind), form::toQt(box.id), nameOf(box)};
    words.removeAll(QString());
    return words.join(QLatin1Char(' '));
}

QColor mixed(const QColor& one, const QColor& other, double share) {
    const auto part = [share](int a, int b) { return static_cast<int>(a + (b - a) * share); };
    return {part(one.red(), other.red()), part(one.green(), other.green()),
            part(one.blue(), other.blue())};
}

QColor groundOf(const PictureBox& box, const QPalette& palette) {
    const QColor base = palette.color(QPalette::Base);
    if (!box.item) return base;
    const QColor accent = palette.color(QPalette::Active, QPalette::Highlight);
    if (box.kind == Kind::Event) return mixed(base, accent, 0.32);
    if (box.kind == Kind::Report) return mixed(base, accent, 0.14);
    return base;
}

}  // namespace

class PictureBoxButton : public QAbstractButton {
public:
    PictureBoxButton(PictureView& view, std::size_t at, const PictureBox& box)
        : QAbstractButton(&view), view_(view), at_(at), box_(box) {
        setObjectName(QStringLiteral("box%1").arg(at));
        setAccessibleName(spoken(box));
        setToolTip(form::asToolTip(spoken(box)));
        setFocusPolicy(Qt::ClickFocus);
        setAttribute(Qt::WA_Hover);
        if (leads()) setCursor(Qt::PointingHandCursor);
        connect(this, &QAbstractButton::clicked, this, [this] {
            if (leads() && view_.open_) {
                const PictureBox chosen = box_;  // the picture may be replaced by what follows
                view_.onChosen(chosen);
            }
        });
    }

    [[nodiscard]] const PictureBox& box() const { return box_; }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const double unit = view_.unit();
        const QPalette& colours = view_.palette();
        const bool strong = hasFocus() || (underMouse() && leads());
        QColor border =
            box_.item ? mixed(colours.color(QPalette::Text), colours.color(QPalette::Base), 0.55)
                      : form::faultColour(colours);
        if (strong) border = colours.color(QPalette::Active, QPalette::Highlight);
        const double thick = strong ? 2 : 1;
        painter.setPen(QPen(border, thick, box_.item ? Qt::SolidLine : Qt::DashLine));
        const QColor ground = groundOf(box_, colours);
        painter.setBrush(ground);
        const double half = thick / 2;
        painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half), kCorner * unit,
                                kCorner * unit);
        drawText(painter, unit, ground);
    }

    void keyPressEvent(QKeyEvent* event) override {
        switch (event->key()) {
            case Qt::Key_Left:
            case Qt::Key_Right:
            case Qt::Key_Up:
            case Qt::Key_Down:
            case Qt::Key_Home:
            case Qt::Key_End:
                return view_.step(at_, event->key());
            case Qt::Key_Return:
            case Qt::Key_Enter:
                return click();
            default:
                QAbstractButton::keyPressEvent(event);
        }
    }

    void focusInEvent(QFocusEvent* event) override {
        QAbstractButton::focusInEvent(event);
        view_.makeCurrent(at_);
    }

private:
    [[nodiscard]] bool leads() const { return box_.item && box_.kind != Kind::Event; }

    void drawText(QPainter& painter, double unit, const QColor& ground) const {
        const QColor text = view_.palette().color(QPalette::Text);
        const QColor quiet = form::readable(mixed(text, ground, 0.3), ground);
        QRectF room = QRectF(rect()).adjusted(kTextLeft * unit, 0, 0, 0);
        if (!box_.id.empty()) {
            const QString id = form::toQt(box_.id);
            painter.setPen(quiet);
            painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft, id);
            room.setLeft(room.left() + painter.fontMetrics().horizontalAdvance(id) +
                         kBetween * unit);
        }
        painter.setPen(!box_.item || box_.kind == Kind::More ? quiet : text);
        painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft, form::toQt(box_.name));
    }

    PictureView& view_;
    std::size_t at_;
    PictureBox box_;
};

PictureView::PictureView(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("picEvent"));
    setAccessibleName(QStringLiteral("Picture of the event"));
}

double PictureView::unit() const {
    return fontMetrics().height() / kLine;
}

int PictureView::widthOf(std::string_view text) const {
    return static_cast<int>(std::ceil(fontMetrics().horizontalAdvance(form::toQt(text)) / unit()));
}

void PictureView::show(model::EventPicture picture) {
    qDeleteAll(boxes_);
    boxes_.clear();
    picture_ = std::move(picture);
    for (std::size_t at = 0; at < picture_.boxes.size(); ++at)
        boxes_.push_back(new PictureBoxButton(*this, at, picture_.boxes[at]));
    placeBoxes();
    if (boxes_.empty()) {
        setAccessibleDescription(QString());
    } else {
        boxes_.front()->setFocusPolicy(Qt::StrongFocus);
        setAccessibleDescription(form::toQt(base::counted(picture_.reports, "report") + ", " +
                                            base::counted(picture_.variables, "variable")));
    }
    for (PictureBoxButton* box : boxes_) box->show();
    update();
}

void PictureView::clear() {
    show(model::EventPicture{});
}

void PictureView::setOpen(bool open) {
    open_ = open;
}

void PictureView::placeBoxes() {
    const double scale = unit();
    for (PictureBoxButton* button : boxes_) {
        const PictureBox& box = button->box();
        button->setGeometry(
            QRectF(box.x * scale, box.y * scale, box.width * scale, box.height * scale)
                .toAlignedRect());
    }
    const QSize size(static_cast<int>(std::ceil(picture_.width * scale)) + 1,
                     static_cast<int>(std::ceil(picture_.height * scale)) + 1);
    setFixedSize(picture_.boxes.empty() ? QSize(1, 1) : size);
}

void PictureView::makeCurrent(std::size_t box) {
    for (PictureBoxButton* one : boxes_) one->setFocusPolicy(Qt::ClickFocus);
    boxes_.at(box)->setFocusPolicy(Qt::StrongFocus);
}

/// Up and down in the order of reading; left to what a box hangs on, right to what hangs on it.
void PictureView::step(std::size_t from, int key) {
    const auto columnOf = [this](std::size_t at) { return boxes_[at]->box().x; };
    const bool forwards = key == Qt::Key_Right || key == Qt::Key_Down || key == Qt::Key_End;
    std::size_t to = from;
    if (key == Qt::Key_Home) to = 0;
    if (key == Qt::Key_End) to = boxes_.size() - 1;
    const bool sideways = key == Qt::Key_Left || key == Qt::Key_Right;
    if (key == Qt::Key_Up || key == Qt::Key_Down || sideways) {
        const auto fits = [&](std::size_t at) {
            if (!sideways) return columnOf(at) == columnOf(from);
            return forwards ? columnOf(at) > columnOf(from) : columnOf(at) < columnOf(from);
        };
        for (std::size_t at = from; forwards ? ++at < boxes_.size() : at-- > 0;)
            if (fits(at)) {
                to = at;
                break;
            }
    }
    makeCurrent(to);
    boxes_[to]->setFocus(forwards ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    for (QWidget* above = parentWidget(); above != nullptr; above = above->parentWidget())
        if (auto* area = qobject_cast<QScrollArea*>(above)) {
            area->ensureWidgetVisible(boxes_[to]);
            break;
        }
}

void PictureView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double scale = unit();
    QPainterPath lines;
    for (const model::PictureLine& line : picture_.lines) {
        const QPointF from = QPointF(line.fromX, line.fromY) * scale;
        const QPointF to = QPointF(line.toX, line.toY) * scale;
        const double middle = (from.x() + to.x()) / 2;
        lines.moveTo(from);
        lines.cubicTo({middle, from.y()}, {middle, to.y()}, to);
    }
    painter.setPen(
        QPen(mixed(palette().color(QPalette::Text), palette().color(QPalette::Base), 0.55), 1.2));
    painter.drawPath(lines);
}

void PictureView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) placeBoxes();
}

}  // namespace stelvan::tools
