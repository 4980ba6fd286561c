// What can be done with the whole model from the window, behind the tools of `tlbModel`: checked,
// compared, documented, exported, imported; and the picture of an event.
//
// All of it stands on the functions of model/ that the command line uses. Nothing acts while a
// record is being added or edited.
#pragma once

#include <QMainWindow>
#include <functional>
#include <vector>

#include "form/tool_bar.h"
#include "tools/event_pictures.h"
#include "tools/exchange.h"
#include "tools/model_check.h"

namespace stelvan::tools {

struct Tools {
    /// Both must outlive the object.
    Tools(QMainWindow& shell, browser::Browser& browserBelow)
        : window(browserBelow.window),
          browser(browserBelow),
          owner(shell),
          check(shell, browserBelow),
          exchange(shell, browserBelow),
          pictures(browserBelow) {}

    /// Puts itself behind the tool bar, and follows what is shown; once, after the browser's aids.
    void connectTools();
    /// Another database: nothing of the old one stays.
    void forget();

    form::Window& window;
    browser::Browser& browser;
    QMainWindow& owner;
    ModelCheck check;
    Exchange exchange;
    EventPictures pictures;

private:
    struct Offer {
        const char* name;
        const char* caption;
        std::function<void()> run;
    };
    /// A menu below a tool, for one that can be had in several ways.
    void offer(form::Tool tool, const char* name, const std::vector<Offer>& offers);
};

}  // namespace stelvan::tools
