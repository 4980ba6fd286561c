// The open model as a document: the interface manual, the equipment data dictionary, its messages.
#pragma once

#include <QDialog>
#include <QString>

#include "form/window.h"

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLineEdit;

namespace stelvan::tools {

/// `cmbDocument`; of what it says `txtDocTitle`, `txtDocMaker`, `txtDocModel`, `txtDocVersion`,
/// `chkDocFindings`, as far as the document chosen takes them; `cmdWrite`, `cmdClose`.
class DocumentDialog : public QDialog {
    Q_OBJECT
public:
    /// `window` must outlive the object.
    DocumentDialog(form::Window& window, QWidget* parent);

private:
    void build();
    QLineEdit* addLine(QFormLayout& rows, const char* name, const char* label);
    void follow();
    void write();
    /// What could not be told, a line each.
    [[nodiscard]] QStringList writeTo(const QString& out) const;

    form::Window& window_;
    QComboBox* document_ = nullptr;
    QLineEdit* title_ = nullptr;
    QLineEdit* maker_ = nullptr;
    QLineEdit* model_ = nullptr;
    QLineEdit* version_ = nullptr;
    QCheckBox* findings_ = nullptr;
};

}  // namespace stelvan::tools
