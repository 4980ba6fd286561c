#include "app/frm_about.h"

#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "base/version.h"

namespace stelvan::app {
namespace {
constexpr int kPictureSize = 64;
}

FrmAbout::FrmAbout(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("About Stelvan"));
    auto* picture = new QLabel;
    picture->setObjectName(QStringLiteral("Image1"));
    picture->setPixmap(QIcon(QStringLiteral(":/icons/stelvan.svg")).pixmap(kPictureSize));
    auto* version = new QLabel(versionText());
    version->setObjectName(QStringLiteral("lblVersion"));
    version->setTextFormat(Qt::PlainText);
    version->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* ok = new QPushButton(QStringLiteral("&OK"));
    ok->setObjectName(QStringLiteral("cmdOk"));
    connect(ok, &QPushButton::clicked, this, &FrmAbout::cmdOk_Click);
    auto* top = new QHBoxLayout;
    top->setSpacing(20);
    top->addWidget(picture, 0, Qt::AlignTop);
    top->addWidget(version, 1);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(20, 20, 20, 14);
    whole->addLayout(top);
    whole->addSpacing(10);
    whole->addWidget(ok, 0, Qt::AlignRight);
    whole->setSizeConstraint(QLayout::SetFixedSize);
}

QString FrmAbout::versionText() {
    return QStringLiteral(
               "Stelvan (A component of Duvessa)\n"
               "Version %1\n"
               "Builds and maintains the SECS/GEM model of one piece of equipment.\n"
               "Provided as it is, without warranty of any kind.")
        .arg(QString::fromStdString(base::version()));
}

void FrmAbout::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        accept();
    } else {
        QDialog::keyPressEvent(event);
    }
}

}  // namespace stelvan::app
