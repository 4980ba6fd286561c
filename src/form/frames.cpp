#include "form/frames.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <stdexcept>

#include "form/text.h"

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

void Navigator::showPlace(int position, int count) const {
    const QString place = QStringLiteral("%1 of %2").arg(position).arg(count);
    lblRecNumber->setText(place);
    lblRecNumber->setAccessibleName(QStringLiteral("Record ") + place);
}

Field& MainForm::operator[](gem::Control input) const {
    Field* const field = inputs[gem::indexOf(input)];
    if (field == nullptr) throw std::logic_error("no input: " + std::string(gem::nameOf(input)));
    return *field;
}

Field* MainForm::add(gem::Control input, QWidget* widget) {
    widget->setObjectName(toQt(gem::nameOf(input)));
    auto* const field = new Field(widget);
    inputs[gem::indexOf(input)] = field;
    return field;
}

std::array<const TwoListEditor*, 3> MainForm::editors() const {
    return {&children, &variables, &reports};
}

const TwoListEditor& MainForm::editorOf(gem::Control selectedList) const {
    const QString name = toQt(gem::nameOf(selectedList));
    for (const TwoListEditor* editor : editors())
        if (editor->selected->objectName() == name) return *editor;
    throw std::logic_error("no selected list: " + name.toStdString());
}

QList<Field*> MainForm::fields() const {
    return frames->findChildren<Field*>();
}

void MainForm::clearInputs() const {
    for (Field* field : fields()) field->setText(QString());
    for (const TwoListEditor* editor : editors()) {
        editor->pool->clearRows();
        editor->selected->clearRows();
    }
}

}  // namespace stelvan::form
