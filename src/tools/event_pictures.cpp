#include "tools/event_pictures.h"

#include <QAbstractItemModel>
#include <QBoxLayout>
#include <QEvent>
#include <QFrame>
#include <QScrollArea>
#include <QToolButton>

#include "form/text.h"
#include "model/core/values.h"

namespace stelvan::tools {
namespace {

using enum gem::Control;

constexpr int kIdColumn = 1;  // of lvwRptList
// In characters of usual width.
constexpr int kLeastRoom = 24;
constexpr int kPlenty = 60;

std::optional<std::int64_t> numberIn(const QString& text) {
    return model::wholeNumber(jet::Value(form::toUtf8(text)));
}

}  // namespace

EventPictures::EventPictures(browser::Browser& browser)
    : browser_(browser), window_(browser.window) {
    build();
    connectControls();
    later_.setSingleShot(true);
    later_.setInterval(0);
    connect(&later_, &QTimer::timeout, this, [this] { draw(); });
    fold();
}

void EventPictures::build() {
    QWidget* const lower = window_.form.eventLower;
    button_ = new QToolButton;
    button_->setObjectName(QStringLiteral("cmdPicture"));
    button_->setAutoRaise(true);
    button_->setAccessibleName(QStringLiteral("Picture of the event"));
    button_->setFocusPolicy(Qt::TabFocus);
    button_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    frame_ = new QFrame;
    frame_->setObjectName(QStringLiteral("fraPicture"));
    frame_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Expanding);
    view_ = new PictureView;
    view_->onChosen = [this](const model::PictureBox& box) { goTo(box); };
    auto* const area = new QScrollArea;
    area->setFocusPolicy(Qt::NoFocus);
    area->setBackgroundRole(QPalette::Base);
    area->setAlignment(Qt::AlignCenter);
    area->setWidget(view_);
    auto* const inside = new QVBoxLayout(frame_);
    inside->setContentsMargins(0, 0, 0, 0);
    inside->addWidget(area);
    auto* const row = static_cast<QBoxLayout*>(lower->layout());
    row->addWidget(button_);
    row->addWidget(frame_, 1);
    lower->installEventFilter(this);
}

void EventPictures::connectControls() {
    connect(button_, &QToolButton::clicked, this, [this] { choose(frame_->isHidden()); });
    const form::MainForm& form = window_.form;
    const auto changed = [this] { later_.start(); };
    const QAbstractItemModel* const rows = form.reports.selected->model();
    connect(rows, &QAbstractItemModel::modelReset, this, changed);
    connect(rows, &QAbstractItemModel::rowsInserted, this, changed);
    connect(rows, &QAbstractItemModel::rowsRemoved, this, changed);
    connect(rows, &QAbstractItemModel::dataChanged, this, changed);
    connect(rows, &QAbstractItemModel::layoutChanged, this, changed);
    for (const gem::Control field : {txtEvtID, txtEvtName})
        connect(&form[field], &form::Field::changed, this, changed);
}

bool EventPictures::eventFilter(QObject* watched, QEvent* event) {
    const auto type = event->type();
    if (watched == window_.form.eventLower &&
        (type == QEvent::Resize || type == QEvent::Show || type == QEvent::LayoutRequest))
        fold();
    return QObject::eventFilter(watched, event);
}

void EventPictures::choose(std::optional<bool> open) {
    chosen_ = open;
    fold();
}

void EventPictures::fold() {
    const QWidget& lower = *window_.form.eventLower;
    const int room = lower.width() - window_.form.reports.area->minimumSizeHint().width() -
                     button_->sizeHint().width() - 2 * lower.layout()->spacing();
    const int character = lower.fontMetrics().averageCharWidth();
    const bool fits = room >= kLeastRoom * character;
    const bool open = fits && chosen_.value_or(room >= kPlenty * character);
    button_->setEnabled(fits);
    button_->setArrowType(open ? Qt::RightArrow : Qt::LeftArrow);
    const QString what = !fits  ? QStringLiteral("A wider window has room for the event's picture")
                         : open ? QStringLiteral("Hide the picture of what the event sends")
                                : QStringLiteral("Show what the event sends as a picture");
    button_->setToolTip(what);
    button_->setAccessibleDescription(what);
    if (frame_->isHidden() != open) return;
    frame_->setVisible(open);
    later_.start();
}

void EventPictures::follow(bool editing) {
    view_->setOpen(!editing);
    later_.start();
}

std::optional<ShownEvent> EventPictures::shownEvent() const {
    const form::MainState& state = window_.state;
    const bool shown = state.current.onRecord() || state.editing();
    if (!shown || gem::kindOf(state.category) != gem::Kind::CollectionEvent) return std::nullopt;
    const form::MainForm& form = window_.form;
    const auto id = numberIn(form[txtEvtID].text());
    if (!id && !state.editing()) return std::nullopt;
    ShownEvent event;
    event.part =
        state.category == gem::GEMEVT ? model::Part::StandardEvents : model::Part::CustomEvents;
    event.id = id.value_or(0);
    event.name = form::toUtf8(form[txtEvtName].text());
    if (!state.editing()) return event;
    event.reports.emplace();
    for (const form::ListRow& row : form.reports.selected->rows())
        if (const auto report = numberIn(row.texts.value(kIdColumn)))
            event.reports->push_back(*report);
    return event;
}

void EventPictures::draw() {
    if (frame_->isHidden()) return;
    view_->clear();
    drawn_.reset();
    const auto event = shownEvent();
    if (!event) return;
    try {
        jet::Database database =
            jet::Database::open(window_.operations.path(), jet::Access::ReadOnly);
        drawn_ = std::make_unique<Drawn>(excerptFor(*event, database));
    } catch (const jet::Error&) {
        return;  // whoever shows the record and its lists reports it
    }
    const model::Table& events = drawn_->model[event->part];
    const model::Item item{event->part, &events, &events.rows.front()};
    view_->show(model::pictureOf(item, drawn_->references,
                                 [this](std::string_view text) { return view_->widthOf(text); }));
}

void EventPictures::goTo(const model::PictureBox& box) {
    const model::Item& item = *box.item;
    browser_.jump.show({item.category(), item.idText(), item.row->id});
}

}  // namespace stelvan::tools
