#include "Panel/editing/Gesture.h"

#include <cstdlib>

namespace {

constexpr int ATTRACTION = 4; // pixels
constexpr COLORREF GUIDE_COLOUR = RGB(255, 64, 160);

} // namespace

logic::SnapSettings EditSurface::Snapping() const {
    if (GetKeyState(VK_MENU) < 0) {
        return {};
    }
    return {grid.IsOn() ? EditGrid::SPACING : 0, ATTRACTION};
}

std::vector<OverlayLines::Line> EditSurface::LinesOf(const std::vector<logic::Guide>& guides,
                                                     HWND parent) const {
    std::vector<OverlayLines::Line> shown;
    for (const logic::Guide& guide : guides) {
        RECT place = guide.vertical ? RECT{guide.position, guide.from, guide.position + 1, guide.to}
                                    : RECT{guide.from, guide.position, guide.to, guide.position + 1};
        MapWindowPoints(parent, panel, reinterpret_cast<POINT*>(&place), 2);
        shown.push_back({place, GUIDE_COLOUR});
    }
    return shown;
}

bool DragThreshold::Passed(POINT point) {
    passed_ = passed_ || std::abs(point.x - start_.x) >= GetSystemMetrics(SM_CXDRAG) ||
              std::abs(point.y - start_.y) >= GetSystemMetrics(SM_CYDRAG);
    return passed_;
}
