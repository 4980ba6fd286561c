#include "tools/tools.h"

#include <QMainWindow>
#include <QMenu>

#include "tools/dialogs/compare_dialog.h"
#include "tools/dialogs/document_dialog.h"

namespace stelvan::tools {

void Tools::connectTools() {
    form::ToolBar& bar = *window.form.aids.tlbModel;
    const auto isOpen = [this] { return !window.state.databasePath.empty(); };
    bar.setHook(
        form::Tool::Check, [this] { check.run(); },
        [this, isOpen] { return isOpen() && !check.running(); });
    bar.setHook(
        form::Tool::Compare, [this] { CompareDialog(window, &owner).exec(); }, isOpen);
    bar.setHook(
        form::Tool::Document, [this] { DocumentDialog(window, &owner).exec(); }, isOpen);
    bar.setHook(
        form::Tool::Export,
        [this] {
            offer(
                form::Tool::Export, "mnuExport",
                {{"mnuExportTexts", "As &texts...", [this] { exchange.exportTexts(); }},
                 {"mnuExportSheets", "As ta&bles (CSV)...", [this] { exchange.exportSheets(); }}});
        },
        isOpen);
    bar.setHook(
        form::Tool::Import,
        [this] {
            offer(
                form::Tool::Import, "mnuImport",
                {{"mnuImportTexts", "From &texts...", [this] { exchange.importTexts(); }},
                 {"mnuImportSheet", "From a ta&ble (CSV)...", [this] { exchange.importSheet(); }}});
        },
        isOpen);
    check.onChanged = [&bar] { bar.follow(); };

    browser.records.onDisplayed = [this, below = browser.records.onDisplayed] {
        below();
        check.follow(window.state.editing());
        check.followDisplay();
        pictures.follow(window.state.editing());
    };
    window.onButtons = [this, below = window.onButtons](bool editing) {
        below(editing);
        check.follow(editing);
        pictures.follow(editing);
    };
}

void Tools::offer(form::Tool tool, const char* name, const std::vector<Offer>& offers) {
    form::ToolBar& bar = *window.form.aids.tlbModel;
    auto* const menu = new QMenu(&bar);
    menu->setObjectName(QLatin1String(name));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const Offer& one : offers) {
        QAction* const action = menu->addAction(QLatin1String(one.caption));
        action->setObjectName(QLatin1String(one.name));
        QObject::connect(action, &QAction::triggered, &bar, one.run);
    }
    const QWidget* const button = bar.widgetForAction(bar.action(tool));
    menu->popup(button->mapToGlobal(QPoint(0, button->height())));
    menu->setActiveAction(menu->actions().front());
}

void Tools::forget() {
    check.forget();
    pictures.follow(false);
}

}  // namespace stelvan::tools
