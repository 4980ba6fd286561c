#include "tools/model_check.h"

#include <QLabel>

#include "form/text.h"
#include "gem/kinds.h"
#include "tools/findings/finding_place.h"

namespace stelvan::tools {
namespace {

constexpr int kIntervalMs = 1000;

}  // namespace

ModelCheck::ModelCheck(QMainWindow& shell, browser::Browser& browser)
    : window_(browser.window), browser_(browser), panel_(new FindingsPanel(shell)) {
    panel_->onChosen = [this](const model::Finding& finding) { show(finding); };
    panel_->onStop = [this] { check_.cancel(); };
    check_.onProgress = [this](const QString& what) { panel_->showProgress(what); };
    check_.onDone = [this](CheckRun::Outcome outcome) { done(std::move(outcome)); };
    window_.form.aids.findings = panel_->widget();
    looks_.setInterval(kIntervalMs);
    connect(&looks_, &QTimer::timeout, this, [this] { lookForChange(); });
}

void ModelCheck::run() {
    if (window_.state.editing()) return;
    unmark();
    looks_.stop();
    panel_->begin();
    try {
        database_ = jet::Database::open(window_.operations.path(), jet::Access::ReadOnly);
        const auto unchanged = database_->beginRead();
        moment_ = database_->moment();
        check_.start(database_->copyInMemory());
    } catch (const jet::Error& failure) {
        database_.reset();
        panel_->showFailure(form::toQt(failure.what()));
    }
    onChanged();
}

void ModelCheck::done(CheckRun::Outcome outcome) {
    if (outcome.cancelled) {
        panel_->showFailure(QStringLiteral("The check was stopped; nothing is listed."));
    } else if (!outcome.failure.isEmpty()) {
        panel_->showFailure(outcome.failure);
    } else {
        panel_->showFindings(std::move(outcome.findings));
        looks_.start();
        lookForChange();
    }
    onChanged();
}

void ModelCheck::forget() {
    check_.cancel();
    unmark();
    looks_.stop();
    database_.reset();
    panel_->forget();
}

void ModelCheck::follow(bool editing) {
    panel_->widget()->setEnabled(!editing);
    if (editing) {
        unmark();
    } else {
        lookForChange();
    }
}

void ModelCheck::followDisplay() {
    if (markedRecord_ && browser_.jump.shown() != markedRecord_) unmark();
}

void ModelCheck::lookForChange() {
    if (!database_ || check_.running() || !panel_->hasFindings()) return;
    bool changed = false;
    try {
        changed = database_->moment() != moment_;
        // Another file may stand there by now.
        if (!changed)
            changed =
                jet::Database::open(window_.operations.path(), jet::Access::ReadOnly).moment() !=
                moment_;
    } catch (const jet::Error& failure) {
        // Somebody is at work: to be asked again. Any other failure: it is not what it was.
        changed = failure.kind() != jet::ErrorKind::Locked;
    }
    if (!changed) return;
    looks_.stop();
    panel_->setNotice(QStringLiteral("The file has changed since; check again"));
}

void ModelCheck::show(const model::Finding& finding) {
    if (window_.state.editing()) return;
    window_.errors.handle("lvwFindings_DblClick", [&] {
        lookForChange();
        base::trap("lvwFindings_DblClick",
                   [&] { browser_.index.refresh(window_.operations.path()); });
        const FindingPlace place = placeOf(finding, browser_.index);
        if (!place.item) {
            window_.form.statusPanel->setText(form::toQt(place.whyNowhere));
            return;
        }
        const browser::IndexedItem item = browser_.index.items()[*place.item];
        unmark();
        if (!browser_.jump.show(browser_.jump.addressOf(item))) return;
        markedRecord_ = browser_.jump.shown();
        showControl(place.control, form::toQt(finding.text).trimmed());
    });
}

void ModelCheck::showControl(gem::Control control, const QString& text) {
    const form::MainForm& form = window_.form;
    for (const form::TwoListEditor* editor : form.editors()) {
        form::ListView* const list = editor->selected;
        if (form::toUtf8(list->objectName()) != gem::nameOf(control)) continue;
        if (!list->isVisible()) break;
        markedList_ = list;
        list->pointOut(text);
        return list->setFocus(Qt::OtherFocusReason);
    }
    markedField_ = &fieldFor(control);
    markedField_->pointOut(text);
    markedField_->setFocus();
}

form::Field& ModelCheck::fieldFor(gem::Control control) const {
    // Several may take turns for one column; the first field stands for the whole record, and for
    // what is not shown.
    const auto fields = gem::fieldsOf(window_.state.category);
    const bool isField =
        control != gem::Control::None && window_.form.inputs[gem::indexOf(control)];
    const std::string_view column = isField ? gem::factsOf(control).column : fields.front().column;
    for (const gem::FieldFacts& other : fields) {
        form::Field& field = window_.form[other.control];
        if (other.column == column && field.isVisible()) return field;
    }
    return window_.form[fields.front().control];
}

void ModelCheck::unmark() {
    if (markedField_ != nullptr) markedField_->pointOut(QString());
    if (markedList_ != nullptr) markedList_->pointOut(QString());
    markedField_ = nullptr;
    markedList_ = nullptr;
}

}  // namespace stelvan::tools
