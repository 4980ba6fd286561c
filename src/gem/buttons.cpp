#include "gem/buttons.h"

#include "gem/categories.h"
#include "gem/formats.h"
#include "gem/ids_and_names.h"

namespace stelvan::gem {
namespace {

/// Records of the standard, and settings, are edited but never added or deleted. A list of the
/// standard has nothing to edit.
Buttons ofStandard(const Situation& now) {
    const bool isEmpty = now.loaded && now.count < 1;
    const bool isGemList = isGemVariable(now.category) && isList(now.format);
    return {.edit = !isEmpty && !isGemList};
}

Buttons ofReport(const Situation& now) {
    // Stays so where no report is shown; both buttons then do nothing.
    const bool mayChange = !isReservedReport(now.reportId);
    return {.add = true, .edit = mayChange, .remove = mayChange};
}

Buttons whileBrowsing(const Situation& now) {
    switch (now.category) {
        case GEMEVT:
        case GEMVDV:
        case GEMSDV:
        case GEMVEC:
        case GEMSTT:
            return ofStandard(now);
        case CSTALM:
        case CSTEVT:
        case CSTVDV:
        case CSTVSV:
        case CSTVEC:
            return {.add = true, .edit = now.count > 0, .remove = now.count > 0};
        case CSTRPT:
            return ofReport(now);
        default:
            return {};
    }
}

}  // namespace

Buttons buttonsIn(const Situation& now) {
    if (now.editing) return {.inEdit = now.category >= GEMEVT && now.category <= CSTRPT};
    Buttons open = whileBrowsing(now);
    open.previous = now.loaded && now.position > 1;
    open.next = now.loaded && now.position < now.count;
    open.browse = true;
    return open;
}

}  // namespace stelvan::gem
