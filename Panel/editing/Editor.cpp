// Mouse and keys of the edit mode.

#include "Panel/editing/Editor.h"

#include "Panel/editing/Clipboard.h"
#include "Panel/editing/ContextMenu.h"
#include "Panel/editing/MoveGesture.h"
#include "Panel/editing/PanelSizeGesture.h"
#include "Panel/editing/RubberBand.h"
#include "Panel/editing/SizeGesture.h"
#include "Panel/resource.h"
#include "Panelhost/Editing.h"
#include "Panelhost/HostInterface.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/Operating.h"
#include "base/Gdi.h"
#include "Panelhost/Root.h"
#include "logic/drawing/PanelColours.h"

#include <windowsx.h>

#include <cstdlib>
#include <utility>

namespace {

constexpr COLORREF GHOST_COLOUR = logic::PANEL_ACCENT;
constexpr int INSIDE_FRAME = 3; // pixels around what was entered
constexpr int POINTER_WIDTH = 2;
constexpr ULONGLONG POINTING = 2000;      // milliseconds
constexpr int PANEL_EDGE = 4;             // pixels
constexpr UINT_PTR SCROLL_TIMER = 0x5C01; // of the panel window, which has no other of that number
constexpr UINT SCROLL_PERIOD = 40;        // milliseconds
constexpr int SCROLL_BORDER = 12;         // pixels
constexpr WPARAM PROPERTY_CLICK = MK_RBUTTON | MK_SHIFT | MK_CONTROL; // the control's own

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

POINT PointOf(LPARAM lParam) {
    return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
}

} // namespace

Editor::Editor(HWND panel, HOSTINFO* root, PanelEdits::Warning warn)
    : panel_(panel),
      edits_(root, warn),
      lines_(panel),
      surface_{panel_, edits_, selection_, grid_, lines_},
      commands_(surface_, std::move(warn)) {}

Editor::~Editor() = default;

void Editor::SetActive(bool active) {
    if (active == active_) {
        return;
    }
    FinishGesture(true);
    selection_.Clear();
    StopPointing();
    active_ = active;
    a_SetEditedLayers(edits_.Root(), 0);
    ph_SetMode(edits_.Root(), active ? 1 : 0);
    if (active && GetFocus() && IsChild(GetAncestor(panel_, GA_ROOT), GetFocus())) {
        SetFocus(panel_); // no control may have it meanwhile
    }
}

bool Editor::Translate(const MSG& message) {
    if (!active_ || !IsChild(panel_, message.hwnd)) {
        return false;
    }
    if (message.message == WM_KEYDOWN || message.message == WM_KEYUP || message.message == WM_CHAR) {
        SetFocus(panel_);
        SendMessageA(panel_, message.message, message.wParam, message.lParam);
        return true;
    }
    if (message.message == WM_MOUSEWHEEL || message.message == WM_MOUSEHWHEEL) {
        SendMessageA(panel_, message.message, message.wParam, message.lParam); // which its view scrolls by
        return true;
    }
    const bool isMouse = message.message >= WM_MOUSEFIRST && message.message < WM_MOUSEWHEEL;
    if (!isMouse || (message.message == WM_RBUTTONDOWN && message.wParam == PROPERTY_CLICK)) {
        return false;
    }
    POINT point = PointOf(message.lParam);
    MapWindowPoints(message.hwnd, panel_, &point, 1);
    SendMessageA(panel_, message.message, message.wParam, MAKELPARAM(point.x, point.y));
    return true;
}

bool Editor::OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    result = 0;
    if (locked_ && message >= WM_KEYFIRST && message <= WM_MOUSELAST) {
        return active_;
    }
    if (!active_) {
        if (message == WM_RBUTTONDOWN) {
            RightPress(PointOf(lParam));
            return true;
        }
        return false;
    }
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        Press(PointOf(lParam), wParam, message == WM_LBUTTONDBLCLK);
        return true;
    case WM_MOUSEMOVE:
        if (gesture_ && (wParam & MK_LBUTTON) == 0) {
            FinishGesture(false); // the release went elsewhere
        } else if (gesture_) {
            POINT point = PointOf(lParam);
            gesture_->Move(point);
            ClientToScreen(panel_, &point);
            draggedTo_ = point;
        } else {
            Hover(PointOf(lParam));
        }
        return false; // the panel wants to know, too
    case WM_TIMER:
        if (wParam == SCROLL_TIMER) {
            ScrollAtBorder();
        }
        return wParam == SCROLL_TIMER;
    case WM_LBUTTONUP:
        FinishGesture(false);
        return true;
    case WM_CAPTURECHANGED:
        if (reinterpret_cast<HWND>(lParam) != panel_) {
            FinishGesture(true);
        }
        return true;
    case WM_CANCELMODE:
        FinishGesture(true);
        return false;
    case WM_SETCURSOR:
        if (LOWORD(lParam) == HTCLIENT) {
            POINT point;
            GetCursorPos(&point);
            ScreenToClient(panel_, &point);
            Hover(point);
            result = TRUE;
            return true;
        }
        return false;
    case WM_RBUTTONDOWN:
        RightPress(PointOf(lParam));
        return true;
    case WM_KEYDOWN:
        return OnKey(wParam);
    case WM_PAINT:
        Paint();
        return true;
    default:
        return false;
    }
}

