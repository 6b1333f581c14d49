// What the mouse does on an edited panel.

#include "Panel/editing/Clipboard.h"
#include "Panel/editing/ContextMenu.h"
#include "Panel/editing/Editor.h"
#include "Panel/editing/Groups.h"
#include "Panel/editing/MoveGesture.h"
#include "Panel/editing/PanelSizeGesture.h"
#include "Panel/editing/RubberBand.h"
#include "Panel/editing/SizeGesture.h"
#include "Panel/resource.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/Operating.h"
#include "Panelhost/Root.h"
#include "logic/drawing/PanelColours.h"

#include <cstdlib>
#include <utility>

namespace {

constexpr COLORREF GHOST_COLOUR = logic::PANEL_ACCENT;
constexpr int PANEL_EDGE = 4;      // pixels
constexpr UINT SCROLL_PERIOD = 40; // milliseconds
constexpr int SCROLL_BORDER = 12;  // pixels

const char* CursorOf(logic::Handle handle) {
    switch (handle) {
    case logic::Handle::TopLeft:
    case logic::Handle::BottomRight:
        return IDC_SIZENWSE;
    case logic::Handle::TopRight:
    case logic::Handle::BottomLeft:
        return IDC_SIZENESW;
    case logic::Handle::Top:
    case logic::Handle::Bottom:
        return IDC_SIZENS;
    case logic::Handle::Left:
    case logic::Handle::Right:
        return IDC_SIZEWE;
    default:
        return IDC_ARROW;
    }
}

} // namespace

// What is where.

// A control directly on the panel, or inside the one that was entered.
HOSTINFO* Editor::ObjectAt(POINT point) const {
    const HOSTINFO* inside = selection_.Inside();
    return ChildAt(panel_, inside ? inside->window : panel_, point);
}

// What was entered is left by a press beside it.
void Editor::LeaveUnlessAt(POINT point) {
    for (const HOSTINFO* inside = selection_.Inside(); inside; inside = selection_.Inside()) {
        if (const RECT place = PlaceOn(panel_, inside->window); PtInRect(&place, point)) {
            return;
        }
        commands_.Build().Enter(inside->parent);
    }
}

logic::Handle Editor::HandleAt(POINT point, HOSTINFO*& object) const {
    if (commands_.Build().HasLocked()) {
        return logic::Handle::None;
    }
    for (HOSTINFO* selected : selection_.Objects()) {
        const RECT place = PlaceOn(panel_, selected->window);
        const logic::Handle handle =
            logic::HandleAt({place.left, place.top, place.right, place.bottom}, {point.x, point.y});
        if (handle != logic::Handle::None) {
            object = selected;
            return handle;
        }
    }
    return logic::Handle::None;
}

// The right and lower edges of the panel, by which its size is dragged.
logic::Handle Editor::PanelEdgeAt(POINT point) const {
    RECT client;
    GetClientRect(panel_, &client);
    const bool isRight = point.x >= client.right - PANEL_EDGE && point.x < client.right;
    const bool isBottom = point.y >= client.bottom - PANEL_EDGE && point.y < client.bottom;
    return isRight && isBottom ? logic::Handle::BottomRight
           : isRight           ? logic::Handle::Right
           : isBottom          ? logic::Handle::Bottom
                               : logic::Handle::None;
}

// Mouse.

void Editor::Hover(POINT point) {
    if (!gesture_) { // which keeps the cursor it began with
        HOSTINFO* object = nullptr;
        const HOSTINFO* pressed = ObjectAt(point);
        logic::Handle handle = HandleAt(point, object);
        if (handle == logic::Handle::None && !pressed) {
            handle = PanelEdgeAt(point);
        }
        const char* cursor =
            handle == logic::Handle::None && selection_.Contains(pressed) ? IDC_SIZEALL : CursorOf(handle);
        SetCursor(LoadCursorA(nullptr, cursor));
    }
}

void Editor::StartGesture(std::unique_ptr<Gesture> gesture) {
    gesture_ = std::move(gesture);
    draggedTo_.reset();
    SetCapture(panel_);
    SetTimer(panel_, SCROLL_TIMER, SCROLL_PERIOD, nullptr);
}

void Editor::ScrollAtBorder() {
    const HWND view = GetParent(panel_);
    RECT area;
    GetClientRect(view, &area);
    InflateRect(&area, -SCROLL_BORDER, -SCROLL_BORDER);
    MapWindowPoints(view, nullptr, reinterpret_cast<POINT*>(&area), 2);
    if (!gesture_ || !draggedTo_ || PtInRect(&area, *draggedTo_)) {
        return;
    }
    const auto step = [](LONG at, LONG low, LONG high) { // nothing between the two
        return at < low ? std::optional(SB_LINEUP) : at >= high ? std::optional(SB_LINEDOWN) : std::nullopt;
    };
    RECT before;
    RECT after;
    GetWindowRect(panel_, &before);
    if (const auto across = step(draggedTo_->x, area.left, area.right)) {
        SendMessageA(view, WM_HSCROLL, static_cast<WPARAM>(*across), 0);
    }
    if (const auto down = step(draggedTo_->y, area.top, area.bottom)) {
        SendMessageA(view, WM_VSCROLL, static_cast<WPARAM>(*down), 0);
    }
    GetWindowRect(panel_, &after);
    if (gesture_ && !EqualRect(&before, &after)) {
        POINT point = *draggedTo_;
        ScreenToClient(panel_, &point);
        gesture_->Move(point);
    }
}

