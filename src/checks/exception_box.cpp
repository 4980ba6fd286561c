#include "checks/exception_box.h"

#include <QTabBar>

#include "form/text.h"

namespace stelvan::checks {

ExceptionBox::ExceptionBox(form::Window& window, const gem::ErrorCatalogue& catalogue)
    : window_(window), catalogue_(catalogue) {
    form::ErrorLog* const log = window.form.txtErrLog;
    QObject::connect(log, &form::ErrorLog::lineChosen, log, [this](int line) { goTo(line); });
}

void ExceptionBox::lLogError(const QString& label, const QString& message, QWidget* about) {
    base::trap("lLogError", [&] {
        text_ += QLatin1Char('[') + label + QLatin1String("]: ") + message + QLatin1String("\r\n");
        window_.form.txtErrLog->setPlainText(text_);
        about_.resize(window_.form.txtErrLog->blockCount() - 1);  // a message may have more lines
        about_.last() = about;
    });
}

void ExceptionBox::logMarker(const QString& label, const QString& marker, QWidget* about) {
    const gem::ErrorEntry& entry = gem::entryOfMarker(catalogue_, form::toUtf8(marker));
    lLogError(label, form::toQt(entry.message), about);
}

void ExceptionBox::goTo(int line) {
    QWidget* const about = about_.value(line);
    if (about == nullptr) return;
    window_.form.tspData->setCurrentIndex(0);
    about->setFocus(Qt::OtherFocusReason);
}

void ExceptionBox::lReportError(const QString& message) {
    base::trap("lReportError", [&] { window_.dialogs.message(message, form::Icon::Exclamation); });
}

void ExceptionBox::clear() {
    text_.clear();
    about_.clear();
    window_.form.txtErrLog->clear();
}

}  // namespace stelvan::checks
