#include "Panel/editing/EditCommands.h"

#include "Panel/editing/Clipboard.h"
#include "Panel/editing/Groups.h"
#include "Panel/editing/KnobGroup.h"
#include "Panel/editing/NewControls.h"
#include "Panel/editing/PanelEdits.h"
#include "Panel/editing/Placement.h"
#include "Panel/editing/Selection.h"
#include "Panel/resource.h"
#include "Panelhost/Dialogs.h"
#include "Panelhost/Editing.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/Root.h"
#include "Panelhost/Trace.h"
#include "logic/editing/ComponentText.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <set>

namespace {

constexpr DWORD NEW_STYLE = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS;
constexpr const char* SIZE_LABEL = "Size";
constexpr std::size_t ALIGN_LEAST = 2;
constexpr std::size_t DISTRIBUTE_LEAST = 3;

bool IsAlign(int command) {
    return command >= CMD_ALIGN_LEFT && command <= CMD_ALIGN_CENTRE_DOWN;
}

bool IsSameSize(int command) {
    return command >= CMD_SAME_WIDTH && command <= CMD_SAME_SIZE;
}

// All of the rectangle inside the room, or its left and top edges where it is too large.
logic::Offset Into(const logic::Rectangle& place, SIZE room) {
    const auto along = [](LONG from, LONG to, LONG length) {
        return std::clamp<LONG>(from, 0, std::max(0L, length - (to - from))) - from;
    };
    return {along(place.left, place.right, room.cx), along(place.top, place.bottom, room.cy)};
}

} // namespace

EditCommands::EditCommands(const EditSurface& surface, PanelEdits::Warning warn)
    : panel_(surface.panel),
      edits_(surface.edits),
      selection_(surface.selection),
      grid_(surface.grid),
      warn_(std::move(warn)),
      build_(surface, warn_),
      keys_(surface, build_) {}

// What is possible.

bool EditCommands::IsEnabled(int command) const {
    if (BuildCommands::Has(command)) {
        return build_.IsEnabled(command);
    }
    if (KeyCommands::Has(command)) {
        return keys_.IsEnabled(command);
    }
    const std::size_t count = selection_.Objects().size();
    switch (command) {
    case CMD_UNDO:
        return edits_.History().CanUndo();
    case CMD_REDO:
        return edits_.History().CanRedo();
    case CMD_PASTE:
        return AreComponentsOnClipboard();
    case CMD_SELECT_ALL:
    case CMD_GRID:
    case CMD_PROPERTIES:
        return true;
    case CMD_CUT:
    case CMD_DELETE:
        return count >= 1 && !build_.HasLocked();
    case CMD_DISTRIBUTE_ACROSS:
    case CMD_DISTRIBUTE_DOWN:
        return count >= DISTRIBUTE_LEAST && !build_.HasLocked();
    case CMD_CONNECTIONS:
        return count == 1;
    default:
        return IsAlign(command) || IsSameSize(command) ? count >= ALIGN_LEAST && !build_.HasLocked()
                                                       : count >= 1;
    }
}

bool EditCommands::IsChecked(int command) const {
    return (command == CMD_GRID && grid_.IsOn()) || build_.IsChecked(command);
}

std::string EditCommands::LabelOf(int command) const {
    const std::string undo = edits_.History().UndoLabel();
    const std::string redo = edits_.History().RedoLabel();
    switch (command) {
    case CMD_UNDO:
        return "&Undo" + (undo.empty() ? "" : " " + undo) + "\tCtrl+Z";
    case CMD_REDO:
        return "&Redo" + (redo.empty() ? "" : " " + redo) + "\tCtrl+Y";
    default:
        return {};
    }
}

