#include "Controls/framework/Shading.h"

#include "logic/Shading.h"

namespace {

void FillLine(HDC dc, const RECT& line, COLORREF colour, int thickness, int number) {
    const int green = logic::ShadedGreen(GetGValue(colour), thickness, number);
    SetDCBrushColor(dc, RGB(GetRValue(colour), green, GetBValue(colour)));
    FillRect(dc, &line, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

} // namespace

void DrawShadedRows(HDC dc, const RECT& area, COLORREF colour) {
    for (LONG y = area.top; y < area.bottom; ++y) {
        FillLine(dc, {area.left, y, area.right, y + 1}, colour, area.bottom - area.top, y - area.top);
    }
}

void DrawShadedColumns(HDC dc, const RECT& area, COLORREF colour) {
    for (LONG x = area.left; x < area.right; ++x) {
        FillLine(dc, {x, area.top, x + 1, area.bottom}, colour, area.right - area.left, x - area.left);
    }
}
