#include "Controls/drawing/Canvas.h"

#include "Controls/drawing/Shading.h"
#include "Controls/drawing/TextColours.h"
#include "base/Gdi.h"

#include <algorithm>
#include <cstddef>

namespace {

int RowsOf(HDC dc) {
    BITMAP bitmap{};
    GetObjectA(GetCurrentObject(dc, OBJ_BITMAP), sizeof bitmap, &bitmap);
    return bitmap.bmHeight;
}

RECT Covered(const RECT& area, const RECT& picture) {
    RECT covered{};
    IntersectRect(&covered, &area, &picture);
    return covered;
}

} // namespace

Canvas::Canvas(HDC dc, std::uint32_t* pixels, int width, int top, const RECT& area)
    : dc_(dc),
      pixels_(pixels),
      width_(width),
      top_(top),
      area_(area),
      saved_(SaveDC(dc)),
      covered_(Covered(area, {0, top, width, top + RowsOf(dc)})),
      coverage_(covered_.right - covered_.left, covered_.bottom - covered_.top) {
    SetViewportOrgEx(dc, 0, -top, nullptr);
    IntersectClipRect(dc, area.left, area.top, area.right, area.bottom);
    SetBkMode(dc, TRANSPARENT);
}

Canvas::~Canvas() {
    RestoreDC(dc_, saved_);
}

void Canvas::Box(const RECT& box, COLORREF colour) const {
    FillGround(dc_, colour, box);
}

void Canvas::Text(const std::string& text, RECT box, HFONT font, COLORREF colour, UINT format) const {
    const Selected selected(dc_, font);
    SetTextColor(dc_, colour);
    DrawTextA(dc_, text.c_str(), static_cast<int>(text.size()), &box, format | DT_SINGLELINE | DT_NOPREFIX);
}

std::vector<logic::Spot> Canvas::Moved(std::span<const logic::Spot> spots) const {
    std::vector<logic::Spot> moved(spots.begin(), spots.end());
    for (logic::Spot& spot : moved) {
        spot = {spot.x - covered_.left, spot.y - covered_.top};
    }
    return moved;
}

logic::PixelArea Canvas::Pixels() const {
    GdiFlush();
    return {pixels_ + static_cast<std::ptrdiff_t>(covered_.top - top_) * width_ + covered_.left, width_,
            covered_.right - covered_.left, covered_.bottom - covered_.top};
}

void Canvas::Show(COLORREF colour, double opacity) {
    coverage_.Blend(Pixels().pixels, width_, PixelOf(colour), opacity);
}

std::vector<double> Canvas::MovedHeights(std::span<const double> heights) const {
    std::vector<double> moved(heights.begin(), heights.end());
    for (double& height : moved) {
        height -= covered_.top;
    }
    return moved;
}

void Canvas::Graph(std::span<const double> heights, const logic::GraphStyle& style) const {
    logic::GraphStyle inPixels = style;
    inPixels.colour = PixelOf(style.colour);
    BlendGraph(Pixels(), MovedHeights(heights), inPixels);
}

void Canvas::UnderGraph(std::span<const double> heights, double base, COLORREF colour, double opacity) const {
    BlendUnderGraph(Pixels(), MovedHeights(heights), base - covered_.top, PixelOf(colour), opacity);
}

void Canvas::Put(const Stamp& stamp, POINT middle) const {
    const logic::PixelArea area = Pixels();
    const int left = middle.x - stamp.size / 2 - covered_.left;
    const int top = middle.y - stamp.size / 2 - covered_.top;
    for (int y = std::max(top, 0); y < std::min(top + stamp.size, area.height); ++y) {
        for (int x = std::max(left, 0); x < std::min(left + stamp.size, area.width); ++x) {
            const std::uint32_t pixel =
                stamp.pixels[static_cast<std::size_t>((y - top) * stamp.size + x - left)];
            std::uint32_t& ground = area.pixels[static_cast<std::ptrdiff_t>(y) * width_ + x];
            const std::uint32_t alpha = pixel >> 24;
            ground = logic::MixedPixel(ground, pixel, alpha + (alpha >> 7));
        }
    }
}

void Canvas::Shape(std::span<const logic::Spot> outline, COLORREF colour, double opacity) {
    coverage_.AddOutline(Moved(outline));
    Show(colour, opacity);
}

void Canvas::Line(std::span<const logic::Spot> spots, double width, COLORREF colour, double opacity) {
    coverage_.AddLine(Moved(spots), width);
    Show(colour, opacity);
}

void Canvas::Circle(logic::Spot centre, double radius, COLORREF colour, double opacity) {
    coverage_.AddCircle({centre.x - covered_.left, centre.y - covered_.top}, radius);
    Show(colour, opacity);
}

void Canvas::Lamp(logic::Spot centre, double radius, bool isLit) {
    Circle(centre, radius, logic::PANEL_EDGE);
    Circle(centre, radius - 1, isLit ? logic::PANEL_GREEN : logic::PANEL_WELL);
    if (isLit) {
        const double shift = radius / 3;
        Circle({centre.x - shift, centre.y - shift}, radius / 4, logic::PANEL_TEXT, 0.7);
    }
}
