#include "links/navigator_buttons.h"

#include <QPushButton>

namespace stelvan::links {

void setNavigatorButtons(const form::Navigator& navigator, const NavigatorButtons& buttons) {
    navigator.cmdCancel->setVisible(buttons.inEdit);
    navigator.cmdSave->setVisible(buttons.inEdit);
    navigator.cmdNew->setEnabled(buttons.canAdd);
    navigator.cmdUpdate->setEnabled(buttons.canEdit);
    navigator.cmdDelete->setEnabled(buttons.canDelete);
}

}  // namespace stelvan::links