void EditCommands::Execute(int command) {
    if (BuildCommands::Has(command)) {
        return build_.Execute(command);
    }
    if (KeyCommands::Has(command)) {
        return keys_.Execute(command);
    }
    switch (command) {
    case CMD_UNDO:
        return SelectNames(*edits_.Undo());
    case CMD_REDO:
        return SelectNames(*edits_.Redo());
    case CMD_CUT:
        if (Copy()) {
            edits_.Delete(std::vector<HOSTINFO*>(selection_.Objects()));
        }
        return;
    case CMD_COPY:
        Copy();
        return;
    case CMD_PASTE:
        return PasteFromClipboard(std::nullopt);
    case CMD_DUPLICATE:
        return Duplicate();
    case CMD_DELETE:
        return edits_.Delete(std::vector<HOSTINFO*>(selection_.Objects()));
    case CMD_SELECT_ALL:
        return SelectAll();
    case CMD_DISTRIBUTE_ACROSS:
    case CMD_DISTRIBUTE_DOWN:
        return Distribute(command);
    case CMD_TO_FOREGROUND:
        return Reorder(true);
    case CMD_TO_BACKGROUND:
        return Reorder(false);
    case CMD_GRID:
        grid_.TurnOn(!grid_.IsOn());
        InvalidateRect(panel_, nullptr, TRUE);
        return;
    case CMD_PROPERTIES:
        return OpenProperties();
    case CMD_CONNECTIONS:
        return OpenConnections();
    default:
        if (IsAlign(command)) {
            Align(command);
        } else if (IsSameSize(command)) {
            GiveSameSize(command);
        }
        return;
    }
}

// Selecting.

std::vector<HOSTINFO*> EditCommands::SelectedInOrder() const {
    std::vector<HOSTINFO*> objects;
    for (HOSTINFO* object : a_ListHostinfos(edits_.Root())) {
        if (selection_.Contains(object)) {
            objects.push_back(object);
        }
    }
    return objects;
}

HOSTINFO* EditCommands::FirstControl() const {
    for (HOSTINFO* object : a_ListHostinfos(edits_.Root())) {
        if (object->kind == KIND_CONTROL) {
            return object;
        }
    }
    return nullptr;
}

HOSTINFO* EditCommands::FirstCovered(const HOSTINFO& control) const {
    for (HOSTINFO* object : a_ListHostinfos(edits_.Root())) {
        if (object->kind == KIND_CONTROL && object != &control && object->parent == control.parent &&
            logic::Touches(PlaceOf(*object), PlaceOf(control))) {
            return object;
        }
    }
    return nullptr;
}

void EditCommands::SelectAll() {
    selection_.Set(ReachableIn(edits_.Root(), selection_.Parent(edits_.Root())));
}

void EditCommands::SelectNames(const std::vector<std::string>& names) {
    std::vector<HOSTINFO*> objects;
    for (const std::string& name : names) {
        HOSTINFO* object = edits_.Target().Find(name);
        if (object && object->kind == KIND_CONTROL &&
            (objects.empty() || objects.front()->parent == object->parent)) {
            objects.push_back(object);
        }
    }
    selection_.Set(std::move(objects));
}

// Arranging.

void EditCommands::MoveTo(const std::string& label, const std::vector<logic::Rectangle>& places) {
    const std::vector<Placement> before = PlacementsOf(selection_.Objects());
    std::vector<Placement> now = before;
    for (std::size_t i = 0; i < now.size(); ++i) {
        now[i].place = places[i];
    }
    PlaceObjects(now);
    if (label == SIZE_LABEL) {
        KeepImageSizes(before);
    }
    edits_.CommitPlaces(label, before);
}

void EditCommands::Align(int command) {
    std::vector<logic::Rectangle> places = PlacesOf(PlacementsOf(selection_.Objects()));
    logic::Align(static_cast<logic::Alignment>(command - CMD_ALIGN_LEFT), places);
    MoveTo("Align", places);
}

void EditCommands::GiveSameSize(int command) {
    std::vector<logic::Rectangle> places = PlacesOf(PlacementsOf(selection_.Objects()));
    logic::GiveSameSize(static_cast<logic::SameSize>(command - CMD_SAME_WIDTH), places);
    MoveTo(SIZE_LABEL, places);
}

void EditCommands::Distribute(int command) {
    std::vector<logic::Rectangle> places = PlacesOf(PlacementsOf(selection_.Objects()));
    if (command == CMD_DISTRIBUTE_ACROSS) {
        logic::DistributeAcross(places);
    } else {
        logic::DistributeDown(places);
    }
    MoveTo("Distribute", places);
}

