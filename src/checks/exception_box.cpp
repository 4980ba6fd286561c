#include "checks/exception_box.h"

#include <QPlainTextEdit>

#include "form/dialogs.h"
#include "form/text.h"

namespace stelvan::checks {

ExceptionBox::ExceptionBox(QPlainTextEdit& txtErrLog, form::Dialogs& dialogs,
                           base::ErrorInfo& errors, const gem::ErrorCatalogue& catalogue)
    : txtErrLog_(txtErrLog), dialogs_(dialogs), errors_(errors), catalogue_(catalogue) {}

void ExceptionBox::lLogError(const QString& label, const QString& message) {
    errors_.trap("lLogError", [&] {
        text_ += QLatin1Char('[') + label + QLatin1String("]: ") + message + QLatin1String("\r\n");
        txtErrLog_.setPlainText(text_);
    });
}

void ExceptionBox::logMarker(const QString& label, const QString& marker) {
    lLogError(label, form::toQt(gem::entryOfMarker(catalogue_, form::toUtf8(marker)).message));
}

void ExceptionBox::lReportError(const QString& message) {
    errors_.trap("lReportError", [&] { dialogs_.message(message, form::Icon::Exclamation); });
}

void ExceptionBox::clear() {
    text_.clear();
    txtErrLog_.clear();
}

}  // namespace stelvan::checks
