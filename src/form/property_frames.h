// Builds the inputs of each property frame into its group box.
#pragma once

#include "form/frames.h"

namespace stelvan::form {

void buildVarFrame(QGroupBox& frame, MainForm& form);
void buildAlmFrame(QGroupBox& frame, MainForm& form);
void buildEvtFrame(QGroupBox& frame, MainForm& form);
void buildLmtFrame(QGroupBox& frame, MainForm& form);
void buildSttFrame(QGroupBox& frame, MainForm& form);
void buildRptFrame(QGroupBox& frame, MainForm& form);

}  // namespace stelvan::form
