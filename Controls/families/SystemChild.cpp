#include "Controls/families/SystemChild.h"

#include <windowsx.h>

bool PassPress(const CONTROLPROPERTIES& control, const ChildMessage& of) {
    constexpr WPARAM PROPERTY_CLICK = MK_RBUTTON | MK_SHIFT | MK_CONTROL;
    const UINT message = of.message;
    if (message < WM_MOUSEFIRST || message > WM_MBUTTONDBLCLK ||
        !(control.mode != 0 || (message == WM_LBUTTONDOWN && IsPanelClick(control, of.wParam)) ||
          (message == WM_RBUTTONDOWN && of.wParam == PROPERTY_CLICK))) {
        return false;
    }
    POINT place{GET_X_LPARAM(of.lParam), GET_Y_LPARAM(of.lParam)};
    MapWindowPoints(of.window, control.window, &place, 1);
    // The control's own class knows no double clicks.
    const UINT passed = message == WM_LBUTTONDBLCLK   ? WM_LBUTTONDOWN
                        : message == WM_RBUTTONDBLCLK ? WM_RBUTTONDOWN
                                                      : message;
    SendMessageA(control.window, passed, of.wParam, MAKELPARAM(place.x, place.y));
    return true;
}

namespace {

bool HasFrame(HWND child) {
    RECT whole;
    RECT inside;
    GetWindowRect(child, &whole);
    GetClientRect(child, &inside);
    return whole.right - whole.left != inside.right || whole.bottom - whole.top != inside.bottom;
}

} // namespace

void DrawSelectionOver(const CONTROLPROPERTIES& control, HWND child) {
    POINT origin{};
    MapWindowPoints(child, control.window, &origin, 1);
    const HDC dc = GetDC(child);
    SetViewportOrgEx(dc, -origin.x, -origin.y, nullptr);
    a_DrawSelection(&control, dc);
    ReleaseDC(child, dc);
}

std::optional<LRESULT> HandleAsPart(CONTROLPROPERTIES& control, const ChildMessage& of) {
    const bool isOperation =
        (of.message >= WM_KEYFIRST && of.message <= WM_KEYLAST) || of.message == WM_MOUSEWHEEL;
    if (PassPress(control, of) || (isOperation && PassInput(control, of.message, of.wParam, of.lParam))) {
        return 0;
    }
    switch (of.message) {
    case WM_MOUSEMOVE:
        if (GetCapture() != of.window) {
            SendMessageA(control.window, WM_MOUSEMOVE, of.wParam, of.lParam); // which goes by the cursor
        }
        return std::nullopt;
    case WM_RBUTTONDOWN:
        SendMessageA(control.window, WM_RBUTTONDOWN, of.wParam, of.lParam);
        return 0;
    case WM_SETFOCUS:
        control.flags |= FLAG_FOCUS;
        control.Redraw();
        return std::nullopt;
    case WM_KILLFOCUS:
        control.flags = static_cast<WORD>(control.flags & ~FLAG_FOCUS);
        control.Redraw();
        return std::nullopt;
    case WM_NCPAINT: // the system takes its time for the frame of a part that has none
        return HasFrame(of.window) ? std::nullopt : std::optional<LRESULT>(0);
    case WM_PAINT: {
        const LRESULT result = of.SystemDoes();
        if (control.mode != 0) {
            DrawSelectionOver(control, of.window);
        }
        return result;
    }
    default:
        return std::nullopt;
    }
}

void RedrawEditedParts(const CONTROLPROPERTIES& control) {
    if (control.mode == 0) {
        return;
    }
    for (HWND child = GetWindow(control.window, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        InvalidateRect(child, nullptr, TRUE);
    }
}