void Editor::Paint() {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(panel_, &paint);
    grid_.Draw(dc, paint.rcPaint);
    RECT client;
    GetClientRect(panel_, &client);
    a_DrawMissingPicture(edits_.Root(), dc, client);
    if (const HOSTINFO* inside = selection_.Inside()) {
        const Brush brush(CreateSolidBrush(logic::PANEL_ACCENT));
        RECT frame = PlaceOn(panel_, inside->window);
        for (int i = 0; i < INSIDE_FRAME; ++i) {
            InflateRect(&frame, 1, 1);
            FrameRect(dc, &frame, brush.get());
        }
    }
    EndPaint(panel_, &paint);
}

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
    if (adds) {
        return control ? selection_.Toggle(object) : selection_.Add(object);
    }
    if (!selection_.Contains(object)) {
        selection_.Set({object});
    }
    if (commands_.Build().HasLocked()) {
        return;
    }
    StartGesture(std::make_unique<MoveGesture>(surface_, object, point));
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
        selection_.Set({object});
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
    const logic::Offset by = logic::SnapMove(place, {}, surface_.Snapping()).by;
    const POINT corner{point.x + by.x, point.y + by.y};
    std::vector<OverlayLines::Line> outline;
    OverlayLines::AddFrame(outline, {corner.x, corner.y, corner.x + entry.size.cx, corner.y + entry.size.cy},
                           GHOST_COLOUR);
    lines_.Show(outline);
    return corner;
}

void Editor::PointAt(HOSTINFO* control) {
    FinishGesture(true);
    if (active_) {
        return selection_.Set({control});
    }
    RECT frame = PlaceOn(panel_, control->window);
    std::vector<OverlayLines::Line> outline;
    for (int width = 0; width < POINTER_WIDTH; ++width) {
        InflateRect(&frame, 1, 1);
        OverlayLines::AddFrame(outline, frame, GHOST_COLOUR);
    }
    lines_.Show(outline);
    pointsUntil_ = GetTickCount64() + POINTING;
}

void Editor::StopPointing() {
    if (pointsUntil_ != 0) {
        pointsUntil_ = 0;
        lines_.Hide();
    }
}

void Editor::Tick() {
    if (GetTickCount64() >= pointsUntil_) {
        StopPointing();
    }
}

// Commands.

int Editor::Apply(const std::string& label, const std::vector<PanelEdits::Line>& lines) {
    if (locked_ || !active_) {
        return 0;
    }
    FinishGesture(true);
    return edits_.Apply(label, lines);
}

bool Editor::IsEnabled(int command) const {
    return command == CMD_EDIT_MODE || (active_ && commands_.IsEnabled(command));
}

bool Editor::IsChecked(int command) const {
    return command == CMD_EDIT_MODE ? active_ : commands_.IsChecked(command);
}

void Editor::Execute(int command) {
    if (locked_ || !IsEnabled(command)) {
        return;
    }
    if (gesture_) {
        FinishGesture(true);
    }
    if (command == CMD_EDIT_MODE) {
        SetActive(!active_);
    } else {
        commands_.Execute(command);
    }
}

void Editor::Create(const CatalogueEntry& entry, std::optional<POINT> corner) {
    if (active_ && !locked_) {
        FinishGesture(true);
        commands_.Create(entry, corner);
    }
}

void Editor::Select(std::vector<HOSTINFO*> objects) {
    FinishGesture(true);
    selection_.Set(std::move(objects));
    InvalidateRect(panel_, nullptr, TRUE);
}

void Editor::MoveBefore(const std::vector<HOSTINFO*>& objects, HOSTINFO* other) {
    if (MayChange()) {
        commands_.Build().MoveBefore("Change of Order", objects, other);
    }
}

void Editor::Hide(const std::vector<HOSTINFO*>& objects, bool hidden) {
    FinishGesture(true);
    commands_.Build().Hide(objects, hidden);
}

void Editor::Lock(const std::vector<HOSTINFO*>& objects, bool locked) {
    FinishGesture(true);
    commands_.Build().Lock(objects, locked);
}

std::string Editor::StatusText() const {
    const auto& objects = selection_.Objects();
    if (objects.empty() && selection_.Inside()) {
        return "Inside " + selection_.Inside()->name + ": Escape leaves it";
    }
    if (objects.empty()) {
        return "Edit: click or drag to select, drag from the list at the left to add" +
               std::string(a_GetEditedLayers(edits_.Root()) != 0 ? "   (some layers are hidden)" : "");
    }
    const logic::Rectangle place = logic::Bounds(PlacesOf(PlacementsOf(objects)));
    std::string text;
    if (objects.size() == 1) {
        char className[64] = "";
        GetClassNameA(objects.front()->window, className, sizeof className);
        text = objects.front()->name + "   " + className;
        if (const std::string picture = a_MissingPicture(objects.front()); !picture.empty()) {
            text += "   picture missing: " + picture;
        }
    } else {
        text = std::to_string(objects.size()) + " selected";
    }
    return text + "   " + std::to_string(place.left) + "," + std::to_string(place.top) + "   " +
           std::to_string(place.right - place.left) + " x " + std::to_string(place.bottom - place.top);
}

// Keys.

bool Editor::OnKey(WPARAM key) {
    if (key == VK_ESCAPE && gesture_) {
        FinishGesture(true);
        return true;
    }
    if (key == VK_ESCAPE && selection_.Inside()) {
        commands_.Execute(CMD_LEAVE);
        return true;
    }
    const int command = KeyCommands::CommandOf(key, GetKeyState(VK_SHIFT) < 0, GetKeyState(VK_CONTROL) < 0);
    if (command != 0 && !gesture_ && commands_.IsEnabled(command)) {
        commands_.Execute(command);
    }
    return command != 0;
}
