#include "Panel/editing/Placement.h"

#include "Panelhost/Hostinfo.h"

#include <algorithm>

logic::Rectangle PlaceOf(const HOSTINFO& object) {
    const RECT& place = object.rectangle;
    return {place.left, place.top, place.right, place.bottom};
}

std::vector<Placement> PlacementsOf(const std::vector<HOSTINFO*>& objects) {
    std::vector<Placement> placements;
    for (HOSTINFO* object : objects) {
        placements.push_back({object, PlaceOf(*object)});
    }
    return placements;
}

std::vector<logic::Rectangle> PlacesOf(const std::vector<Placement>& placements) {
    std::vector<logic::Rectangle> places;
    for (const Placement& placement : placements) {
        places.push_back(placement.place);
    }
    return places;
}

void PlaceObjects(const std::vector<Placement>& placements) {
    HDWP positions = BeginDeferWindowPos(static_cast<int>(placements.size()));
    HWND parent = nullptr;
    for (const auto& [object, place] : placements) {
        if (!a_IsAlive(object) || PlaceOf(*object) == place || !positions) {
            continue;
        }
        parent = GetParent(object->window);
        const logic::Rectangle before = PlaceOf(*object);
        const bool keepsSize = place.right - place.left == before.right - before.left &&
                               place.bottom - place.top == before.bottom - before.top;
        // What is behind a control differs from place to place, so its pixels are not moved along.
        positions = DeferWindowPos(positions, object->window, nullptr, place.left, place.top,
                                   place.right - place.left, place.bottom - place.top,
                                   SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS |
                                       (keepsSize ? static_cast<UINT>(SWP_NOSIZE) : 0U));
    }
    if (positions) {
        EndDeferWindowPos(positions);
    }
    for (const auto& [object, place] : placements) {
        if (a_IsAlive(object)) {
            // The height of a combo box is that of its list, which its window has only while it is open.
            object->rectangle.bottom = object->rectangle.top + place.bottom - place.top;
        }
    }
    if (parent) {
        RedrawWindow(parent, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    }
}

SIZE RoomAround(const HOSTINFO& object) {
    RECT client{};
    GetClientRect(GetParent(object.window), &client);
    return {client.right, client.bottom};
}

std::vector<logic::Rectangle> Neighbours(const std::vector<HOSTINFO*>& objects) {
    return objects.empty() ? std::vector<logic::Rectangle>{}
                           : PlacesIn(GetParent(objects.front()->window), objects);
}

std::vector<logic::Rectangle> PlacesIn(HWND parent, const std::vector<HOSTINFO*>& except) {
    std::vector<logic::Rectangle> places;
    for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        HOSTINFO* object = a_FromWindow(child);
        if (object && IsWindowVisible(child) &&
            std::find(except.begin(), except.end(), object) == except.end()) {
            places.push_back(PlaceOf(*object));
        }
    }
    return places;
}

bool IsReachable(const HOSTINFO& object) {
    return object.kind == KIND_CONTROL && (object.flags & FLAG_LOCKED) == 0 && IsWindowVisible(object.window);
}

std::vector<HOSTINFO*> ReachableIn(HOSTINFO* root, const HOSTINFO* parent) {
    std::vector<HOSTINFO*> objects;
    for (HOSTINFO* object : a_ListHostinfos(root)) {
        if (object->parent == parent && IsReachable(*object)) {
            objects.push_back(object);
        }
    }
    return objects;
}

RECT PlaceOn(HWND panel, HWND window) {
    RECT place;
    GetWindowRect(window, &place);
    MapWindowPoints(nullptr, panel, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

HOSTINFO* ChildAt(HWND panel, HWND parent, POINT point) {
    for (HWND child = GetWindow(parent, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        HOSTINFO* object = a_FromWindow(child);
        if (!object || !IsReachable(*object)) {
            continue;
        }
        if (const RECT place = PlaceOn(panel, child); PtInRect(&place, point)) {
            return object;
        }
    }
    return nullptr;
}

namespace {

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

void KeepImageSizes(const std::vector<Placement>& before) {
    for (const Placement& placement : before) {
        if (a_IsAlive(placement.object)) {
            KeepImageSize(placement);
        }
    }
}
