#pragma once

#include "Controls/dialog/ControlDialog.h"

// The lists of a dialog that fill in a click template: an object, or the connections, and a keyword of it.
void HandleTemplateCommand(ControlDialog& dialog, int id, WORD code);
