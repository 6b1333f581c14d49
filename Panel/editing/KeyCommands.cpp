#include "Panel/editing/KeyCommands.h"

#include "Panel/editing/BuildCommands.h"
#include "Panel/editing/Placement.h"
#include "Panel/editing/SizeGesture.h"
#include "Panel/resource.h"
#include "Panelhost/Hostinfo.h"

#include <algorithm>

namespace {

// In the order of the commands: left, up, right, down.
logic::Offset Towards(int direction, int step) {
    const int by = direction < 2 ? -step : step;
    return direction % 2 == 0 ? logic::Offset{by, 0} : logic::Offset{0, by};
}

} // namespace

bool KeyCommands::Has(int command) {
    return command >= CMD_KEYS_FIRST && command <= CMD_KEYS_LAST;
}

int KeyCommands::CommandOf(WPARAM key, bool shift, bool control) {
    if (key == VK_ESCAPE) {
        return CMD_SELECT_NONE;
    }
    if (key == VK_TAB) {
        return shift ? CMD_SELECT_PREVIOUS : CMD_SELECT_NEXT;
    }
    if (key < VK_LEFT || key > VK_DOWN) {
        return 0;
    }
    const int first = control ? CMD_NARROWER : shift ? CMD_STEP_LEFT : CMD_MOVE_LEFT;
    return first + static_cast<int>(key - VK_LEFT);
}

bool KeyCommands::IsEnabled(int command) const {
    return command == CMD_SELECT_NEXT || command == CMD_SELECT_PREVIOUS ||
           (!surface_.selection.IsEmpty() && (command == CMD_SELECT_NONE || !build_.HasLocked()));
}

void KeyCommands::Execute(int command) const {
    if (command == CMD_SELECT_NONE) {
        surface_.selection.Clear();
    } else if (command <= CMD_SELECT_PREVIOUS) {
        SelectNeighbour(command == CMD_SELECT_PREVIOUS);
    } else if (command < CMD_STEP_LEFT) {
        Move(Towards(command - CMD_MOVE_LEFT, 1), command);
    } else if (command < CMD_NARROWER) {
        Move(Towards(command - CMD_STEP_LEFT, EditGrid::SPACING), command);
    } else {
        Size(Towards(command - CMD_NARROWER, 1), command);
    }
}

void KeyCommands::Move(logic::Offset by, int command) const {
    const std::vector<Placement> before = PlacementsOf(surface_.selection.Objects());
    const SIZE room = RoomAround(*before.front().object);
    by = logic::ReachableMove(by, PlacesOf(before), room.cx, room.cy);
    std::vector<Placement> now = before;
    for (Placement& placement : now) {
        placement.place = logic::Moved(placement.place, by);
    }
    PlaceObjects(now);
    surface_.edits.CommitPlaces("Move", before, command);
}

void KeyCommands::Size(logic::Offset by, int command) const {
    const std::vector<Placement> before = PlacementsOf(surface_.selection.Objects());
    std::vector<Placement> now = before;
    for (Placement& placement : now) {
        placement.place =
            logic::Sized(placement.place, logic::Handle::BottomRight, by, SizeGesture::LEAST_SIZE);
    }
    PlaceObjects(now);
    KeepImageSizes(before);
    surface_.edits.CommitPlaces("Size", before, command);
}

void KeyCommands::SelectNeighbour(bool backwards) const {
    Selection& selection = surface_.selection;
    const HOSTINFO* current = selection.IsEmpty() ? nullptr : selection.Objects().back();
    const std::vector<HOSTINFO*> siblings =
        ReachableIn(surface_.edits.Root(), selection.Parent(surface_.edits.Root()));
    if (siblings.empty()) {
        return;
    }
    const auto at = std::find(siblings.begin(), siblings.end(), current);
    const std::size_t count = siblings.size();
    std::size_t next = backwards ? count - 1 : 0;
    if (at != siblings.end()) {
        next = (static_cast<std::size_t>(at - siblings.begin()) + (backwards ? count - 1 : 1)) % count;
    }
    selection.Set({siblings[next]});
}
