#include "tools/dialogs/document_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "form/text.h"
#include "model/publish/publication.h"
#include "tools/dialogs/guarded.h"
#include "tools/dialogs/lines_dialog.h"

namespace stelvan::tools {
namespace {

enum Document { Manual, Dictionary, Messages };

struct DocumentFacts {
    const char* caption;
    const char* filter;
    const char* proposed;
};

constexpr DocumentFacts kDocuments[] = {
    {"Interface manual", "Pages (*.html)", "/manual.html"},
    {"Equipment data dictionary", "Dictionaries (*.xml)", "/dictionary.xml"},
    {"Messages in SML", "Messages (*.sml)", "/messages.sml"},
};

const QString kTitle = QStringLiteral("Document");

std::string trimmed(const QLineEdit& line) {
    return form::toUtf8(line.text().trimmed());
}

std::optional<std::string> unlessEmpty(const QLineEdit& line) {
    const std::string text = trimmed(line);
    return text.empty() ? std::nullopt : std::optional(text);
}

}  // namespace

DocumentDialog::DocumentDialog(form::Window& window, QWidget* parent)
    : QDialog(parent), window_(window) {
    setObjectName(QStringLiteral("frmDocument"));
    setWindowTitle(kTitle);
    build();
    follow();
}

QLineEdit* DocumentDialog::addLine(QFormLayout& rows, const char* name, const char* label) {
    auto* const line = new QLineEdit;
    line->setObjectName(QLatin1String(name));
    line->setMinimumWidth(fontMetrics().averageCharWidth() * 45);
    rows.addRow(QString::fromUtf8(label), line);
    return line;
}

void DocumentDialog::build() {
    auto* const rows = new QFormLayout;
    document_ = new QComboBox;
    document_->setObjectName(QStringLiteral("cmbDocument"));
    for (const DocumentFacts& facts : kDocuments)
        document_->addItem(QString::fromUtf8(facts.caption));
    rows->addRow(QStringLiteral("&Document"), document_);
    title_ = addLine(*rows, "txtDocTitle", "&Title");
    maker_ = addLine(*rows, "txtDocMaker", "&Maker");
    model_ = addLine(*rows, "txtDocModel", "M&odel");
    version_ = addLine(*rows, "txtDocVersion", "&Version");
    findings_ = new QCheckBox(QStringLiteral("&Findings of a check as an annex"));
    findings_->setObjectName(QStringLiteral("chkDocFindings"));
    findings_->setChecked(true);
    rows->addRow(QString(), findings_);
    auto* const buttons = new QDialogButtonBox;
    auto* const write = buttons->addButton(QStringLiteral("&Write…"), QDialogButtonBox::AcceptRole);
    write->setObjectName(QStringLiteral("cmdWrite"));
    buttons->addButton(QDialogButtonBox::Close)->setObjectName(QStringLiteral("cmdClose"));
    auto* const column = new QVBoxLayout(this);
    column->addLayout(rows);
    column->addWidget(buttons);
    connect(document_, &QComboBox::currentIndexChanged, this, [this] { follow(); });
    connect(buttons, &QDialogButtonBox::accepted, this, [this] { this->write(); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void DocumentDialog::follow() {
    const int document = document_->currentIndex();
    title_->setEnabled(document == Manual);
    findings_->setEnabled(document == Manual);
    for (QLineEdit* line : {maker_, model_, version_}) line->setEnabled(document != Messages);
}

void DocumentDialog::write() {
    const DocumentFacts& facts = kDocuments[document_->currentIndex()];
    const QString start = QFileInfo(form::toQt(window_.operations.path())).absolutePath() +
                          QLatin1String(facts.proposed);
    const QString out =
        window_.dialogs.saveFile(document_->currentText(), QString::fromUtf8(facts.filter), start);
    if (out.isEmpty()) return;
    QStringList notes;
    const bool done = guarded(window_, *this, kTitle, [&] {
        const Busy busy;
        notes = writeTo(out);
    });
    if (!done) return;
    window_.form.statusPanel->setText(
        QStringLiteral("%1 was written to %2").arg(document_->currentText(), out));
    if (!notes.isEmpty())
        showLines({kTitle,
                   QStringLiteral("%1 was written. What could not be told as it stands:").arg(out),
                   notes},
                  this);
    accept();
}

QStringList DocumentDialog::writeTo(const QString& out) const {
    const std::string& file = window_.operations.path();
    const model::Model whole = model::read(file);
    std::vector<std::string> notes;
    model::publishInto(form::toUtf8(out), file, [&](const model::Sink& sink) {
        switch (document_->currentIndex()) {
            case Manual:
                model::publishManual(whole, findings_->isChecked(),
                                     {.title = trimmed(*title_),
                                      .maker = trimmed(*maker_),
                                      .model = trimmed(*model_),
                                      .version = trimmed(*version_)},
                                     sink);
                break;
            case Dictionary:
                notes = model::publishSedd(whole,
                                           {.mdln = unlessEmpty(*model_),
                                            .softrev = unlessEmpty(*version_),
                                            .equipmentId = {},
                                            .supplier = trimmed(*maker_),
                                            .date = {},
                                            .description = {}},
                                           sink);
                break;
            default:
                notes = model::publishSml(whole, sink);
        }
    });
    QStringList lines;
    for (const std::string& note : notes) lines << form::onOneLine(form::toQt(note));
    return lines;
}

}  // namespace stelvan::tools
