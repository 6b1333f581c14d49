// What the interface controls share: the picture, the hidden window and the refused keywords.

#include "Controls/framework/InterfaceControl.h"

#include "Controls/framework/ClassTable.h"
#include "Controls/framework/SharedResources.h"
#include "Controls/framework/WorkerThread.h"
#include "Panelhost/Gdi.h"

namespace {

constexpr COLORREF TRANSPARENT_COLOUR = RGB(255, 0, 255);

SIZE SizeOf(HBITMAP bitmap) {
    BITMAP description{};
    GetObjectA(bitmap, sizeof description, &description);
    return {description.bmWidth, description.bmHeight};
}

void DrawPicture(HDC dc, HBITMAP bitmap) {
    const SIZE size = SizeOf(bitmap);
    const MemoryDc memory(bitmap);
    GdiTransparentBlt(dc, 0, 0, size.cx, size.cy, memory.Get(), 0, 0, size.cx, size.cy, TRANSPARENT_COLOUR);
}

} // namespace

void INTERFACEPROPERTIES::SetDefaults() {
    const HBITMAP picture = ResourcesOf(*controlClass).bitmaps[0];
    const SIZE size = picture == nullptr ? SizeWithoutPicture() : SizeOf(picture);
    Resize(size.cx, size.cy);
    interval = DefaultInterval();
    flags |= FLAG_EDIT_ONLY;
}

void INTERFACEPROPERTIES::Created() {
    a_ApplyVisibility(this);
}

LRESULT INTERFACEPROPERTIES::OnTimer(WPARAM timer, LPARAM lParam) {
    // The system shows a window that is created visible after its control has hidden it.
    if (mode == 0 && (GetWindowLongA(window, GWL_STYLE) & WS_VISIBLE) != 0) {
        a_ApplyVisibility(this);
    }
    return GetCapture() == window ? 0 : CONTROLPROPERTIES::OnTimer(timer, lParam);
}

void INTERFACEPROPERTIES::Draw(HDC dc, const RECT& client) const {
    const HBITMAP picture = ResourcesOf(*controlClass).bitmaps[0];
    const Selected brush(dc, picture == nullptr ? GetStockObject(WHITE_BRUSH) : a_GetObject(BRUSH_DIALOG));
    const Selected pen(dc, GetStockObject(BLACK_PEN));
    Rectangle(dc, 0, 0, client.right, client.bottom);
    if (picture != nullptr) {
        DrawPicture(dc, picture);
    }
}

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
    return IndicatorProc(window, message, wParam, lParam);
}

int RefusedKeyword(VALUERECORD*, HOSTINFO*) {
    return 0;
}
