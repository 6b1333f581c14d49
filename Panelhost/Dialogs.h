#pragma once

#include "Panelhost/Api.h"

#include <windows.h>

class HOSTINFO;

// Opens the generic keyword/value dialog of an object at the cursor: every keyword that the object lists,
// editable. It closes with its object. Returns the dialog, or null.
PANELHOST_API HWND a_PropertyDlg(int mode, HOSTINFO* parent, HOSTINFO* object);
