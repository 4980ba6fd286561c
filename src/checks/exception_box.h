// The "Exception:" box, and the plain complaints beside it.
//
// The box keeps its exact text (lines end in CR LF) as its own string; the control only shows it.
#pragma once

#include <QString>

#include "base/error_info.h"
#include "gem/error_catalogue.h"

class QPlainTextEdit;

namespace stelvan::form {
class Dialogs;
}

namespace stelvan::checks {

class ExceptionBox {
public:
    /// All of them must outlive the object; the catalogue may be filled later.
    ExceptionBox(QPlainTextEdit& txtErrLog, form::Dialogs& dialogs, base::ErrorInfo& errors,
                 const gem::ErrorCatalogue& catalogue);

    /// Appends "[label]: message" and CR LF; nothing is removed.
    void lLogError(const QString& label, const QString& message);
    /// The same with the catalogue's message for a field's marker. RunTimeError for a marker that
    /// names no slot: it belongs to the caller's trap.
    void logMarker(const QString& label, const QString& marker);

    /// Shows a message box with the exclamation icon; returns when the user closed it.
    void lReportError(const QString& message);

    [[nodiscard]] const QString& text() const { return text_; }
    void clear();

private:
    QPlainTextEdit& txtErrLog_;
    form::Dialogs& dialogs_;
    base::ErrorInfo& errors_;
    const gem::ErrorCatalogue& catalogue_;
    QString text_;
};

}  // namespace stelvan::checks
