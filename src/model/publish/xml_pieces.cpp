#include "model/publish/xml_pieces.h"

namespace stelvan::model {

pugi::xml_node addElement(pugi::xml_node parent, const char* name, const std::string& text) {
    pugi::xml_node child = parent.append_child(name);
    if (!text.empty()) child.text().set(text.c_str());
    return child;
}

}  // namespace stelvan::model
