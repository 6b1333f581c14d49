#include "Panel/editing/EditGrid.h"

namespace {

constexpr COLORREF DOT = RGB(88, 88, 88); // by which the ground's colour is changed

// One dot in black: where the pattern is black, PATINVERT changes nothing.
HBRUSH MakeDots() {
    const HDC dc = CreateCompatibleDC(nullptr);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = EditGrid::SPACING;
    info.bmiHeader.biHeight = EditGrid::SPACING;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    const Bitmap pattern(CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    const HGDIOBJ previous = SelectObject(dc, pattern.get());
    PatBlt(dc, 0, 0, EditGrid::SPACING, EditGrid::SPACING, BLACKNESS);
    SetPixelV(dc, 0, 0, DOT);
    SelectObject(dc, previous);
    DeleteDC(dc);
    return CreatePatternBrush(pattern.get());
}

} // namespace

void EditGrid::Draw(HDC dc, const RECT& area) {
    if (!on_) {
        return;
    }
    if (!brush_) {
        brush_.reset(MakeDots());
    }
    SetBrushOrgEx(dc, 0, 0, nullptr);
    const HGDIOBJ previous = SelectObject(dc, brush_.get());
    PatBlt(dc, area.left, area.top, area.right - area.left, area.bottom - area.top, PATINVERT);
    SelectObject(dc, previous);
}
