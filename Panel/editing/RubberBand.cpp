#include "Panel/editing/RubberBand.h"

#include "Panel/editing/Groups.h"
#include "Panelhost/Hostinfo.h"
#include "logic/drawing/PanelColours.h"

#include <algorithm>

namespace {

constexpr COLORREF BAND_COLOUR = logic::PANEL_ACCENT;

} // namespace

RubberBand::RubberBand(const EditSurface& surface, POINT start, bool adds)
    : Gesture(surface), start_(start), threshold_(start), before_(surface.selection.Objects()), adds_(adds) {
    if (!adds) {
        surface.selection.Clear();
    }
}

void RubberBand::Move(POINT point) {
    if (!threshold_.Passed(point)) {
        return;
    }
    const logic::Rectangle band = logic::Spanned({start_.x, start_.y}, {point.x, point.y});
    const HOSTINFO* parent = surface_.selection.Parent(surface_.edits.Root());
    std::vector<HOSTINFO*> touched;
    if (adds_) {
        std::copy_if(before_.begin(), before_.end(), std::back_inserter(touched),
                     [&](const HOSTINFO* object) { return a_IsAlive(object) && object->parent == parent; });
    }
    for (HOSTINFO* object : ReachableIn(surface_.edits.Root(), parent)) {
        const RECT place = PlaceOn(surface_.panel, object->window);
        if (logic::Touches(band, {place.left, place.top, place.right, place.bottom}) &&
            std::find(touched.begin(), touched.end(), object) == touched.end()) {
            touched.push_back(object);
        }
    }
    if (GetKeyState(VK_MENU) >= 0) {
        touched = WithGroups(surface_.edits.Root(), std::move(touched), {});
    }
    if (touched != surface_.selection.Objects()) {
        surface_.selection.Set(std::move(touched));
        RedrawWindow(surface_.panel, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    }
    std::vector<OverlayLines::Line> lines;
    OverlayLines::AddFrame(lines, {band.left, band.top, band.right + 1, band.bottom + 1}, BAND_COLOUR);
    surface_.lines.Show(lines);
}

void RubberBand::Cancel() {
    std::erase_if(before_, [](const HOSTINFO* object) { return !a_IsAlive(object); });
    surface_.selection.Set(before_);
}
