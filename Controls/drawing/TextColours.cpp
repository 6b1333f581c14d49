#include "Controls/drawing/TextColours.h"

COLORREF ReadableOn(COLORREF ground) {
    const int brightness = 3 * GetRValue(ground) + 6 * GetGValue(ground) + GetBValue(ground); // of 2550
    return brightness > 1200 ? RGB(0, 0, 0) : RGB(255, 255, 255);
}

void SelectTextColour(HDC dc, const std::optional<COLORREF>& colour, const RECT& area) {
    const int x = (area.left + area.right) / 2;
    const int y = (area.top + area.bottom) / 2;
    SetTextColor(dc, colour ? *colour : ReadableOn(GetPixel(dc, x, y)));
}

void FillGround(HDC dc, const std::optional<COLORREF>& colour, const RECT& area) {
    if (colour) {
        SetDCBrushColor(dc, *colour);
        FillRect(dc, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    }
}

HBRUSH FieldColours::Answer(HDC dc, COLORREF text, COLORREF ground) {
    if (brush_ == nullptr || colour_ != ground) {
        brush_.reset(CreateSolidBrush(ground));
        colour_ = ground;
    }
    SetTextColor(dc, text);
    SetBkColor(dc, ground);
    return brush_.get();
}
