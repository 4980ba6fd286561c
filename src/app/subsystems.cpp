#include "app/subsystems.h"

#include <QPushButton>
#include <QTabBar>

#include "form/tool_bar.h"

namespace stelvan::app {
namespace {

template <class Handler>
void onClick(QPushButton* button, Handler handler) {
    QObject::connect(button, &QPushButton::clicked, button, handler);
}

}  // namespace

void Subsystems::connectAll() {
    form::Window& window = checks.window;
    const form::Navigator& nav = window.form.nav;
    onClick(nav.cmdNew, [this] { editing.commands.cmdNew_Click(); });
    onClick(nav.cmdUpdate, [this] { editing.commands.cmdUpdate_Click(); });
    onClick(nav.cmdSave, [this] { editing.save.cmdSave_Click(); });
    onClick(nav.cmdDelete, [this] { editing.commands.cmdDelete_Click(); });
    onClick(nav.cmdCancel, [this] { editing.commands.cmdCancel_Click(); });
    onClick(nav.cmdPrevious, [this] { browser.records.cmdPrevious_Click(); });
    onClick(nav.cmdNext, [this] { browser.records.cmdNext_Click(); });
    QObject::connect(window.form.tspData, &QTabBar::currentChanged, window.form.tspData,
                     [this] { browser.grid.tspData_Click(); });
    // A click on the tab that is chosen already shows what there is now.
    QObject::connect(window.form.tspData, &QTabBar::tabBarClicked, window.form.tspData,
                     [this, tabs = window.form.tspData](int clicked) {
                         if (clicked == tabs->currentIndex()) browser.grid.tspData_Click();
                     });
    form::ListView* const children = window.form.children.selected;
    QObject::connect(children, &form::ListView::itemChecked, children,
                     [this](int row) { links.listChildren.lvwChildItems_ItemCheck(row); });
    browser.tree.connectTree();
    browser.connectAids();
    tools.connectTools();
    checks.fields.connectFields();
    checks.eventChoice.connectFields();
    settings.connectFields();
    links.selectionLists.connectControls();
    editing.focusChain.install();
    editing.undo.connectTool();
    tools.exchange.mayWrite = [this] { return editing.copy.mayWrite(); };
    tools.exchange.noteDone = [this](const std::string& what, jet::RowChanges changes) {
        editing.undo.noteDone(what, std::move(changes));
    };
    window.form.aids.tlbModel->setHook(
        form::Tool::Duplicate, [this] { editing.commands.cmdDuplicate_Click(); },
        [this] { return editing.commands.mayDuplicate(); });

    window.operations.onLoaded = [this] {
        browser.records.lUpdateNavigator();
        browser.records.lDisplayField();
        browser.notice.reset();
    };
    checks.format.showChildEditor = [this](bool show) {
        links.listChildren.lUpdateVarChild(show);
        links.listChildren.lDispChildEditor(show);
    };
    browser.records.cmbVarFormat_Change = [this] { checks.fields.cmbVarFormat_Change(); };
    browser.tree.lSetEditMode = [this](std::int16_t category, bool inEdit) {
        editing.access.lSetEditMode(category, inEdit);
    };
    browser.tree.lSetCtrlAccess = [this](std::int16_t category, bool locked) {
        editing.access.lSetCtrlAccess(category, locked);
    };
}

}  // namespace stelvan::app
