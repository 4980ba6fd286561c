#include "checks/exception_box.h"

#include <QPlainTextEdit>

#include "form/text.h"

namespace stelvan::checks {

ExceptionBox::ExceptionBox(form::Window& window, const gem::ErrorCatalogue& catalogue)
    : window_(window), catalogue_(catalogue) {}

void ExceptionBox::lLogError(const QString& label, const QString& message) {
    base::trap("lLogError", [&] {
        text_ += QLatin1Char('[') + label + QLatin1String("]: ") + message + QLatin1String("\r\n");
        window_.form.txtErrLog->setPlainText(text_);
    });
}

void ExceptionBox::logMarker(const QString& label, const QString& marker) {
    lLogError(label, form::toQt(gem::entryOfMarker(catalogue_, form::toUtf8(marker)).message));
}

void ExceptionBox::lReportError(const QString& message) {
    base::trap("lReportError", [&] { window_.dialogs.message(message, form::Icon::Exclamation); });
}

void ExceptionBox::clear() {
    text_.clear();
    window_.form.txtErrLog->clear();
}

}  // namespace stelvan::checks
