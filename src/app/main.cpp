#include <QApplication>

#include "app/frm_main.h"
#include "app/single_instance.h"
#include "form/crisp_style.h"
#include "form/dialogs.h"

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setStyle(new stelvan::form::CrispStyle);
    QApplication::setApplicationName(QStringLiteral("Stelvan"));
    QApplication::setDesktopFileName(QStringLiteral("stelvan"));
    stelvan::app::SingleInstance instance(stelvan::app::folderOfUser());
    stelvan::form::QtDialogs dialogs;
    stelvan::app::FrmMain window(dialogs, QApplication::applicationDirPath(),
                                 stelvan::app::UserPlaces::ofUser());
    if (!window.Form_Load([&instance] { return instance.acquire(); })) return 0;
    dialogs.setParent(&window);
    window.show();
    return QApplication::exec();
}
