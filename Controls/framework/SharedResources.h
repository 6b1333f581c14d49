#pragma once

#include "Controls/framework/Control.h"

#include <commctrl.h>

// What one class keeps for all its windows from registration until the library is unloaded.
class ClassResources {
public:
    void Make(const ControlClass& controlClass, HINSTANCE module);
    void Release();

    HWND tooltip = nullptr;
    HBITMAP bitmaps[2] = {};
    HIMAGELIST images = nullptr;
    HMODULE mailLibrary = nullptr;
    CRITICAL_SECTION* lock = nullptr;
};
