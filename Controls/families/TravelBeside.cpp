#include "Controls/families/TravelBeside.h"

#include "logic/text/PropertyLine.h"

bool TravelBeside::Load(CONTROLPROPERTIES& control, const std::string& text) {
    if (logic::SplitList(text).size() > 1 || !address_.Load(control, text)) {
        return false;
    }
    travel_.reset();
    seen_ = {};
    return true;
}

// Null when there is none. What the address names is followed by the request list.
const CONTROLPROPERTIES* TravelBeside::Other(const CONTROLPROPERTIES& control) const noexcept {
    if (address_.Requests().empty()) {
        return nullptr;
    }
    const HOSTINFO* target = address_.Requests().front().target;
    return target == nullptr || target == &control ? nullptr : dynamic_cast<const CONTROLPROPERTIES*>(target);
}

namespace {

RECT PlaceInPanel(const CONTROLPROPERTIES& control) noexcept {
    RECT place = control.rectangle;
    for (const auto* outer = dynamic_cast<const CONTROLPROPERTIES*>(control.parent); outer != nullptr;
         outer = dynamic_cast<const CONTROLPROPERTIES*>(outer->parent)) {
        OffsetRect(&place, outer->rectangle.left, outer->rectangle.top);
    }
    return place;
}

} // namespace

TravelBeside::View TravelBeside::Look(const CONTROLPROPERTIES& control) const noexcept {
    View view;
    view.own = PlaceInPanel(control);
    if (const CONTROLPROPERTIES* other = Other(control)) {
        const RECT place = PlaceInPanel(*other);
        view.others = place;
        view.travel = other->TravelIn({place.right - place.left, place.bottom - place.top});
    }
    return view;
}

bool TravelBeside::Follow(const CONTROLPROPERTIES& control) {
    const View view = Look(control);
    if (view == seen_) {
        return false;
    }
    seen_ = view;
    if (view.travel) {
        const CONTROLPROPERTIES& other = *Other(control);
        RECT client{};
        GetClientRect(other.window, &client);
        travel_ = other.TravelIn({client.right, client.bottom});
        POINT origin{};
        MapWindowPoints(other.window, control.window, &origin, 1);
        offset_ = view.travel->isHorizontal ? origin.x : origin.y;
    }
    return true;
}
