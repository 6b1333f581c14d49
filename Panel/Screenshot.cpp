#include "Panel/Screenshot.h"

#include "Panelhost/Bitmap.h"
#include "base/Handles.h"

bool SaveScreenshot(HWND window, const std::string& file) {
    ShowWindow(window, SW_SHOWNORMAL);
    SetForegroundWindow(window);
    BringWindowToTop(window);
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    RECT place;
    // Children are not to be clipped out of what is read.
    const WindowDc dc(window, DCX_WINDOW);
    return GetWindowRect(window, &place) && dc.Get() &&
           a_SavePicture(dc.Get(), place.right - place.left, place.bottom - place.top, file.c_str()) != 0;
}
