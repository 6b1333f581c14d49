#include "Controls/families/Arrows.h"

#include "Controls/drawing/DarkParts.h"
#include "Panelhost/Background.h"
#include "Panelhost/Dialogs.h"
#include "Panelhost/Trace.h"

#include <windowsx.h>

void NeedArrows() {
    static const bool areArrowsThere = [] {
        const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_UPDOWN_CLASS};
        return InitCommonControlsEx(&classes) != 0;
    }();
    if (!areArrowsThere) {
        TRACE("InitCommonControlsEx failed\n");
    }
}

HWND Arrows::Create(int id, const RECT& place) {
    NeedArrows();
    window_ = CreateWindowExA(0, UPDOWN_CLASSA, "", WS_CHILD | WS_VISIBLE | UDS_HOTTRACK, place.left,
                              place.top, place.right - place.left, place.bottom - place.top, control_.window,
                              reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), ModuleInstance(), nullptr);
    // In the middle of their range, where both report; they stay there.
    SendMessageA(window_, UDM_SETRANGE, 0, MAKELPARAM(100, 0));
    SendMessageA(window_, UDM_SETPOS, 0, MAKELPARAM(50, 0));
    return window_;
}

bool Arrows::Notified(const NMHDR& header) const {
    const bool isPress = header.hwndFrom == window_ && header.code == static_cast<UINT>(UDN_DELTAPOS);
    if (isPress && control_.mode == 0) {
        PostFromChild(control_.window, GetDlgCtrlID(window_), ARROW_PRESSED,
                      reinterpret_cast<const NMUPDOWN&>(header).iDelta);
    }
    return isPress;
}

bool Arrows::Commanded(int id, WORD code, LPARAM number) const {
    const bool isPress = id == GetDlgCtrlID(window_) && code == ARROW_PRESSED;
    if (isPress) {
        owner_.Step(static_cast<int>(number));
    }
    return isPress;
}

void Arrows::Move(const ChildMessage& of, int y) {
    const bool isHeld = IsHeld() && (of.wParam & MK_LBUTTON) != 0;
    if (isHeld && !isTurning_ && drag_.IsMeant(y)) {
        of.SystemDoes(WM_LBUTTONUP, 0, of.lParam); // it repeats no more
        SetCapture(window_);
        isTurning_ = true;
    }
    if (!isTurning_) {
        of.SystemDoes();
    } else if (const int steps = isHeld ? drag_.StepsTo(y) : 0; steps != 0) {
        owner_.Step(steps);
    }
}

// On a panel of the style "dark".
std::optional<LRESULT> Arrows::Paint(const ChildMessage& of) const {
    const auto draw = [&](HDC target) {
        RECT area{};
        GetClientRect(window_, &area);
        const cOffScreen buffer(target, area.right, area.bottom);
        DrawDarkArrows(buffer.Dc(), area, PressedArrowOf(window_),
                       {.isEnabled = IsWindowEnabled(window_) != FALSE});
        buffer.Show();
    };
    switch (of.message) {
    case WM_PAINT: {
        PAINTSTRUCT paint;
        if (const HDC dc = BeginPaint(window_, &paint); dc != nullptr) {
            draw(dc);
            EndPaint(window_, &paint);
        }
        if (control_.mode != 0) {
            DrawSelectionOver(control_, window_);
        }
        return 0;
    }
    case WM_PRINTCLIENT:
        draw(reinterpret_cast<HDC>(of.wParam));
        return 0;
    case WM_ERASEBKGND:
        return 1;
    default:
        return std::nullopt;
    }
}

LRESULT Arrows::Handle(const ChildMessage& of, HWND focus) {
    if (const auto answer = control_.IsDark() ? Paint(of) : std::nullopt) {
        return *answer;
    }
    if (const auto answer = HandleAsPart(control_, of)) {
        return *answer;
    }
    const int y = GET_Y_LPARAM(of.lParam);
    switch (of.message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        SetFocus(focus);
        if (!IsWindow(of.window)) { // whoever lost the focus has ended it
            return 0;
        }
        drag_.Press(y);
        break;
    case WM_MOUSEMOVE:
        Move(of, y);
        return 0;
    case WM_LBUTTONUP:
        if (isTurning_) {
            ReleaseCapture();
            return 0;
        }
        break;
    case WM_CAPTURECHANGED:
        isTurning_ = false;
        break;
    case WM_MOUSEWHEEL:
        owner_.Turn(WheelTurn(of.wParam));
        return 0;
    default:
        break;
    }
    return of.SystemDoes();
}
