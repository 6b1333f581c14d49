#pragma once

#include "Panelhost/Api.h"

#include <windows.h>

// The registered clipboard format for values of that kind ("XOver filter"), the same in all programs that use
// this library. 0 when it cannot be registered.
PANELHOST_API UINT a_GetClipboardFormat(const char* kind);
