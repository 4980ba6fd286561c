// The controls of the main window that rules speak of, by their names.
//
// A name that is not in the list does not compile; its text, and so the control's objectName, is
// the very name.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace stelvan::gem {

/// The inputs of the property frames, frame by frame.
// clang-format off
#define STELVAN_FIELDS(X)                                                                          \
    X(txtVarName) X(txtVarID) X(txtVarGroup) X(txtVarDesc) X(cmbVarFormat) X(txtVarMin)            \
    X(txtVarMax) X(txtVarUnit) X(txtVarDefValue) X(txtVarValue) X(txtVarLmtCEID)                   \
    X(txtVarLmtCEName)                                                                             \
    X(txtAlmName) X(txtAlmID) X(txtAlmGroup) X(txtAlmText) X(chkAlmEnable) X(txtAlmSetCEID)        \
    X(txtAlmSetCEName) X(txtAlmClrCEID) X(txtAlmClrCEName)                                         \
    X(txtEvtName) X(txtEvtID) X(txtEvtGroup) X(txtEvtDesc) X(chkEvtEnable)                         \
    X(txtRptID) X(txtRptName) X(txtRptDesc) X(chkRptDefault)                                       \
    X(txtSttName) X(txtSttValue) X(cmbSttValue) X(chkSttValue)                                     \
    X(txtSttDefValue) X(cmbSttDefValue) X(chkSttDefValue)                                          \
    X(txtLmtID) X(txtLmtVarID) X(txtLmtUBound) X(txtLmtLBound) X(txtLmtTransType)

/// Lists and buttons: those of the two-list editors, and those that the keyboard's way leads to.
#define STELVAN_OTHER_CONTROLS(X)                                                                  \
    X(lvwItemSelection) X(cmdSelect) X(cmdDeselect) X(cmdOrderUp) X(cmdOrderDown)                  \
    X(lvwChildItems)                                                                               \
    X(lvwRptPool) X(cmdRptSelect) X(cmdRptDeselect) X(cmdRptOrderUp) X(cmdRptOrderDown)            \
    X(lvwRptList)                                                                                  \
    X(lvwVarPool) X(cmdVarSelect) X(cmdVarDeselect) X(cmdVarOrderUp) X(cmdVarOrderDown)            \
    X(lvwVarList)                                                                                  \
    X(cmdSave)
// clang-format on

enum class Control : std::uint8_t {
#define STELVAN_CONTROL(name) name,
    None,
    STELVAN_FIELDS(STELVAN_CONTROL) STELVAN_OTHER_CONTROLS(STELVAN_CONTROL)
#undef STELVAN_CONTROL
};

inline constexpr std::string_view kControlNames[] = {
#define STELVAN_CONTROL(name) #name,
    "", STELVAN_FIELDS(STELVAN_CONTROL) STELVAN_OTHER_CONTROLS(STELVAN_CONTROL)
#undef STELVAN_CONTROL
};

inline constexpr std::size_t kControls = std::size(kControlNames);

/// The position of a control in arrays of kControls entries.
[[nodiscard]] constexpr std::size_t indexOf(Control control) {
    return static_cast<std::size_t>(control);
}

/// Empty for None.
[[nodiscard]] constexpr std::string_view nameOf(Control control) {
    return kControlNames[indexOf(control)];
}

}  // namespace stelvan::gem
