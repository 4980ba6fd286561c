#include "tools/dialogs/compare_dialog.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "form/text.h"
#include "model/publish/change_page.h"
#include "model/publish/publication.h"
#include "model/text/model_source.h"
#include "tools/dialogs/change_lines.h"
#include "tools/dialogs/guarded.h"

namespace stelvan::tools {
namespace {

const QString kCompare = QStringLiteral("Compare");

std::filesystem::path pathOf(const QString& path) {
    return form::toUtf8(path);
}

QPushButton* button(const char* name, const char* caption) {
    auto* const made = new QPushButton(QString::fromUtf8(caption));
    made->setObjectName(QLatin1String(name));
    made->setAutoDefault(false);
    return made;
}

}  // namespace

CompareDialog::CompareDialog(form::Window& window, QWidget* parent)
    : QDialog(parent), window_(window) {
    setObjectName(QStringLiteral("frmCompare"));
    setWindowTitle(kCompare);
    build();
}

void CompareDialog::build() {
    auto* const file = button("cmdCompareFile", "With a &file…");
    auto* const folder = button("cmdCompareFolder", "With a folder of &texts…");
    compared_ = new QLabel(QStringLiteral("Choose what to compare the open model with."));
    compared_->setObjectName(QStringLiteral("lblCompared"));
    compared_->setTextFormat(Qt::PlainText);
    compared_->setWordWrap(true);
    lines_ = new QPlainTextEdit;
    lines_->setObjectName(QStringLiteral("txtDifferences"));
    lines_->setAccessibleName(QStringLiteral("Differences"));
    lines_->setReadOnly(true);
    lines_->setTabChangesFocus(true);
    lines_->setLineWrapMode(QPlainTextEdit::NoWrap);
    lines_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    page_ = button("cmdSavePage", "Save as &page…");
    page_->setEnabled(false);
    auto* const buttons = new QDialogButtonBox;
    buttons->addButton(page_, QDialogButtonBox::ActionRole);
    auto* const close = buttons->addButton(QDialogButtonBox::Close);
    close->setObjectName(QStringLiteral("cmdClose"));
    auto* const head = new QHBoxLayout;
    head->addWidget(file);
    head->addWidget(folder);
    head->addStretch(1);
    auto* const column = new QVBoxLayout(this);
    column->addLayout(head);
    column->addWidget(compared_);
    column->addWidget(lines_, 1);
    column->addWidget(buttons);
    connect(file, &QPushButton::clicked, this, [this] { chooseFile(); });
    connect(folder, &QPushButton::clicked, this, [this] { chooseFolder(); });
    connect(page_, &QPushButton::clicked, this, [this] { savePage(); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    constexpr int kColumns = 100;
    constexpr int kLines = 28;
    const QSize wanted(fontMetrics().averageCharWidth() * kColumns,
                       fontMetrics().lineSpacing() * kLines);
    resize(wanted.boundedTo(screen()->availableSize() * 9 / 10));
}

void CompareDialog::chooseFile() {
    const QString other =
        window_.dialogs.openFile(QStringLiteral("Compare with a file"),
                                 QStringLiteral("GEM databases (*.mdb);;All files (*)"),
                                 form::toQt(window_.operations.path()));
    if (!other.isEmpty()) compareWith(other);
}

void CompareDialog::chooseFolder() {
    const QString start = QFileInfo(form::toQt(window_.operations.path())).absolutePath();
    const QString other =
        window_.dialogs.openFolder(QStringLiteral("Compare with the texts in a folder"), start);
    if (!other.isEmpty()) compareWith(other);
}

void CompareDialog::compareWith(const QString& other) {
    other_.clear();
    lines_->clear();
    compared_->setText(QStringLiteral("Choose what to compare the open model with."));
    guarded(window_, *this, kCompare, [&] {
        const Busy busy;
        const ChangeLines changes(model::readModel(pathOf(other)),
                                  model::readModel(window_.operations.path()));
        const QString sum = changes.empty() ? QStringLiteral("Both say the same.")
                                            : changes.summary(false) + QLatin1Char('.');
        compared_->setText(QStringLiteral("From %1\nto the open model: %2").arg(other, sum));
        lines_->setPlainText(changes.lines().join(QLatin1Char('\n')));
        other_ = other;
    });
    page_->setEnabled(!other_.isEmpty());
}

void CompareDialog::savePage() {
    const QString proposed = QFileInfo(form::toQt(window_.operations.path())).absolutePath() +
                             QStringLiteral("/changes.html");
    const QString out = window_.dialogs.saveFile(QStringLiteral("Save the differences as a page"),
                                                 QStringLiteral("Pages (*.html)"), proposed);
    if (out.isEmpty()) return;
    guarded(window_, *this, kCompare, [&] {
        const Busy busy;
        const std::string& open = window_.operations.path();
        const auto changes =
            model::differences(model::readModel(pathOf(other_)), model::readModel(open));
        model::publishInto(pathOf(out), open, [&](const model::Sink& sink) {
            model::writeChangePage(changes, {form::toUtf8(other_), open}, sink);
        });
    });
}

}  // namespace stelvan::tools
