#include "Controls/drawing/Shading.h"

#include "logic/controls/BarLogic.h"
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

std::vector<std::uint32_t> GradientColours(const HalfGradients& colours, int thickness) {
    std::vector<std::uint32_t> pixels;
    for (int number = 0; number < thickness; ++number) {
        const double place = (number + 0.5) / thickness;
        const COLORREF colour = place < 0.5 ? logic::Blend(colours[0], colours[1], 2 * place)
                                            : logic::Blend(colours[2], colours[3], 2 * place - 1);
        pixels.push_back(PixelOf(colour));
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

std::uint32_t PixelOf(COLORREF colour) {
    return static_cast<std::uint32_t>(GetRValue(colour)) << 16 |
           static_cast<std::uint32_t>(GetGValue(colour)) << 8 | GetBValue(colour);
}

void DrawRows(HDC dc, const RECT& area, const std::vector<std::uint32_t>& pixels) {
    Stretch(dc, area, pixels, 1, static_cast<int>(pixels.size()));
}

void DrawColumns(HDC dc, const RECT& area, const std::vector<std::uint32_t>& pixels) {
    Stretch(dc, area, pixels, static_cast<int>(pixels.size()), 1);
}

void DrawShadedRows(HDC dc, const RECT& area, COLORREF colour) {
    if (!IsRectEmpty(&area)) {
        const int rows = area.bottom - area.top;
        DrawRows(dc, area, LineColours(colour, rows));
    }
}

void DrawShadedColumns(HDC dc, const RECT& area, COLORREF colour) {
    if (!IsRectEmpty(&area)) {
        const int columns = area.right - area.left;
        DrawColumns(dc, area, LineColours(colour, columns));
    }
}

void DrawGradientRows(HDC dc, const RECT& area, const HalfGradients& colours) {
    if (!IsRectEmpty(&area)) {
        const int rows = area.bottom - area.top;
        DrawRows(dc, area, GradientColours(colours, rows));
    }
}

void DrawGradientColumns(HDC dc, const RECT& area, const HalfGradients& colours) {
    if (!IsRectEmpty(&area)) {
        const int columns = area.right - area.left;
        DrawColumns(dc, area, GradientColours(colours, columns));
    }
}

// Round without its corners. Ellipses and arcs of that size look different on each system.
void DrawDot(HDC dc, int left, int top, COLORREF colour, int size) {
    const auto fill = [&](COLORREF with, RECT area) {
        OffsetRect(&area, left, top);
        SetDCBrushColor(dc, with);
        FillRect(dc, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    };
    const int corner = size / 5;
    const int end = size - corner;
    fill(colour, {corner, 0, end, size});
    fill(colour, {0, corner, size, end});
    const COLORREF highlight = GetSysColor(COLOR_BTNHIGHLIGHT);
    fill(highlight, {corner, end, end, size});
    fill(highlight, {end, corner, size, end});
}
