// Builds the inputs of each property frame into its group box.
#pragma once

#include "form/frames.h"

namespace stelvan::form {

VarFrame buildVarFrame(QGroupBox& frame);
AlmFrame buildAlmFrame(QGroupBox& frame);
EvtFrame buildEvtFrame(QGroupBox& frame);
LmtFrame buildLmtFrame(QGroupBox& frame);
SttFrame buildSttFrame(QGroupBox& frame);
RptFrame buildRptFrame(QGroupBox& frame);

}  // namespace stelvan::form
