// What the interface controls share: the picture and the hidden window.

#include "Controls/families/InterfaceControl.h"

#include "Panelhost/Dialogs.h"
#include "base/Gdi.h"
#include "base/Threads.h"

namespace {

constexpr COLORREF TRANSPARENT_COLOUR = RGB(255, 0, 255);

void DrawPicture(HDC dc, HBITMAP bitmap) {
    const SIZE size = SizeOf(bitmap);
    const MemoryDc memory(bitmap);
    GdiTransparentBlt(dc, 0, 0, size.cx, size.cy, memory.Get(), 0, 0, size.cx, size.cy, TRANSPARENT_COLOUR);
}

} // namespace

void INTERFACEPROPERTIES::SetDefaults() {
    const HBITMAP picture = PictureOf(*controlClass);
    const SIZE size = picture == nullptr ? SizeWithoutPicture() : SizeOf(picture);
    Resize(size.cx, size.cy);
    interval = DefaultInterval();
    flags |= FLAG_EDIT_ONLY;
}

void INTERFACEPROPERTIES::Created() {
    a_ApplyVisibility(this);
}

LRESULT INTERFACEPROPERTIES::OnTimer(WPARAM timer, LPARAM lParam) {
    return GetCapture() == window ? 0 : CONTROLPROPERTIES::OnTimer(timer, lParam);
}

bool INTERFACEPROPERTIES::StaysHidden() const {
    return (flags & FLAG_EDIT_ONLY) != 0 && mode == 0 && a_FindRootHostinfo(parent) != nullptr;
}

void INTERFACEPROPERTIES::Draw(HDC dc, const RECT& client) const {
    if (StaysHidden()) {
        return;
    }
    const HBITMAP picture = PictureOf(*controlClass);
    const Selected brush(dc, picture == nullptr ? GetStockObject(WHITE_BRUSH) : a_GetObject(BRUSH_DIALOG));
    const Selected pen(dc, GetStockObject(BLACK_PEN));
    Rectangle(dc, 0, 0, client.right, client.bottom);
    if (picture != nullptr) {
        DrawPicture(dc, picture);
    }
}

namespace {

constexpr UINT APPLY_VISIBILITY = WM_USER + 2; // posted to the control's own window

// The system shows a window that is created visible after its control is made.
void Shown(const INTERFACEPROPERTIES& control, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!control.StaysHidden()) {
        return;
    }
    if (message == WM_WINDOWPOSCHANGING) {
        reinterpret_cast<WINDOWPOS*>(lParam)->flags &= ~static_cast<UINT>(SWP_SHOWWINDOW);
    } else if (message == WM_SHOWWINDOW && wParam != FALSE) {
        // Inside a hidden window the system asks nobody and sets the style after this message.
        PostMessageA(control.window, APPLY_VISIBILITY, 0, 0);
    }
}

} // namespace

LRESULT CALLBACK InterfaceProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CLOSE) {
        ShowWindow(window, SW_HIDE);
        return 1;
    }
    auto* control = PropertiesOf<INTERFACEPROPERTIES>(window);
    if (message == WorkerCalls::MESSAGE && control != nullptr) {
        control->ServeCalls();
        return 0;
    }
    if (message == APPLY_VISIBILITY) {
        a_ApplyVisibility(control);
        return 0;
    }
    if (control != nullptr) {
        Shown(*control, message, wParam, lParam);
    }
    return IndicatorProc(window, message, wParam, lParam);
}
