#include "app/frm_keys.h"

#include <QFile>
#include <QPushButton>
#include <QScreen>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextTable>
#include <QVBoxLayout>

static void loadPages() {
    Q_INIT_RESOURCE(pages);
}

namespace stelvan::app {
namespace {

constexpr int kColumns = 84;
constexpr int kLines = 40;
constexpr QSize kWindowFrame(16, 48);  // what the desktop draws around a window, at least

constexpr int kKeyShare =
    25;  // percent of the width, in all tables, so that they stand in one line
constexpr int kCellPadding = 3;
constexpr int kMargin = 12;

/// Room above the headings.
void partSections(QTextDocument& page) {
    for (QTextBlock block = page.begin(); block.isValid(); block = block.next()) {
        QTextBlockFormat format = block.blockFormat();
        if (format.headingLevel() == 0) continue;
        format.setTopMargin(kMargin);
        QTextCursor(block).setBlockFormat(format);
    }
}

/// Without the boxes that Markdown's tables are drawn with.
void easeTables(const QTextDocument& page) {
    for (QTextFrame* frame : page.rootFrame()->childFrames()) {
        auto* const table = qobject_cast<QTextTable*>(frame);
        if (table == nullptr) continue;
        QTextTableFormat format = table->format();
        format.setBorder(0);
        format.setCellSpacing(0);
        format.setCellPadding(kCellPadding);
        format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
        format.setColumnWidthConstraints(
            {QTextLength(QTextLength::PercentageLength, kKeyShare),
             QTextLength(QTextLength::PercentageLength, 100 - kKeyShare)});
        table->setFormat(format);
    }
}

}  // namespace

FrmKeys::FrmKeys(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmKeys"));
    setWindowTitle(QStringLiteral("Keys"));
    auto* text = new QTextBrowser;
    text->setObjectName(QStringLiteral("txtKeys"));
    text->setAccessibleName(QStringLiteral("Keys"));
    text->setMarkdown(page());
    text->document()->setDocumentMargin(kMargin);
    partSections(*text->document());
    easeTables(*text->document());
    auto* close = new QPushButton(QStringLiteral("&Close"));
    close->setObjectName(QStringLiteral("cmdClose"));
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    auto* whole = new QVBoxLayout(this);
    whole->addWidget(text, 1);
    whole->addWidget(close, 0, Qt::AlignRight);
    const QSize wanted(fontMetrics().averageCharWidth() * kColumns,
                       fontMetrics().lineSpacing() * kLines);
    resize(wanted.boundedTo(screen()->availableSize() - kWindowFrame));
}

QString FrmKeys::page() {
    loadPages();
    QFile file(QStringLiteral(":/pages/keys.md"));
    if (!file.open(QIODevice::ReadOnly)) return {};
    return QString::fromUtf8(file.readAll());
}

}  // namespace stelvan::app
