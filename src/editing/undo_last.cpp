#include "editing/undo_last.h"

#include <QLabel>
#include <algorithm>

#include "form/text.h"
#include "form/tool_bar.h"
#include "model/core/parts.h"

namespace stelvan::editing {
namespace {

std::string_view nounOf(std::int16_t category) {
    const auto all = model::parts();
    const auto part = std::ranges::find(all, gem::kindOf(category), &model::PartFacts::kind);
    return part == all.end() ? std::string_view("record") : part->noun;
}

/// "Save of variable 101" within a sentence.
QString within(const std::string& what) {
    QString text = form::onOneLine(form::toQt(what));
    if (!text.isEmpty()) text[0] = text[0].toLower();
    return text;
}

}  // namespace

void UndoLast::connectTool() {
    window_.form.aids.tlbModel->setHook(
        form::Tool::Undo, [this] { cmdUndo_Click(); }, [this] { return mayUndo(); });
}

void UndoLast::noteDone(const std::string& what, jet::RowChanges changes, db::UnitSubject subject) {
    history_.add(what, std::move(changes), std::move(subject));
    followTool();
}

void UndoLast::noteDone(const char* deed, const browser::RecordAddress& record,
                        jet::RowChanges changes) {
    const std::string noun(nounOf(record.category));
    noteDone(std::string(deed) + " of " + noun + " " + record.id, std::move(changes),
             {record.category, record.id});
}

void UndoLast::cmdUndo_Click() {
    if (!mayUndo()) return;
    const auto before = below_.jump.shown();
    std::optional<db::DoneUnit> undone;
    window_.errors.handle("cmdUndo_Click", [&] {
        if (copy_.mayWrite()) undone = history_.undo(window_.operations.path());
    });
    if (!undone) return;
    followTool();
    show(*undone, before);
    window_.form.statusPanel->setText(QStringLiteral("Undone: %1").arg(within(undone->what)));
}

void UndoLast::show(const db::DoneUnit& undone,
                    const std::optional<browser::RecordAddress>& before) {
    const db::UnitSubject& subject = undone.subject;
    const bool shown = below_.jump.showAnew({subject.category, subject.id, {}});
    if (shown || !before) return;
    // An addition that was taken back has nothing left to show.
    if (subject.category == before->category) {
        below_.jump.show(*before);
    } else if (subject.category == gem::NO_CATEGORY) {
        below_.jump.showAnew(*before);
    }
}

void UndoLast::forget() {
    history_.forget();
    followTool();
}

void UndoLast::followTool() {
    form::ToolBar& tools = *window_.form.aids.tlbModel;
    tools.setTip(form::Tool::Undo,
                 history_.empty() ? QString() : QStringLiteral("Undo ") + within(history_.next()));
    tools.follow();
}

}  // namespace stelvan::editing
