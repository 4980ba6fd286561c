#include "tools/dialogs/guarded.h"

#include <QGuiApplication>

#include "form/text.h"
#include "model/core/refusal.h"
#include "tools/dialogs/lines_dialog.h"

namespace stelvan::tools {
namespace {

QStringList linesOf(const model::Refusal& refusal) {
    QStringList lines;
    for (const std::string& line : refusal.lines()) lines << form::toQt(line);
    return lines;
}

}  // namespace

Busy::Busy() {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

Busy::~Busy() {
    QGuiApplication::restoreOverrideCursor();
}

bool guarded(form::Window& window, QWidget& parent, const QString& title,
             const std::function<void()>& body) {
    try {
        body();
        return true;
    } catch (const model::Refusal& refusal) {
        const QStringList lines = linesOf(refusal);
        if (lines.size() == 1)
            window.dialogs.message(lines.front(), form::Icon::Exclamation, title);
        else
            showLines({title, QStringLiteral("This cannot be done; nothing was changed:"), lines},
                      &parent);
    } catch (const std::exception& failure) {
        window.dialogs.message(form::toQt(failure.what()), form::Icon::Exclamation, title);
    }
    return false;
}

}  // namespace stelvan::tools