void EditCommands::Reorder(bool toForeground) {
    const std::vector<HOSTINFO*> moved = SelectedInOrder();
    HOSTINFO* first = nullptr; // of the siblings that are not moved
    for (HOSTINFO* object : a_ListHostinfos(edits_.Root())) {
        if (!first && object->kind == KIND_CONTROL && object->parent == moved.front()->parent &&
            !selection_.Contains(object)) {
            first = object;
        }
    }
    if (!first) {
        return; // there is nothing to be before or behind
    }
    build_.MoveBefore(toForeground ? "Move To Foreground" : "Move To Background", moved,
                      toForeground ? first : nullptr);
}

// Making and copying.

void EditCommands::Create(const CatalogueEntry& entry, std::optional<POINT> corner) {
    POINT place{};
    if (corner) {
        place = *corner;
    } else {
        RECT view;
        GetClientRect(GetParent(panel_), &view);
        place = {view.right / 2, view.bottom / 2};
        MapWindowPoints(GetParent(panel_), panel_, &place, 1);
        const auto onGrid = [](LONG middle, LONG size) {
            return (middle - size / 2) / EditGrid::SPACING * EditGrid::SPACING;
        };
        place = {onGrid(place.x, entry.size.cx), onGrid(place.y, entry.size.cy)};
        // Several in a row do not hide each other.
        while (HOSTINFO* there = ChildAt(panel_, panel_, place)) {
            if (there->rectangle.left != place.x || there->rectangle.top != place.y) {
                break;
            }
            place = {place.x + EditGrid::SPACING, place.y + EditGrid::SPACING};
        }
    }
    if (std::strcmp(entry.className, "KNOB") == 0) {
        const COLORREF ground =
            GroundOf(panel_, {place.x, place.y, place.x + entry.size.cx, place.y + entry.size.cy});
        const KnobGroup group = MakeKnobGroup(a_IsDark(edits_.Root()) || IsDarkGround(ground),
                                              a_ArtScale(edits_.Root()), ArtFor(entry.className, ground));
        Paste(group.lines, POINT{place.x - group.left, place.y - group.top}, 0,
              (std::string("New ") + entry.name).c_str(), false);
        SetFocus(panel_);
        return;
    }
    RECT client;
    GetClientRect(panel_, &client);
    const logic::Offset into = Into({place.x, place.y, place.x + entry.size.cx, place.y + entry.size.cy},
                                    {client.right, client.bottom});
    place = {place.x + into.x, place.y + into.y};

    const RECT under{place.x, place.y, place.x + entry.size.cx, place.y + entry.size.cy};
    const std::vector<std::string> art = ArtFor(entry.className, GroundOf(panel_, under));
    const std::string name =
        logic::FreeName(std::string(entry.name) + " 1",
                        [&](const std::string& candidate) { return edits_.Target().Exists(candidate); });
    edits_.Do(std::string("New ") + entry.name, {}, [&] {
        const HWND window = CreateWindowExA(
            0, entry.className, name.c_str(), NEW_STYLE | (entry.operable ? WS_TABSTOP : 0), place.x, place.y,
            entry.size.cx, entry.size.cy, panel_, nullptr, nullptr, edits_.Root());
        HOSTINFO* created = a_FromWindow(window);
        if (!created) {
            EDITTRACE(edits_.Root(), "Cannot create %s", name.c_str());
            return std::vector<HOSTINFO*>{};
        }
        GiveArt(*created, art);
        if (HOSTINFO* covered = FirstCovered(*created)) {
            a_MoveBefore(created, covered); // last, but where it is seen
        }
        selection_.Set({created});
        return std::vector<HOSTINFO*>{created};
    });
    SetFocus(panel_);
}

