#include "form/dialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

namespace stelvan::form {

QWidget* QtDialogs::front() const {
    QWidget* modal = QApplication::activeModalWidget();
    return modal != nullptr ? modal : parent_;
}

void QtDialogs::message(const QString& text, Icon icon, const QString& title) {
    QMessageBox box(icon == Icon::Exclamation ? QMessageBox::Warning : QMessageBox::NoIcon,
                    title.isEmpty() ? QStringLiteral("Stelvan") : title, text, QMessageBox::Ok,
                    front());
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

bool QtDialogs::confirm(const QString& text, const QString& title) {
    QMessageBox box(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No,
                    front());
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

QString QtDialogs::openFile(const QString& title, const QString& filter, const QString& start) {
    const QFileInfo info(start);
    QString from = info.exists() ? start : info.absolutePath();
    if (start.isEmpty() || !QFileInfo::exists(from)) from.clear();
    return QFileDialog::getOpenFileName(front(), title, from, filter);
}

QString QtDialogs::saveFile(const QString& title, const QString& filter, const QString& start) {
    return QFileDialog::getSaveFileName(front(), title, start, filter);
}

QString QtDialogs::openFolder(const QString& title, const QString& start) {
    return QFileDialog::getExistingDirectory(front(), title,
                                             QFileInfo(start).isDir() ? start : QString());
}

}  // namespace stelvan::form
