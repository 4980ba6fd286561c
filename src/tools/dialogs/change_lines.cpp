#include "tools/dialogs/change_lines.h"

#include "form/text.h"
#include "model/compare/change_text.h"
#include "model/compare/plan_differences.h"

namespace stelvan::tools {

ChangeLines::ChangeLines(const model::Model& before, const model::Model& after) {
    model::differences(before, after, [this](model::ItemChange&& change) { take(change); });
}

ChangeLines::ChangeLines(model::WritePlan plan) {
    model::differences(std::move(plan), [this](model::ItemChange&& change) { take(change); });
}

void ChangeLines::take(const model::ItemChange& change) {
    std::string text;
    model::writeChanges({&change, 1}, false, [&](std::string_view piece) { text += piece; });
    if (text.ends_with('\n')) text.pop_back();
    const QStringList lines = form::toQt(text).split(QLatin1Char('\n'));
    if (left_ > 0 || lines_.size() + lines.size() > static_cast<qsizetype>(kMost))
        left_ += static_cast<std::size_t>(lines.size());
    else
        lines_ += lines;
    model::ItemChange& kind = counted_.emplace_back();
    kind.change = change.change;
    kind.part = change.part;
}

QStringList ChangeLines::lines() const {
    if (left_ == 0) return lines_;
    return lines_ + QStringList(QStringLiteral("... and %1 more lines").arg(left_));
}

QString ChangeLines::summary(bool would) const {
    return form::toQt(model::summaryOf(counted_, would));
}

}  // namespace stelvan::tools
