#pragma once

#include "logic/editing/EditGeometry.h"

#include <windows.h>

#include <vector>

class HOSTINFO;

// Where a control stands or is to stand, in its parent's client area.
struct Placement {
    HOSTINFO* object;
    logic::Rectangle place;
};

logic::Rectangle PlaceOf(const HOSTINFO& object);
std::vector<Placement> PlacementsOf(const std::vector<HOSTINFO*>& objects);
std::vector<logic::Rectangle> PlacesOf(const std::vector<Placement>& placements);
// Moves and sizes siblings all at once and shows them before it returns, so that they follow the mouse.
void PlaceObjects(const std::vector<Placement>& placements);
// After they were sized: those that take their size from an image are where they were.
void KeepImageSizes(const std::vector<Placement>& before);
// The client area of what holds the object.
SIZE RoomAround(const HOSTINFO& object);
// All visible controls beside the given siblings, in the same client area.
std::vector<logic::Rectangle> Neighbours(const std::vector<HOSTINFO*>& objects);
// Of all visible controls of a window, but for some.
std::vector<logic::Rectangle> PlacesIn(HWND parent, const std::vector<HOSTINFO*>& except);
// Whether the mouse reaches a control of an edited panel: it is seen and not locked.
bool IsReachable(const HOSTINFO& object);
// Those with that parent, in their order.
std::vector<HOSTINFO*> ReachableIn(HOSTINFO* root, const HOSTINFO* parent);
// The reachable control inside a window, at a point of the panel; null where there is none.
HOSTINFO* ChildAt(HWND panel, HWND parent, POINT point);
// A window in client coordinates of the panel.
RECT PlaceOn(HWND panel, HWND window);
