#include "form/field.h"

#include <QAction>
#include <QCheckBox>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QTextDocument>
#include <algorithm>
#include <stdexcept>

#include "base/run_time_error.h"
#include "form/fault_mark.h"
#include "form/inputs.h"
#include "form/pictures.h"
#include "form/text.h"
#include "gem/error_catalogue.h"

namespace stelvan::form {
namespace {

constexpr int kNoLimit = 32767;
const char* const kTag = "Tag";

LineBox* lineOf(QWidget* w) {
    return static_cast<LineBox*>(w);
}
TextBox* textOf(QWidget* w) {
    return static_cast<TextBox*>(w);
}
ComboBox* comboOf(QWidget* w) {
    return static_cast<ComboBox*>(w);
}
QCheckBox* checkOf(QWidget* w) {
    return static_cast<QCheckBox*>(w);
}

Field::Kind kindOf(QWidget* widget) {
    if (qobject_cast<LineBox*>(widget) != nullptr) return Field::Kind::Line;
    if (qobject_cast<TextBox*>(widget) != nullptr) return Field::Kind::Text;
    if (qobject_cast<ComboBox*>(widget) != nullptr) return Field::Kind::Combo;
    if (qobject_cast<QCheckBox*>(widget) != nullptr) return Field::Kind::Check;
    throw std::logic_error("not an input: " + widget->objectName().toStdString());
}

/// The characters of a multi-line widget, one for each break, no-break spaces kept.
QString rawText(const TextBox& box) {
    QString raw = box.document()->toRawText();
    for (QChar& c : raw)
        if (c == QChar(QChar::ParagraphSeparator) || c == QChar(QChar::LineSeparator))
            c = QLatin1Char('\n');
    return raw;
}

/// What the catalogue says of a marker; one that is no code of it is a message itself.
QString messageOf(const QString& marker) {
    static const gem::ErrorCatalogue catalogue = gem::lInitErrInfo();
    try {
        const std::string& message = gem::entryOfMarker(catalogue, toUtf8(marker)).message;
        return message.empty() ? marker : toQt(message).trimmed();
    } catch (const base::RunTimeError&) {
        return marker;
    }
}

bool asksForList(const QKeyEvent& event) {
    return event.key() == Qt::Key_F4
               ? event.modifiers() == Qt::NoModifier
               : event.key() == Qt::Key_Down && event.modifiers().testFlag(Qt::AltModifier);
}

QString withStoredBreaks(const QString& text) {
    QString stored = text;
    return stored.replace(QStringLiteral("\n"), QStringLiteral("\r\n"));
}

/// How many characters of `stored` make up the first `shown` characters of what the widget shows of
/// it: CR LF is one break there.
qsizetype storedLengthOf(const QString& stored, qsizetype shown) {
    qsizetype at = 0;
    for (; shown > 0 && at < stored.size(); --shown)
        at += stored[at] == QLatin1Char('\r') && at + 1 < stored.size() &&
                      stored[at + 1] == QLatin1Char('\n')
                  ? 2
                  : 1;
    return at;
}

}  // namespace

Field::Field(QWidget* widget)
    : QObject(widget), widget_(widget), mark_(new FaultMark(*widget)), kind_(kindOf(widget)) {
    widget_->setProperty(kTag, QStringLiteral("0"));
    widget_->installEventFilter(this);
    switch (kind_) {
        case Kind::Line:
            connectLine();
            break;
        case Kind::Text:
            connect(textOf(widget_), &TextBox::textChanged, this, &Field::noteUserChange);
            break;
        case Kind::Combo:
            connectCombo();
            break;
        case Kind::Check:
            widget_->setAutoFillBackground(true);
            widget_->setBackgroundRole(QPalette::Window);
            connect(checkOf(widget_), &QCheckBox::toggled, this, &Field::noteUserChange);
            break;
    }
    applyLook();
}

void Field::connectLine() {
    connect(lineOf(widget_), &QLineEdit::textChanged, this, [this] {
        if (programmatic_) return;
        cleanInsertedBlanks();
        keepLimit();
        lastLine_ = lineOf(widget_)->text();
        emit changed();
    });
}

void Field::connectCombo() {
    ComboBox* combo = comboOf(widget_);
    if (combo->isEditable()) {
        combo->setCompleter(nullptr);  // it would change the letter case of what is typed
        connect(combo->lineEdit(), &QLineEdit::textEdited, this, [this] {
            if (programmatic_) return;
            typedInto_ = true;
            cleanInsertedBlanks();
            lastLine_ = comboOf(widget_)->lineEdit()->text();
            emit changed();
        });
    }
    connect(combo, &QComboBox::activated, this, [this] {
        typedInto_ = false;
        lastLine_ = comboOf(widget_)->currentText();
        noteUserChange();
        emit chosen();
    });
}

void Field::noteUserChange() {
    if (!programmatic_) emit changed();
}

void Field::cleanInsertedBlanks() {
    QLineEdit* line = kind_ == Kind::Combo ? comboOf(widget_)->lineEdit() : lineOf(widget_);
    const QString now = line->text();
    const Difference same = differenceOf(lastLine_, now);
    const QString inserted = now.mid(same.prefix, now.size() - same.prefix - same.suffix);
    const QString plain = withPlainBlanks(inserted);
    if (plain == inserted) return;
    programmatic_ = true;
    line->setSelection(static_cast<int>(same.prefix), static_cast<int>(inserted.size()));
    line->insert(plain);  // rather than setText: it can be undone
    programmatic_ = false;
}

void Field::keepLimit() {
    LineBox* line = lineOf(widget_);
    const int limit = maxLength_ == 0
                          ? kNoLimit
                          : std::max<int>(maxLength_, static_cast<int>(line->text().size()));
    if (line->maxLength() == limit) return;
    const bool before = programmatic_;
    programmatic_ = true;
    const int cursor = line->cursorPosition();
    line->setMaxLength(limit);
    line->setCursorPosition(cursor);
    programmatic_ = before;
}

QString Field::text() const {
    switch (kind_) {
        case Kind::Line:
            return lineOf(widget_)->text();
        case Kind::Text:
            return multiLineText();
        case Kind::Combo:
            return comboOf(widget_)->currentText();
        case Kind::Check:
            break;
    }
    return checked() ? QStringLiteral("1") : QStringLiteral("0");
}

void Field::setText(const QString& text) {
    programmatic_ = true;
    switch (kind_) {
        case Kind::Line:
            lineOf(widget_)->setMaxLength(kNoLimit);
            lineOf(widget_)->setText(text);
            lineOf(widget_)->setCursorPosition(0);
            lastLine_ = text;
            keepLimit();
            break;
        case Kind::Text:
            showMultiLine(text);
            break;
        case Kind::Combo:
            setComboText(text);
            break;
        case Kind::Check:
            checkOf(widget_)->setChecked(text == QStringLiteral("1"));
            break;
    }
    programmatic_ = false;
}

void Field::setComboText(const QString& text) {
    ComboBox* combo = comboOf(widget_);
    const QSignalBlocker quiet(combo);
    const int entry = combo->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    // The hint first: taking an old one away would choose the first entry where none is chosen.
    if (!combo->isEditable()) combo->setPlaceholderText(entry < 0 ? text : QString());
    combo->setCurrentIndex(entry);
    if (combo->isEditable()) {
        combo->setEditText(text);
        lastLine_ = text;
    }
    typedInto_ = false;
}

QString Field::multiLineText() const {
    const QString now = rawText(*textOf(widget_));
    if (now == shown_) return original_;
    const Difference same = differenceOf(shown_, now);
    const qsizetype head = storedLengthOf(original_, same.prefix);
    const qsizetype tail = storedLengthOf(original_, shown_.size() - same.suffix);
    const QString typed = now.mid(same.prefix, now.size() - same.prefix - same.suffix);
    return original_.left(head) + withStoredBreaks(typed) + original_.mid(tail);
}

void Field::showMultiLine(const QString& text) {
    textOf(widget_)->replaceText(text);
    original_ = text;
    shown_ = rawText(*textOf(widget_));
}

bool Field::checked() const {
    return kind_ == Kind::Check && checkOf(widget_)->isChecked();
}

void Field::setChecked(bool on) {
    setText(on ? QStringLiteral("1") : QStringLiteral("0"));
}

bool Field::isLocked() const {
    return kind_ == Kind::Check ? !isEnabled() : locked_;
}

void Field::setLocked(bool locked) {
    locked_ = locked;
    switch (kind_) {
        case Kind::Line:
            lineOf(widget_)->setReadOnly(locked);
            break;
        case Kind::Text:
            textOf(widget_)->setLocked(locked);
            break;
        case Kind::Combo:
            comboOf(widget_)->setLocked(locked);
            break;
        case Kind::Check:
            setEnabled(!locked);
            break;
    }
    applyMark();
}

bool Field::isEnabled() const {
    return widget_->isEnabled();
}

void Field::setEnabled(bool enabled) {
    widget_->setEnabled(enabled);
    applyMark();
}

void Field::setColour(Colour colour) {
    colour_ = colour;
    applyLook();
}

void Field::applyLook() {
    if (choice_ != nullptr)
        choice_->setIcon(downArrow(QGuiApplication::palette().color(QPalette::Text)));
    if (kind_ == Kind::Check) {
        applyColour(*widget_, colour_, {QPalette::Window, QPalette::WindowText});
    } else if (kind_ == Kind::Combo && !comboOf(widget_)->isEditable()) {
        applyColour(*widget_, colour_, {QPalette::Button, QPalette::ButtonText});
    } else {
        applyColour(*widget_, colour_, {QPalette::Base, QPalette::Text});
    }
}

QString Field::marker() const {
    return widget_->property(kTag).toString();
}

void Field::setMarker(const QString& code) {
    widget_->setProperty(kTag, code);
    applyMark();
}

void Field::pointOut(const QString& why) {
    pointedOut_ = why;
    applyMark();
}

QString Field::faultShown() const {
    return mark_->message();
}

void Field::applyMark() {
    // A closed field cannot be mended, and keeps its marker until the next edit begins.
    mark_->setMessage(hasException() && isOpen() ? messageOf(marker()) : pointedOut_);
    if (choice_ != nullptr) choice_->setVisible(isOpen());
}

void Field::setDescription(const QString& text) {
    mark_->setDescription(text);
}

void Field::offerChoice(const QString& what) {
    choice_ = lineOf(widget_)->addAction(QIcon(), QLineEdit::TrailingPosition);
    choice_->setObjectName(QStringLiteral("choice"));
    choice_->setToolTip(what);
    connect(choice_, &QAction::triggered, this, &Field::choiceWanted);
    applyLook();
    applyMark();
}

void Field::setMaxLength(int characters) {
    maxLength_ = characters;
    if (kind_ == Kind::Line) keepLimit();
    if (kind_ == Kind::Text) textOf(widget_)->setMaxLength(characters);
}

void Field::setEntries(const QStringList& entries) {
    ComboBox* combo = comboOf(widget_);
    const QString shown = combo->currentIndex() < 0 && !combo->isEditable()
                              ? combo->placeholderText()
                              : combo->currentText();
    const QSignalBlocker quiet(combo);
    combo->clear();
    combo->addItems(entries);
    setComboText(shown);
}

QStringList Field::entries() const {
    QStringList all;
    for (int i = 0; i < comboOf(widget_)->count(); ++i) all << comboOf(widget_)->itemText(i);
    return all;
}

QString Field::hint() const {
    if (kind_ == Kind::Line) return lineOf(widget_)->placeholderText();
    if (kind_ == Kind::Text) return textOf(widget_)->placeholderText();
    return kind_ == Kind::Combo ? comboOf(widget_)->placeholderText() : QString();
}

bool Field::isVisible() const {
    return !widget_->isHidden();
}

void Field::setVisible(bool visible) {
    widget_->setVisible(visible);
}

void Field::setFocus() {
    widget_->setFocus(Qt::OtherFocusReason);
}

void Field::leave() {
    if (kind_ == Kind::Combo && typedInto_) {
        typedInto_ = false;
        emit chosen();
    }
    emit lostFocus();
}

bool Field::eventFilter(QObject* watched, QEvent* event) {
    if (watched == widget_ && event->type() == QEvent::KeyPress && choice_ != nullptr && isOpen() &&
        asksForList(static_cast<const QKeyEvent&>(*event))) {
        emit choiceWanted();
        return true;
    }
    if (watched == widget_ && event->type() == QEvent::PaletteChange) applyLook();
    return QObject::eventFilter(watched, event);
}

}  // namespace stelvan::form
