#include <QApplication>
#include <cstdio>
#include <memory>

#include "app/command_line_reader.h"
#include "app/frm_main.h"
#include "app/single_instance.h"
#include "form/crisp_style.h"
#include "form/dialogs.h"

namespace {

using stelvan::app::CommandLine;

constexpr int kNotUnderstood = 2;

int print(const CommandLine& given) {
    const bool understood = given.wish == CommandLine::Wish::Text;
    std::fputs(given.text.toLocal8Bit().constData(), understood ? stdout : stderr);
    return understood ? 0 : kNotUnderstood;
}

int openWindow(const QString& file) {
    QApplication::setStyle(new stelvan::form::CrispStyle);
    stelvan::app::SingleInstance instance(stelvan::app::folderOfUser());
    stelvan::form::QtDialogs dialogs;
    stelvan::app::FrmMain window(dialogs, QApplication::applicationDirPath(),
                                 stelvan::app::UserPlaces::ofUser());
    if (!window.Form_Load([&instance] { return instance.acquire(); }, file)) return 0;
    dialogs.setParent(&window);
    window.show();
    return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    const auto application = std::unique_ptr<QCoreApplication>(
        stelvan::app::asksForText(argc, argv) ? new QCoreApplication(argc, argv)
                                              : new QApplication(argc, argv));
    QCoreApplication::setApplicationName(QStringLiteral("Stelvan"));
    QGuiApplication::setDesktopFileName(QStringLiteral("stelvan"));
    const CommandLine given = stelvan::app::readCommandLine(QCoreApplication::arguments());
    return given.wish == CommandLine::Wish::Window ? openWindow(given.file) : print(given);
}
