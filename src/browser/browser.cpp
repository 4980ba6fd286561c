#include "browser/browser.h"

#include <QTabBar>

#include "form/tool_bar.h"

namespace stelvan::browser {

void Browser::connectAids() {
    form::ToolBar& tools = *window.form.aids.tlbModel;
    jump.onEnded = [this, &tools] {
        if (!window.state.editing()) history.visit();
        usedIn.display(jump.shown());
        tools.follow();
    };
    records.onDisplayed = [this] {
        if (!jump.underway()) jump.onEnded();
    };
    window.onButtons = [this, &tools](bool editing) {
        find.follow(editing);
        usedIn.follow(editing);
        keys.follow(editing);
        tools.follow(!editing);
    };
    tools.setHook(
        form::Tool::Back,
        [this, &tools] {
            history.goBack();
            tools.follow();
        },
        [this] { return history.canGoBack(); });
    tools.setHook(
        form::Tool::Forward,
        [this, &tools] {
            history.goForward();
            tools.follow();
        },
        [this] { return history.canGoForward(); });
    QObject::connect(window.form.tspData, &QTabBar::currentChanged, &tools,
                     [&tools] { tools.follow(); });
    find.connectControls();
    gridActions.connectGrid();
    keys.install();
}

void Browser::forgetAids() {
    find.end();
    history.clear();
    index.clear();
    usedIn.display(std::nullopt);
    notice.reset();
    window.form.aids.tlbModel->follow();
}

}  // namespace stelvan::browser
