#include "model/check/finding.h"

namespace stelvan::model {

std::string_view nameOf(Severity severity) {
    switch (severity) {
        case Severity::Note:
            return "note";
        case Severity::Warning:
            return "warning";
        case Severity::Error:
            break;
    }
    return "error";
}

}  // namespace stelvan::model