std::optional<std::string> EditCommands::SelectedText() const {
    std::vector<HOSTINFO*> objects;
    for (HOSTINFO* object : a_ListHostinfos(edits_.Root())) {
        // A control comes with all that is inside it.
        for (const HOSTINFO* above = object; above; above = above->parent) {
            if (selection_.Contains(above)) {
                objects.push_back(object);
                break;
            }
        }
    }
    std::vector<std::string> texts;
    if (a_ObjectTexts(objects, &texts) == 0) {
        warn_("The selection cannot be copied: its properties cannot be read.");
        return std::nullopt;
    }
    std::string all;
    for (const std::string& text : texts) {
        all += text;
    }
    return all;
}

bool EditCommands::Copy() const {
    const std::optional<std::string> text = SelectedText();
    if (!text || text->empty()) {
        return false;
    }
    if (!CopyComponents(panel_, *text)) {
        warn_("The selection cannot be copied: the clipboard does not take it.");
        return false;
    }
    return true;
}

void EditCommands::Duplicate() {
    if (const std::optional<std::string> text = SelectedText()) {
        Paste(*text, std::nullopt, 1, "Duplicate");
    }
}

void EditCommands::PasteFromClipboard(std::optional<POINT> corner) {
    const std::string text = ComponentsOnClipboard(panel_);
    pastes_ = text == pastedText_ ? pastes_ + 1 : 1;
    pastedText_ = text;
    Paste(text, corner, pastes_, "Paste");
}

void EditCommands::Paste(const std::string& text, std::optional<POINT> corner, int steps, const char* label,
                         bool inFront) {
    std::vector<std::string> damaged;
    std::vector<logic::Component> components = logic::ReadComponents(text, damaged);
    for (const std::string& line : damaged) {
        EDITTRACE(edits_.Root(), "Not pasted: %s", line.c_str());
    }
    if (components.empty()) {
        return;
    }
    std::set<std::string> given;
    std::vector<std::string> names;
    for (const logic::Component& component : components) {
        names.push_back(logic::FreeName(component.header.name, [&](const std::string& candidate) {
            return edits_.Target().Exists(candidate) || given.contains(logic::FoldName(candidate));
        }));
        given.insert(logic::FoldName(names.back()));
    }
    logic::RenameComponents(components, names);
    std::set<logic::GroupNumber> groups = GroupsIn(edits_.Root(), edits_.Root());
    logic::GiveOwnGroups(components, groups);

    const logic::Rectangle bounds = logic::ComponentBounds(components);
    const int step = EditGrid::SPACING * steps;
    const logic::Offset by =
        corner ? logic::Offset{corner->x - bounds.left, corner->y - bounds.top} : logic::Offset{step, step};
    RECT client;
    GetClientRect(panel_, &client);
    const logic::Offset into = Into(logic::Moved(bounds, by), {client.right, client.bottom});
    logic::MoveComponents(components, {by.x + into.x, by.y + into.y});

    edits_.Do(label, {}, [&] {
        HOSTINFO* first = FirstControl();
        a_LoadText(edits_.Root(), logic::ComponentsText(components), "Clipboard");
        std::vector<HOSTINFO*> created;
        for (const logic::Component& component : components) {
            if (HOSTINFO* object = edits_.Target().Find(component.name)) { // a class may be unknown here
                edits_.Target().Place(component.name, component.header.rectangle);
                // What is new comes last, but where it is seen.
                if (HOSTINFO* other = inFront ? first : FirstCovered(*object)) {
                    a_MoveBefore(object, other);
                }
                created.push_back(object);
            }
        }
        selection_.Set(created);
        return created;
    });
}

// Dialogs.

void EditCommands::OpenProperties() {
    HOSTINFO* object = selection_.IsEmpty() ? edits_.Root() : selection_.Objects().front();
    if (IsWindow(object->dialog)) {
        SetForegroundWindow(object->dialog);
        return;
    }
    HWND dialog = nullptr;
    if (object != edits_.Root()) {
        SendMessageA(object->window, CWM_PARAMETERDLG, 0, reinterpret_cast<LPARAM>(&dialog));
    }
    if (!dialog && a_IsAlive(object)) {
        object->dialog = a_PropertyDlg(1, object->window, object);
    }
}

void EditCommands::OpenConnections() {
    HOSTINFO* object = selection_.Objects().front();
    a_ConnectionDlg(1, object->window, object);
}
