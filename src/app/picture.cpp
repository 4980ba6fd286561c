// Draws the window with a category loaded into a PNG file, without a display.
#include <QApplication>
#include <QCommandLineParser>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyleFactory>
#include <QTabBar>
#include <QTextStream>
#include <QTreeView>
#include <QTreeWidget>
#include <optional>

#include "app/frm_gem_database.h"
#include "app/frm_keys.h"
#include "app/frm_main.h"
#include "app/subsystems.h"
#include "form/crisp_style.h"
#include "form/dialogs.h"
#include "tools/dialogs/compare_dialog.h"
#include "tools/dialogs/document_dialog.h"

namespace {

using stelvan::app::FrmGEMDatabase;
using stelvan::app::FrmKeys;
using stelvan::app::FrmMain;

/// Prints what a box would show; nobody is there to close one.
class PrintedDialogs : public stelvan::form::Dialogs {
public:
    void message(const QString& text, stelvan::form::Icon, const QString&) override {
        QTextStream(stderr) << text << Qt::endl;
        ++shown_;
    }
    bool confirm(const QString&, const QString&) override { return false; }
    QString openFile(const QString&, const QString&, const QString&) override { return {}; }
    QString saveFile(const QString&, const QString&, const QString&) override { return {}; }
    QString openFolder(const QString&, const QString&) override { return {}; }
    [[nodiscard]] int shown() const { return shown_; }

private:
    int shown_ = 0;
};

QPalette darkPalette() {
    QPalette dark(QColor(0x35, 0x35, 0x38));
    dark.setColor(QPalette::Base, QColor(0x1e, 0x1e, 0x20));
    dark.setColor(QPalette::AlternateBase, QColor(0x28, 0x28, 0x2b));
    dark.setColor(QPalette::ToolTipBase, QColor(0x4a, 0x45, 0x28));
    dark.setColor(QPalette::ToolTipText, QColor(0xf2, 0xf0, 0xe4));
    dark.setColor(QPalette::Highlight, QColor(0x2f, 0x6f, 0xa8));
    dark.setColor(QPalette::PlaceholderText, QColor(0x90, 0x90, 0x94));
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        dark.setColor(role, QColor(0xe8, 0xe8, 0xea));
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        dark.setColor(QPalette::Disabled, role, QColor(0x80, 0x80, 0x84));
    return dark;
}

void addOptions(QCommandLineParser& options) {
    options.setApplicationDescription(QStringLiteral("Draws Stelvan's window into a PNG file."));
    options.addHelpOption();
    options.addPositionalArgument(QStringLiteral("database"), QStringLiteral("the GEM database"));
    options.addPositionalArgument(QStringLiteral("picture"),
                                  QStringLiteral("the PNG file to write"));
    const auto add = [&options](const char* name, const char* what, const char* value,
                                const char* initial) {
        options.addOption({QLatin1String(name), QLatin1String(what), QLatin1String(value),
                           QLatin1String(initial)});
    };
    add("category", "key of the category to show; empty for none", "key", "CSTVSV");
    add("record", "number of the record to show", "n", "1");
    add("find", "what to look for in the find box", "text", "");
    add("font", "size of the font in points", "points", "");
    add("size", "size of the window", "size", "1100x760");
    options.addOption({QStringLiteral("all"), QStringLiteral("show the grid of all records")});
    options.addOption({QStringLiteral("edit"), QStringLiteral("press Edit")});
    options.addOption({QStringLiteral("add"), QStringLiteral("press Add New")});
    options.addOption({QStringLiteral("dark"), QStringLiteral("use dark colours")});
    options.addOption({QStringLiteral("fault"), QStringLiteral("empty the name, so that it is at "
                                                               "fault")});
    options.addOption({QStringLiteral("check"), QStringLiteral("check the model and go to the "
                                                               "first finding")});
    options.addOption({QStringLiteral("unfold"), QStringLiteral("open an event's picture")});
    add("compare", "show the comparison with this model instead", "other", "");
    options.addOption({QStringLiteral("document"), QStringLiteral("show the dialog of documents "
                                                                  "instead")});
    options.addOption({QStringLiteral("first"), QStringLiteral("show the first dialog instead")});
    options.addOption({QStringLiteral("keys"), QStringLiteral("show the page of keys instead")});
    options.addOption({QStringLiteral("desktop"), QStringLiteral("keep the desktop's own look")});
}

void setLook(const QCommandLineParser& options) {
    const bool desktop = options.isSet(QStringLiteral("desktop"));
    QStyle* const toolkits = desktop ? nullptr : QStyleFactory::create(QStringLiteral("Fusion"));
    QApplication::setStyle(new stelvan::form::CrispStyle(toolkits));
    if (options.isSet(QStringLiteral("dark"))) QApplication::setPalette(darkPalette());
    if (const int points = options.value(QStringLiteral("font")).toInt(); points > 0) {
        QFont font = QApplication::font();
        font.setPointSize(points);
        QApplication::setFont(font);
    }
}

/// The name is emptied and the record judged as a save would.
void makeFaulty(FrmMain& window) {
    const std::int16_t category = window.window().state.category;
    const auto name =
        stelvan::gem::fieldWith(stelvan::gem::kindOf(category), stelvan::gem::Check::Name);
    if (name == stelvan::gem::Control::None) return;
    window.window().form[name].setText(QString());
    static_cast<void>(window.subsystems().checks.fields.checkForSave(category));
}

/// Checks, waits for what is found, and goes to the first.
void check(FrmMain& window) {
    window.subsystems().tools.check.run();
    while (window.subsystems().tools.check.running()) QApplication::processEvents();
    auto* const list = window.findChild<QTreeView*>(QStringLiteral("lvwFindings"));
    list->setCurrentIndex(list->model()->index(0, 0, list->model()->index(0, 0)));
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(list, &enter);
}

void arrange(FrmMain& window, const QCommandLineParser& options) {
    if (const QString key = options.value(QStringLiteral("category")); !key.isEmpty()) {
        const auto index = stelvan::gem::categoryOf(key.toStdString());
        QTreeWidget* tree = window.window().form.tvwSECSItem;
        tree->setCurrentItem(tree->topLevelItem(index - 1));
        window.subsystems().browser.tree.tvwSECSItem_NodeClick(key);
    }
    for (int n = options.value(QStringLiteral("record")).toInt(); n > 1; --n)
        window.window().form.nav.cmdNext->click();
    window.subsystems().tools.pictures.choose(
        options.isSet(QStringLiteral("unfold")) ? std::optional(true) : std::nullopt);
    if (options.isSet(QStringLiteral("check"))) check(window);
    if (const QString text = options.value(QStringLiteral("find")); !text.isEmpty())
        window.window().form.aids.txtFind->setText(text);
    if (options.isSet(QStringLiteral("edit"))) window.window().form.nav.cmdUpdate->click();
    if (options.isSet(QStringLiteral("add"))) window.window().form.nav.cmdNew->click();
    if (options.isSet(QStringLiteral("fault"))) makeFaulty(window);
    if (options.isSet(QStringLiteral("all"))) window.window().form.tspData->setCurrentIndex(1);
}

/// Draws a window as it stands once it has come up and everything that was put off is done.
bool written(QWidget& window, const QString& picture) {
    constexpr int kPatience = 300;  // milliseconds
    window.show();
    QDeadlineTimer patience(kPatience);
    do {
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    } while (!patience.hasExpired());
    QApplication::processEvents();
    return window.grab().save(picture);
}

}  // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QCommandLineParser options;
    addOptions(options);
    options.process(application);
    const QStringList files = options.positionalArguments();
    if (files.size() != 2) options.showHelp(2);
    setLook(options);

    PrintedDialogs dialogs;
    FrmMain window(dialogs, QString());
    if (options.isSet(QStringLiteral("first"))) {
        FrmGEMDatabase dialog(window.window().errors, dialogs, QFileInfo(files[0]).path());
        return written(dialog, files[1]) ? 0 : 1;
    }
    if (options.isSet(QStringLiteral("keys"))) {
        FrmKeys keys(nullptr);
        return written(keys, files[1]) ? 0 : 1;
    }
    window.start(files[0]);
    const QStringList size = options.value(QStringLiteral("size")).split(QLatin1Char('x'));
    if (size.size() == 2) window.resize(size[0].toInt(), size[1].toInt());
    window.show();
    arrange(window, options);
    if (const QString other = options.value(QStringLiteral("compare")); !other.isEmpty()) {
        stelvan::tools::CompareDialog dialog(window.window(), nullptr);
        dialog.compareWith(other);
        return written(dialog, files[1]) && dialogs.shown() == 0 ? 0 : 1;
    }
    if (options.isSet(QStringLiteral("document"))) {
        stelvan::tools::DocumentDialog dialog(window.window(), nullptr);
        return written(dialog, files[1]) ? 0 : 1;
    }
    return written(window, files[1]) && dialogs.shown() == 0 ? 0 : 1;
}
