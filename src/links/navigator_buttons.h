// The buttons of the navigator that follow the edit mode, set together.
#pragma once

#include "form/frames.h"

namespace stelvan::links {

struct NavigatorButtons {
    bool inEdit = false;  // Save and Cancel are shown
    bool canAdd = false;
    bool canEdit = false;
    bool canDelete = false;
};

void setNavigatorButtons(const form::Navigator& navigator, const NavigatorButtons& buttons);

}  // namespace stelvan::links
