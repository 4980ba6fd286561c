#include "gem/record.h"

#include "gem/formats.h"

namespace stelvan::gem {

std::string Record::format() const {
    return formatCode((*this)[Control::cmbVarFormat].text);
}

}  // namespace stelvan::gem
