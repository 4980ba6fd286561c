#include "browser/go_to_id.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "base/text.h"
#include "form/text.h"
#include "model/core/values.h"

namespace stelvan::browser {

GoToId::GoToId(RecordJump& jump, ModelIndex& index, const form::Window& window, QWidget* parent)
    : QDialog(parent), jump_(jump), index_(index), window_(window) {
    setObjectName(QStringLiteral("dlgGoToID"));
    setWindowTitle(QStringLiteral("Go to ID"));
    setAttribute(Qt::WA_DeleteOnClose);
    txtGoToID_ = new QLineEdit;
    txtGoToID_->setObjectName(QStringLiteral("txtGoToID"));
    txtGoToID_->setAccessibleName(QStringLiteral("ID"));
    lblGoToID_ = new QLabel(QStringLiteral("ID of the record:"));
    lblGoToID_->setObjectName(QStringLiteral("lblGoToID"));
    lblGoToID_->setTextFormat(Qt::PlainText);
    lblGoToID_->setBuddy(txtGoToID_);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    auto* const column = new QVBoxLayout(this);
    column->addWidget(lblGoToID_);
    column->addWidget(txtGoToID_);
    column->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &GoToId::go);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

std::optional<RecordAddress> GoToId::find(const QString& typed) const {
    const std::string text = form::toUtf8(typed);
    const auto id = model::wholeNumber(jet::Value(std::string(base::trimBlanks(text))));
    if (!id) return std::nullopt;
    index_.refresh(window_.operations.path());
    const std::int16_t present = window_.state.category;
    auto item = index_.find(present, *id);
    for (const bool sameKind : {true, false})
        for (std::int16_t other = 1; !item && other <= gem::kCategories; ++other)
            if ((gem::kindOf(other) == gem::kindOf(present)) == sameKind)
                item = index_.find(other, *id);
    if (!item) return std::nullopt;
    return jump_.addressOf(index_.items()[*item]);
}

void GoToId::go() {
    QString failure = QStringLiteral("No record has the ID \"%1\".").arg(txtGoToID_->text());
    try {
        if (const auto address = find(txtGoToID_->text())) {
            accept();
            jump_.show(*address);
            return;
        }
    } catch (const jet::Error& error) {
        failure = form::toQt(error.what());
    }
    lblGoToID_->setText(failure);
    txtGoToID_->selectAll();
    txtGoToID_->setFocus();
}

}  // namespace stelvan::browser
