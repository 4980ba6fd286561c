// "Go to ID": a small window that takes an identifier and shows the record that has it, of the
// present category first, then of its kind, then of any, in the order of the tree.
#pragma once

#include <QDialog>

#include "browser/record_jump.h"

class QLabel;
class QLineEdit;

namespace stelvan::browser {

class GoToId : public QDialog {
    Q_OBJECT
public:
    /// All must outlive the dialog, which `parent` owns.
    GoToId(RecordJump& jump, ModelIndex& index, const form::Window& window, QWidget* parent);

    /// The record with this identifier; nothing where there is none. Throws jet::Error.
    [[nodiscard]] std::optional<RecordAddress> find(const QString& id) const;

private:
    void go();

    RecordJump& jump_;
    ModelIndex& index_;
    const form::Window& window_;
    QLineEdit* txtGoToID_;
    QLabel* lblGoToID_;
};

}  // namespace stelvan::browser
