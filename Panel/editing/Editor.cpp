// The edit mode: what reaches it, and what it does at once. What the mouse does is in EditorMouse.cpp.

#include "Panel/editing/Editor.h"

#include "Panel/editing/Groups.h"
#include "Panel/resource.h"
#include "Panelhost/Editing.h"
#include "Panelhost/HostInterface.h"
#include "Panelhost/Hostinfo.h"
#include "base/Gdi.h"
#include "Panelhost/Root.h"
#include "logic/drawing/PanelColours.h"

#include <windowsx.h>

#include <utility>

namespace {

constexpr COLORREF GHOST_COLOUR = logic::PANEL_ACCENT;
constexpr int INSIDE_FRAME = 3; // pixels around what was entered
constexpr int POINTER_WIDTH = 2;
constexpr ULONGLONG POINTING = 2000;                                  // milliseconds
constexpr WPARAM PROPERTY_CLICK = MK_RBUTTON | MK_SHIFT | MK_CONTROL; // the control's own

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

// Pointing.

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

void Editor::Choose(std::vector<HOSTINFO*> objects) {
    Select(Taken(std::move(objects), selection_.Objects()));
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
        const std::string count = std::to_string(objects.size());
        text = IsGroup(edits_.Root(), objects) ? "Group of " + count : count + " selected";
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
