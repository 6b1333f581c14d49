#include "Panel/editing/EditGrid.h"

namespace {

constexpr COLORREF DOT = RGB(88, 88, 88); // by which the ground's colour is changed

// One dot in black: where the pattern is black, PATINVERT changes nothing.
HBRUSH MakeDots() {
    const Bitmap pattern(CreatePixels(EditGrid::SPACING, EditGrid::SPACING)); // black
    const MemoryDc dc(pattern.get());
    SetPixelV(dc.Get(), 0, 0, DOT);
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
