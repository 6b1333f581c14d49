#pragma once

#include "Controls/framework/Control.h"

// CWM_PARAMETERDLG: opens the control's dialog at the cursor unless it has one open. What it shows follows
// from the keywords; it changes its control by property lines only. The open dialog, or null.
HWND OpenParameterDialog(CONTROLPROPERTIES& control);
