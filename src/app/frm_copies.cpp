#include "app/frm_copies.h"

#include <QDateTime>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "form/text.h"

namespace stelvan::app {
namespace {

constexpr int kLines = 11;
constexpr int kCharacters = 60;
const char* const kWindow = "frmCopies";

QString dateOf(const model::KeptCopy& copy) {
    const auto seconds = static_cast<qint64>(copy.made.time_since_epoch().count());
    return QLocale().toString(QDateTime::fromSecsSinceEpoch(seconds), QLocale::LongFormat);
}

}  // namespace

FrmCopies::FrmCopies(base::ErrorInfo& errors, form::Dialogs& boxes, QString path,
                     const QString& folder, Model model, QWidget* parent)
    : QDialog(parent),
      errors_(errors),
      boxes_(boxes),
      path_(std::move(path)),
      kept_(form::toUtf8(folder)),
      model_(model) {
    errors_.handle(kWindow, "Form_Load", [this] {
        copies_ = kept_.of(form::toUtf8(path_));
        buildControls();
        fillCopies();
    });
}

QString FrmCopies::summary() const {
    if (copies_.empty())
        return QStringLiteral(
                   "There are no copies of %1.\nOne is kept before the first change of each "
                   "session.")
            .arg(path_);
    const QString what = QStringLiteral("%1 as it was before the first change of a session:");
    return model_ == Model::Free
               ? what.arg(path_)
               : what.arg(path_) + QStringLiteral(
                                       "\nIt is open now. Open another model, or start anew, and "
                                       "restore it then.");
}

void FrmCopies::buildControls() {
    setObjectName(QLatin1String(kWindow));
    setWindowTitle(QStringLiteral("Earlier copies"));
    auto* label = new QLabel(summary(), this);
    label->setObjectName(QStringLiteral("lblCopies"));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    lvwCopies_ = new QTreeWidget(this);
    lvwCopies_->setObjectName(QStringLiteral("lvwCopies"));
    lvwCopies_->setAccessibleName(QStringLiteral("Earlier copies"));
    lvwCopies_->setHeaderLabels({QStringLiteral("Kept on"), QStringLiteral("Size")});
    lvwCopies_->setRootIsDecorated(false);
    lvwCopies_->setAllColumnsShowFocus(true);
    lvwCopies_->setMinimumHeight(fontMetrics().lineSpacing() * kLines);
    lvwCopies_->setMinimumWidth(fontMetrics().averageCharWidth() * kCharacters);
    lvwCopies_->header()->setStretchLastSection(false);
    lvwCopies_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    lvwCopies_->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    cmdRestore_ = new QPushButton(QStringLiteral("&Restore"), this);
    cmdRestore_->setObjectName(QStringLiteral("cmdRestore"));
    cmdRestore_->setDefault(true);
    auto* cmdClose = new QPushButton(QStringLiteral("&Close"), this);
    cmdClose->setObjectName(QStringLiteral("cmdClose"));
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdRestore_);
    buttons->addWidget(cmdClose);
    auto* whole = new QVBoxLayout(this);
    whole->addWidget(label);
    whole->addWidget(lvwCopies_, 1);
    whole->addLayout(buttons);
    connect(cmdRestore_, &QPushButton::clicked, this, &FrmCopies::cmdRestore_Click);
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
}

void FrmCopies::fillCopies() {
    for (const model::KeptCopy& copy : copies_) {
        auto* row = new QTreeWidgetItem(
            lvwCopies_,
            {dateOf(copy), QLocale().formattedDataSize(static_cast<qint64>(copy.bytes))});
        row->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
        row->setToolTip(0, form::asToolTip(form::toQt(copy.path.string())));
    }
    if (!copies_.empty()) lvwCopies_->setCurrentItem(lvwCopies_->topLevelItem(0));
    cmdRestore_->setEnabled(!copies_.empty() && model_ == Model::Free);
}

void FrmCopies::cmdRestore_Click() {
    errors_.handle(kWindow, "cmdRestore_Click", [this] {
        const int row = lvwCopies_->indexOfTopLevelItem(lvwCopies_->currentItem());
        if (row < 0 || model_ != Model::Free) return;
        const model::KeptCopy& copy = copies_[static_cast<std::size_t>(row)];
        const QString date = dateOf(copy);
        const QString question =
            QStringLiteral("Replace %1 by its copy of %2?\n\nThe present file is kept as a copy.")
                .arg(path_, date);
        if (boxes_.confirm(question, QStringLiteral("Restore confirmation"))) restore(copy, date);
    });
}

void FrmCopies::restore(const model::KeptCopy& copy, const QString& date) {
    try {
        kept_.restore(form::toUtf8(path_), copy);
    } catch (const std::exception& failure) {
        boxes_.message(QStringLiteral("The copy could not be restored: ") +
                           form::toQt(std::string_view(failure.what())),
                       form::Icon::Exclamation);
        return;
    }
    boxes_.message(QStringLiteral("%1 is again as it was on %2.").arg(path_, date));
    accept();
}

}  // namespace stelvan::app
