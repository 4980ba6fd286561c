#include "tools/dialogs/lines_dialog.h"

#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace stelvan::tools {
namespace {

constexpr int kColumns = 100;
constexpr int kLines = 26;

QSize wantedSize(const QWidget& dialog) {
    const QFontMetrics font = dialog.fontMetrics();
    const QSize wanted(font.averageCharWidth() * kColumns, font.lineSpacing() * kLines);
    const QScreen* const screen = dialog.screen();
    return screen == nullptr ? wanted : wanted.boundedTo(screen->availableSize() * 9 / 10);
}

}  // namespace

LinesDialog::LinesDialog(const LinesText& text, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmLines"));
    setWindowTitle(text.title);
    auto* const heading = new QLabel(text.heading);
    heading->setObjectName(QStringLiteral("lblHeading"));
    heading->setTextFormat(Qt::PlainText);
    heading->setWordWrap(true);
    auto* const lines = new QPlainTextEdit;
    lines->setObjectName(QStringLiteral("txtLines"));
    lines->setAccessibleName(text.heading);
    lines->setReadOnly(true);
    lines->setTabChangesFocus(true);
    lines->setLineWrapMode(QPlainTextEdit::NoWrap);
    lines->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    lines->setPlainText(text.lines.join(QLatin1Char('\n')));
    auto* const buttons = new QDialogButtonBox;
    const bool asks = !text.accept.isEmpty();
    if (asks) {
        auto* const accept = buttons->addButton(text.accept, QDialogButtonBox::AcceptRole);
        accept->setObjectName(QStringLiteral("cmdAccept"));
        accept->setAutoDefault(false);
    }
    auto* const close =
        buttons->addButton(asks ? QDialogButtonBox::Cancel : QDialogButtonBox::Close);
    close->setObjectName(QStringLiteral("cmdClose"));
    close->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const column = new QVBoxLayout(this);
    column->addWidget(heading);
    column->addWidget(lines, 1);
    column->addWidget(buttons);
    close->setFocus();
    resize(wantedSize(*this));
}

bool showLines(const LinesText& text, QWidget* parent) {
    return LinesDialog(text, parent).exec() == QDialog::Accepted;
}

}  // namespace stelvan::tools
