#include "browser/used_in.h"

#include <QMenu>
#include <QToolButton>
#include <algorithm>

#include "form/text.h"
#include "model/core/values.h"

namespace stelvan::browser {
namespace {

constexpr int kPauseMs = 50;
constexpr int kMostListed = 100;

struct RoleWords {
    Role role;
    const char* phrase;
    const char* one;
    const char* many;
};
constexpr RoleWords kWords[] = {{Role::InReport, "in", "report", "reports"},
                                {Role::InList, "in", "list", "lists"},
                                {Role::HoldsChild, "list of", "variable", "variables"},
                                {Role::SetsAlarm, "set event of", "alarm", "alarms"},
                                {Role::ClearsAlarm, "clear event of", "alarm", "alarms"},
                                {Role::SentByEvent, "sent by", "event", "events"}};

QString counted(const RoleWords& words, std::ptrdiff_t count) {
    return QStringLiteral("%1 %2 %3")
        .arg(QLatin1String(words.phrase))
        .arg(count)
        .arg(QLatin1String(count == 1 ? words.one : words.many));
}

bool canBeUsed(std::int16_t category) {
    const gem::Kind kind = gem::kindOf(category);
    return kind == gem::Kind::Variable || kind == gem::Kind::CollectionEvent ||
           kind == gem::Kind::Report;
}

}  // namespace

UsedIn::UsedIn(form::Window& window, RecordJump& jump, ModelIndex& index)
    : window_(window), jump_(jump), index_(index) {
    later_.setSingleShot(true);
    later_.setInterval(kPauseMs);
    connect(&later_, &QTimer::timeout, this, [this] {
        try {
            index_.refresh(window_.operations.path());
        } catch (const jet::Error&) {
            return;  // a file that cannot be read is reported where records are shown
        }
        lookUp();
    });
    connect(window_.form.aids.lblUsedIn, &QToolButton::clicked, this, [this] { list(); });
}

void UsedIn::display(const std::optional<RecordAddress>& shown) {
    shown_ = shown;
    refresh();
}

void UsedIn::follow(bool editing) {
    const bool gone = shown_ && !window_.state.current.onRecord();
    if (gone) shown_.reset();
    if (!gone && editing == editing_) return;
    editing_ = editing;
    refresh();
}

void UsedIn::refresh() {
    uses_.clear();
    later_.stop();
    window_.form.aids.lblUsedIn->setText(QString());
    window_.form.aids.lblUsedIn->setEnabled(false);
    if (editing_ || !shown_ || !canBeUsed(shown_->category)) return;
    if (index_.isFresh(window_.operations.path())) {
        lookUp();
    } else {
        later_.start();
    }
}

void UsedIn::lookUp() {
    const auto id = model::wholeNumber(jet::Value(shown_->id));
    if (!id) return;
    uses_ = index_.usesOf(shown_->category, *id);
    say();
}

void UsedIn::say() {
    QStringList parts;
    for (const RoleWords& words : kWords)
        if (const auto count = std::ranges::count(uses_, words.role, &Use::role))
            parts << counted(words, count);
    QToolButton& label = *window_.form.aids.lblUsedIn;
    const QString where =
        parts.isEmpty() ? QStringLiteral("nowhere") : parts.join(QStringLiteral(", "));
    label.setText(QStringLiteral("Used: ") + where);
    label.setEnabled(!uses_.empty());
}

void UsedIn::list() {
    if (uses_.empty()) return;
    QToolButton& label = *window_.form.aids.lblUsedIn;
    auto* const menu = new QMenu(&label);
    menu->setObjectName(QStringLiteral("mnuUsedIn"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const RoleWords& words : kWords) {
        const auto count = std::ranges::count(uses_, words.role, &Use::role);
        if (count == 0) continue;
        menu->addSection(counted(words, count));
        addUsers(*menu, words.role);
    }
    menu->popup(label.mapToGlobal(QPoint(0, label.height())));
}

void UsedIn::addUsers(QMenu& menu, Role role) const {
    int listed = 0;
    int left = 0;
    for (const Use& use : uses_) {
        if (use.role != role) continue;
        if (listed == kMostListed) {
            ++left;
            continue;
        }
        ++listed;
        const IndexedItem& user = index_.items()[use.user];
        const RecordAddress address = jump_.addressOf(user);
        const std::string name(index_.nameOf(user));
        QString text = form::toQt(address.id + "  " + name);
        text = form::onOneLine(text).replace(QLatin1Char('&'), QLatin1String("&&"));
        menu.addAction(text, &menu, [this, address] { jump_.show(address); });
    }
    if (left > 0) menu.addAction(QStringLiteral("and %1 more").arg(left))->setEnabled(false);
}

}  // namespace stelvan::browser
