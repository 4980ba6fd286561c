#include "form/frames.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace stelvan::form {

void TwoListEditor::showPool(bool show) const {
    QWidget* const side[] = {pool, poolLabel, poolFilter, select, deselect, orderUp, orderDown};
    for (QWidget* widget : side) widget->setVisible(show);
    area->setVisible(show || !selected->isHidden());
}

void TwoListEditor::showSelected(bool show) const {
    selected->setVisible(show);
    selectedLabel->setVisible(show);
    area->setVisible(show || !pool->isHidden());
}

QList<Field*> MainForm::fields() const {
    return frames->findChildren<Field*>();
}

void MainForm::clearInputs() const {
    for (Field* field : fields()) field->setText(QString());
    for (const TwoListEditor* editor : {&var.children, &rpt.variables, &evt.reports}) {
        editor->pool->clearRows();
        editor->selected->clearRows();
    }
}

}  // namespace stelvan::form
