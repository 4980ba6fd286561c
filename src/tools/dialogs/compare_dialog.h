// The open model beside another one: a gem.mdb, or a folder of texts. What differs is listed, and
// can be kept as a page.
#pragma once

#include <QDialog>
#include <QString>
#include <vector>

#include "form/window.h"
#include "model/compare/differences.h"

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace stelvan::tools {

/// `cmdCompareFile`, `cmdCompareFolder`, `lblCompared`, `txtDifferences`, `cmdSavePage` (open once
/// something was compared), `cmdClose`.
class CompareDialog : public QDialog {
    Q_OBJECT
public:
    /// `window` must outlive the object.
    CompareDialog(form::Window& window, QWidget* parent);

    /// Lists what has to be done to `other` to make it the open model.
    void compareWith(const QString& other);

private:
    void chooseFile();
    void chooseFolder();
    void savePage();
    void build();

    form::Window& window_;
    QString other_;  // empty until something was compared
    QLabel* compared_ = nullptr;
    QPlainTextEdit* lines_ = nullptr;
    QPushButton* page_ = nullptr;
};

}  // namespace stelvan::tools
