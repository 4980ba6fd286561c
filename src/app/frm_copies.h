// The dialog with the earlier copies of one model, of which one can be put back in its place.
#pragma once

#include <QDialog>
#include <QString>
#include <vector>

#include "base/error_info.h"
#include "form/dialogs.h"
#include "model/core/kept_copies.h"

class QPushButton;
class QTreeWidget;

namespace stelvan::app {

class FrmCopies : public QDialog {
    Q_OBJECT
public:
    enum class Model { Free, OpenHere };

    /// The copies of the model at `path` that lie below `folder`. Of one that is open here they are
    /// only listed. References must outlive the object.
    FrmCopies(base::ErrorInfo& errors, form::Dialogs& boxes, QString path, const QString& folder,
              Model model, QWidget* parent = nullptr);

    /// Puts the selected copy in the model's place, once the user has confirmed it.
    void cmdRestore_Click();

private:
    void buildControls();
    void fillCopies();
    void restore(const model::KeptCopy& copy, const QString& date);
    [[nodiscard]] QString summary() const;

    base::ErrorInfo& errors_;
    form::Dialogs& boxes_;
    QString path_;
    model::KeptCopies kept_;
    Model model_;
    std::vector<model::KeptCopy> copies_;
    QTreeWidget* lvwCopies_ = nullptr;
    QPushButton* cmdRestore_ = nullptr;
};

}  // namespace stelvan::app
