#include "Panel/editing/MoveGesture.h"

#include "Panelhost/Hostinfo.h"

#include <utility>

MoveGesture::MoveGesture(const EditSurface& surface, HOSTINFO* pressed, std::vector<HOSTINFO*> clicked,
                         POINT start)
    : Gesture(surface),
      pressed_(pressed),
      clicked_(std::move(clicked)),
      threshold_(start),
      before_(PlacementsOf(surface.selection.Objects())),
      neighbours_(Neighbours(surface.selection.Objects())),
      room_(RoomAround(*pressed)) {}

void MoveGesture::Move(POINT point) {
    if (!threshold_.Passed(point)) {
        return;
    }
    const std::vector<logic::Rectangle> places = PlacesOf(before_);
    logic::Offset by = logic::ReachableMove(threshold_.From(point), places, room_.cx, room_.cy);
    const logic::Rectangle bounds = logic::Moved(logic::Bounds(places), by);
    const logic::Snap snap = logic::SnapMove(bounds, neighbours_, surface_.Snapping());
    const logic::Offset snapped{by.x + snap.by.x, by.y + snap.by.y};
    const bool reachable = logic::ReachableMove(snapped, places, room_.cx, room_.cy) == snapped;
    by = reachable ? snapped : by;

    std::vector<Placement> now = before_;
    for (Placement& placement : now) {
        placement.place = logic::Moved(placement.place, by);
    }
    PlaceObjects(now);
    surface_.ShowGuides(reachable ? snap.guides : std::vector<logic::Guide>{}, GetParent(pressed_->window));
}

void MoveGesture::End() {
    if (threshold_.Passed()) {
        surface_.edits.CommitPlaces("Move", before_);
    } else {
        std::erase_if(clicked_, [](const HOSTINFO* object) { return !a_IsAlive(object); });
        surface_.selection.Set(clicked_);
    }
}

void MoveGesture::Cancel() {
    PlaceObjects(before_);
}
