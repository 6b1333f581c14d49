#include "Controls/drawing/Shading.h"

#include "logic/drawing/Shading.h"

#include <cstdint>
#include <vector>

namespace {

// The colours of the lines from the first to the last, as pixels.
std::vector<std::uint32_t> LineColours(COLORREF colour, int thickness) {
    std::vector<std::uint32_t> pixels;
    for (int number = 0; number < thickness; ++number) {
        const auto green =
            static_cast<std::uint32_t>(logic::ShadedGreen(GetGValue(colour), thickness, number));
        pixels.push_back(static_cast<std::uint32_t>(GetRValue(colour)) << 16 | green << 8 |
                         GetBValue(colour));
    }
    return pixels;
}

// Stretches an image that is one pixel thick over the area: one call, however
// many lines there are.
void Stretch(HDC dc, const RECT& area, const std::vector<std::uint32_t>& pixels, int width, int height) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height; // the first line at the top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    StretchDIBits(dc, area.left, area.top, area.right - area.left, area.bottom - area.top, 0, 0, width,
                  height, pixels.data(), &info, DIB_RGB_COLORS, SRCCOPY);
}

} // namespace

void DrawShadedRows(HDC dc, const RECT& area, COLORREF colour) {
    if (!IsRectEmpty(&area)) {
        const int rows = area.bottom - area.top;
        Stretch(dc, area, LineColours(colour, rows), 1, rows);
    }
}

void DrawShadedColumns(HDC dc, const RECT& area, COLORREF colour) {
    if (!IsRectEmpty(&area)) {
        const int columns = area.right - area.left;
        Stretch(dc, area, LineColours(colour, columns), columns, 1);
    }
}
