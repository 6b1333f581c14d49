#include "Panel/editing/SizeGesture.h"

#include "Panelhost/Hostinfo.h"

SizeGesture::SizeGesture(const EditSurface& surface, HOSTINFO* grasped, logic::Handle handle, POINT start)
    : Gesture(surface),
      grasped_(grasped),
      handle_(handle),
      threshold_(start),
      before_(PlacementsOf(surface.selection.Objects())),
      neighbours_(Neighbours(surface.selection.Objects())) {}

void SizeGesture::Move(POINT point) {
    if (!threshold_.Passed(point) || !a_IsAlive(grasped_)) {
        return;
    }
    logic::Offset by = threshold_.From(point);
    logic::Rectangle place{};
    for (const Placement& placement : before_) {
        if (placement.object == grasped_) {
            place = logic::Sized(placement.place, handle_, by, LEAST_SIZE);
        }
    }
    const logic::Snap snap = logic::SnapSize(place, handle_, neighbours_, surface_.Snapping());
    by = {by.x + snap.by.x, by.y + snap.by.y};

    std::vector<Placement> now = before_;
    for (Placement& placement : now) {
        placement.place = logic::Sized(placement.place, handle_, by, LEAST_SIZE);
    }
    PlaceObjects(now);
    surface_.ShowGuides(snap.guides, GetParent(grasped_->window));
}

void SizeGesture::End() {
    if (!threshold_.Passed()) {
        return;
    }
    KeepImageSizes(before_);
    surface_.edits.CommitPlaces("Size", before_);
}

void SizeGesture::Cancel() {
    PlaceObjects(before_);
}
