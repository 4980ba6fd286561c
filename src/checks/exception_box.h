// The "Exception:" box, and the plain complaints beside it.
//
// The box keeps its exact text (lines end in CR LF) as its own string; the control only shows it. A
// line that is chosen leads to what it is about.
#pragma once

#include <QList>
#include <QPointer>
#include <QString>
#include <QWidget>

#include "form/window.h"
#include "gem/error_catalogue.h"

namespace stelvan::checks {

class ExceptionBox {
public:
    /// Both must outlive the object; the catalogue may be filled later.
    ExceptionBox(form::Window& window, const gem::ErrorCatalogue& catalogue);

    /// Appends "[label]: message" and CR LF; nothing is removed. `about` is what the line leads to,
    /// if anything.
    void lLogError(const QString& label, const QString& message, QWidget* about = nullptr);
    /// The same with the catalogue's message for a field's marker. RunTimeError for a marker that
    /// names no slot.
    void logMarker(const QString& label, const QString& marker, QWidget* about = nullptr);

    /// The focus goes to what a line is about, in "Properties"; lines are counted from 0.
    void goTo(int line);

    /// Shows a message box with the exclamation icon; returns when the user closed it.
    void lReportError(const QString& message);

    [[nodiscard]] const QString& text() const { return text_; }
    void clear();

private:
    form::Window& window_;
    const gem::ErrorCatalogue& catalogue_;
    QString text_;
    QList<QPointer<QWidget>> about_;  // line by line
};

}  // namespace stelvan::checks
