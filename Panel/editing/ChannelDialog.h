#pragma once

#include "Panel/editing/PanelEdits.h"

#include <windows.h>

#include <vector>

class HOSTINFO;

// Binds the parts of strips, or controls without parts, to channels of a device, one after the other: asks
// which device and channel, and shows what gets what. One step.
void BindChannels(HWND owner, PanelEdits& edits, const std::vector<HOSTINFO*>& strips);
