#include "Panel/editing/SizeGesture.h"

#include "Panelhost/Hostinfo.h"
#include "Panelhost/ValueRecord.h"

namespace {

constexpr int LEAST_SIZE = 4; // pixels

// A control that takes its size from its image takes it again whenever the panel is loaded: a size that it
// would lose then is not given to it now.
void KeepImageSize(const Placement& before) {
    HOSTINFO* object = before.object;
    const logic::Rectangle wanted = PlaceOf(*object);
    if (wanted == before.place) {
        return;
    }
    VALUERECORD record;
    record.command = COMMAND_GET;
    record.index = a_FindKeyword(object->GetHostinfoTable(), "bitmap");
    record.datatype = DATATYPE_TEXT;
    char image[TEXT_SIZE] = "";
    record.data = image;
    if (record.index > 0 && SendMessageA(object->window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record))) {
        const std::string line = std::string("bitmap=") + image;
        SendMessageA(object->window, CWM_LOAD, LOAD_FROM_FILE, reinterpret_cast<LPARAM>(line.c_str()));
    }
    if (!(PlaceOf(*object) == wanted)) {
        PlaceObjects({before});
    }
}

} // namespace

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
    for (const Placement& placement : before_) {
        if (a_IsAlive(placement.object)) {
            KeepImageSize(placement);
        }
    }
    surface_.edits.CommitPlaces("Size", before_);
}

void SizeGesture::Cancel() {
    PlaceObjects(before_);
}
