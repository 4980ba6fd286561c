#include "gem/record.h"

namespace stelvan::gem {

bool opens(const OpenedFields& opened, Control field) {
    if (field == Control::txtVarUnit) return opened.unit;
    const bool isLimit = field == Control::txtVarMin || field == Control::txtVarMax;
    return isLimit ? opened.limits : opened.values;
}

std::string Record::format() const {
    return formatCode((*this)[Control::cmbVarFormat].text);
}

}  // namespace stelvan::gem
