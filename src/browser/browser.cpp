#include "browser/browser.h"

#include "form/tool_bar.h"

namespace stelvan::browser {

void Browser::connectAids() {
    form::ToolBar& tools = *window.form.aids.tlbModel;
    records.onDisplayed = [this, &tools] {
        if (!window.state.editing()) history.visit();
        usedIn.display(jump.shown());
        tools.follow();
    };
    window.onButtons = [this, &tools](bool editing) {
        find.follow(editing);
        usedIn.follow(editing);
        keys.follow(editing);
        tools.follow(!editing);
    };
    tools.setHook(
        form::Tool::Back, [this] { history.goBack(); }, [this] { return history.canGoBack(); });
    tools.setHook(
        form::Tool::Forward, [this] { history.goForward(); },
        [this] { return history.canGoForward(); });
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