void Editor::FinishGesture(bool cancelled) {
    if (!gesture_) {
        return;
    }
    const std::unique_ptr<Gesture> gesture = std::move(gesture_); // losing the capture is no cancellation now
    KillTimer(panel_, SCROLL_TIMER);
    if (GetCapture() == panel_) {
        ReleaseCapture();
    }
    if (cancelled) {
        gesture->Cancel();
    } else {
        gesture->End();
    }
}

// Whole groups of those that the user has chosen; Alt reaches single ones of them.
std::vector<HOSTINFO*> Editor::Taken(std::vector<HOSTINFO*> chosen,
                                     const std::vector<HOSTINFO*>& before) const {
    return GetKeyState(VK_MENU) < 0 ? chosen : WithGroups(edits_.Root(), std::move(chosen), before);
}

void Editor::Press(POINT point, WPARAM keys, bool isDouble) {
    const bool control = (keys & MK_CONTROL) != 0;
    const bool adds = control || (keys & MK_SHIFT) != 0;
    FinishGesture(false);
    SetFocus(panel_);
    LeaveUnlessAt(point);
    HOSTINFO* object = ObjectAt(point);
    const LONG now = GetMessageTime();
    isDouble = isDouble || (pressTime_ != 0 && static_cast<UINT>(now - pressTime_) <= GetDoubleClickTime() &&
                            std::abs(point.x - pressPoint_.x) < GetSystemMetrics(SM_CXDOUBLECLK) &&
                            std::abs(point.y - pressPoint_.y) < GetSystemMetrics(SM_CYDOUBLECLK));
    const bool again = isDouble && object && object == pressed_ && !adds;
    pressed_ = object;
    pressPoint_ = point;
    pressTime_ = again ? 0 : now; // a third press begins anew
    if (again && DoublePress(object, point)) {
        return;
    }

    HOSTINFO* grasped = nullptr;
    const logic::Handle handle = adds ? logic::Handle::None : HandleAt(point, grasped);
    if (handle != logic::Handle::None) {
        return StartGesture(std::make_unique<SizeGesture>(surface_, grasped, handle, point));
    }
    if (const logic::Handle edge = PanelEdgeAt(point); !object && !adds && edge != logic::Handle::None) {
        return StartGesture(std::make_unique<PanelSizeGesture>(surface_, edge, point));
    }
    if (!object) {
        return StartGesture(std::make_unique<RubberBand>(surface_, point, adds));
    }
    const std::vector<HOSTINFO*> before = selection_.Objects();
    if (adds) {
        if (control) {
            selection_.Toggle(object);
        } else {
            selection_.Add(object);
        }
        return selection_.Set(Taken(selection_.Objects(), before));
    }
    std::vector<HOSTINFO*> clicked = Taken({object}, before);
    if (!selection_.Contains(object)) {
        selection_.Set(clicked);
    }
    if (commands_.Build().HasLocked()) {
        return;
    }
    StartGesture(std::make_unique<MoveGesture>(surface_, object, std::move(clicked), point));
}

// Into a control that has parts, else its properties.
bool Editor::DoublePress(HOSTINFO* object, POINT point) {
    selection_.Set({object});
    if (!commands_.IsEnabled(CMD_ENTER)) {
        commands_.Execute(CMD_PROPERTIES);
        return true;
    }
    commands_.Build().Enter(object);
    if (HOSTINFO* part = ObjectAt(point)) {
        selection_.Set({part});
        pressed_ = part;
    }
    return true;
}

void Editor::RightPress(POINT point) {
    FinishGesture(true);
    POINT screen = point;
    ClientToScreen(panel_, &screen);
    HOSTINFO* object = ObjectAt(point);
    if (!active_ && a_IsOnlyOperated(edits_.Root())) {
        return;
    }
    if (!active_) {
        for (HOSTINFO* part = object; part; part = ChildAt(panel_, part->window, point)) {
            object = part;
        }
        if (object) {
            OfferControlMenu(panel_, screen, object->window);
        }
        return;
    }
    SetFocus(panel_);
    LeaveUnlessAt(point);
    object = ObjectAt(point);
    if (!object) {
        selection_.Clear();
    } else if (!selection_.Contains(object)) {
        selection_.Set(Taken({object}, selection_.Objects()));
    }
    const int command =
        AskEditMenu(panel_, screen, object ? object->window : nullptr, AreComponentsOnClipboard());
    if (command == CMD_PASTE) {
        commands_.PasteFromClipboard(point);
    } else if (command != 0) {
        Execute(command);
    }
}

std::optional<POINT> Editor::ShowGhost(const CatalogueEntry& entry, POINT screen) {
    RECT view;
    GetWindowRect(GetParent(panel_), &view);
    RECT panel;
    GetWindowRect(panel_, &panel);
    if (!active_ || !PtInRect(&view, screen) || !PtInRect(&panel, screen)) {
        lines_.Hide();
        return std::nullopt;
    }
    POINT point = screen;
    ScreenToClient(panel_, &point);
    const logic::Rectangle place{point.x, point.y, point.x + entry.size.cx, point.y + entry.size.cy};
    const logic::Snap snap = logic::SnapMove(place, PlacesIn(panel_, {}), surface_.Snapping());
    const POINT corner{point.x + snap.by.x, point.y + snap.by.y};
    std::vector<OverlayLines::Line> outline = surface_.LinesOf(snap.guides, panel_);
    OverlayLines::AddFrame(outline, {corner.x, corner.y, corner.x + entry.size.cx, corner.y + entry.size.cy},
                           GHOST_COLOUR);
    lines_.Show(outline);
    return corner;
}
