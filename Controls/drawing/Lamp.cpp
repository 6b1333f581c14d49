#include "Controls/drawing/Lamp.h"

#include "Panelhost/Bitmap.h"
#include "base/Gdi.h"

#include <algorithm>

namespace {

constexpr int SIGN_PLACE = 3; // of the not-equal sign, from the left and from the top

COLORREF Between(COLORREF dark, COLORREF lit, int step, int steps) {
    const auto channel = [&](BYTE from, BYTE to) { return from + (to - from) * step / steps; };
    return RGB(channel(GetRValue(dark), GetRValue(lit)), channel(GetGValue(dark), GetGValue(lit)),
               channel(GetBValue(dark), GetBValue(lit)));
}

} // namespace

void DrawLamp(HDC dc, const RECT& area, int step, int steps, const LampColours& colours) {
    constexpr COLORREF RIM = RGB(28, 30, 32);
    constexpr COLORREF WHITE = RGB(255, 255, 255);
    const int size = std::min(area.right - area.left, area.bottom - area.top);
    const int left = (area.left + area.right - size) / 2;
    const int top = (area.top + area.bottom - size) / 2;
    const auto disc = [&](int inset, COLORREF colour) {
        SetDCBrushColor(dc, colour);
        Ellipse(dc, left + inset, top + inset, left + size + 1 - inset, top + size + 1 - inset);
    };
    const Selected brush(dc, GetStockObject(DC_BRUSH));
    const Selected pen(dc, GetStockObject(NULL_PEN));
    disc(0, RIM);
    disc(std::max(size / 12, 1), Between(colours.dark, colours.lit, step, steps - 1));
    if (step > 0) {
        const int spot = std::max(size / 5, 2);
        SetDCBrushColor(dc, Between(colours.lit, WHITE, 4, 5));
        Ellipse(dc, left + size / 4, top + size / 4, left + size / 4 + spot + 1, top + size / 4 + spot + 1);
    }
}

void DrawUnknownLamp(HDC dc, const RECT& client) {
    constexpr COLORREF PLATE = RGB(168, 168, 168);
    constexpr COLORREF CROSS = RGB(16, 16, 16);
    const Selected brush(dc, GetStockObject(DC_BRUSH));
    const Selected pen(dc, GetStockObject(DC_PEN));
    SetDCBrushColor(dc, PLATE);
    SetDCPenColor(dc, CROSS);
    FillRect(dc, &client, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    MoveToEx(dc, 0, 0, nullptr);
    LineTo(dc, client.right, client.bottom);
    MoveToEx(dc, 0, client.bottom - 1, nullptr);
    LineTo(dc, client.right, -1);
}

bool HasRoomForSign(const RECT& client) {
    const OSMIRBitmap& sign = *a_GetNotEqualSign();
    return client.right >= SIGN_PLACE + sign.Width() && client.bottom >= SIGN_PLACE + sign.Height();
}
