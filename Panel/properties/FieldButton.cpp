#include "Panel/properties/FieldButton.h"

#include <windowsx.h>

namespace {

constexpr UINT PRESSED = WM_APP; // posted to itself, with the step: the button may go by what is done then
constexpr UINT_PTR REPEAT_TIMER = 1;
constexpr UINT FIRST_REPEAT = 400; // milliseconds
constexpr UINT NEXT_REPEAT = 60;

} // namespace

bool FieldButton::Create(HWND parent, Pressed pressed) {
    pressed_ = std::move(pressed);
    return Window::Create("PanelFieldButton", "", WS_CHILD | WS_CLIPSIBLINGS, 0, {}, parent, nullptr,
                          nullptr);
}

void FieldButton::Show(Kind kind, const RECT& place) {
    if (kind == Kind::None) {
        KillTimer(Handle(), REPEAT_TIMER);
        held_ = 0;
        ShowWindow(Handle(), SW_HIDE);
    } else {
        SetWindowPos(Handle(), HWND_TOP, place.left, place.top, place.right - place.left,
                     place.bottom - place.top, SWP_NOACTIVATE | SWP_SHOWWINDOW);
    }
    if (kind != kind_) {
        kind_ = kind;
        InvalidateRect(Handle(), nullptr, FALSE);
    }
}

void FieldButton::Paint() const {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(Handle(), &paint);
    RECT place;
    GetClientRect(Handle(), &place);
    switch (kind_) {
    case Kind::DropDown:
        DrawFrameControl(dc, &place, DFC_SCROLL, DFCS_SCROLLCOMBOBOX);
        break;
    case Kind::Arrows: {
        RECT half = place;
        half.bottom = place.bottom / 2;
        DrawFrameControl(dc, &half, DFC_SCROLL, DFCS_SCROLLUP | (held_ > 0 ? DFCS_PUSHED : 0));
        half = {place.left, half.bottom, place.right, place.bottom};
        DrawFrameControl(dc, &half, DFC_SCROLL, DFCS_SCROLLDOWN | (held_ < 0 ? DFCS_PUSHED : 0));
        break;
    }
    default:
        DrawFrameControl(dc, &place, DFC_BUTTON, DFCS_BUTTONPUSH);
        for (int dot = -1; dot <= 1; ++dot) { // "..." in any font
            const LONG x = (place.left + place.right) / 2 + 3 * dot;
            const LONG y = (place.top + place.bottom) / 2 + 2;
            const RECT point{x, y, x + 1, y + 1};
            FillRect(dc, &point, GetSysColorBrush(COLOR_BTNTEXT));
        }
        break;
    }
    EndPaint(Handle(), &paint);
}

void FieldButton::Press(int y) {
    int step = 0;
    if (kind_ == Kind::Arrows) {
        RECT place;
        GetClientRect(Handle(), &place);
        step = y < place.bottom / 2 ? 1 : -1;
        held_ = step;
        SetCapture(Handle());
        SetTimer(Handle(), REPEAT_TIMER, FIRST_REPEAT, nullptr);
        InvalidateRect(Handle(), nullptr, FALSE);
    }
    PostMessageA(Handle(), PRESSED, 0, step);
}

LRESULT FieldButton::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_PAINT:
        Paint();
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        Press(GET_Y_LPARAM(lParam));
        return 0;
    case WM_LBUTTONUP:
    case WM_CANCELMODE:
    case WM_CAPTURECHANGED:
        KillTimer(Handle(), REPEAT_TIMER);
        if (held_ != 0) {
            held_ = 0;
            InvalidateRect(Handle(), nullptr, FALSE);
            if (GetCapture() == Handle()) {
                ReleaseCapture();
            }
        }
        return 0;
    case WM_TIMER:
        if (wParam == REPEAT_TIMER && held_ != 0) {
            SetTimer(Handle(), REPEAT_TIMER, NEXT_REPEAT, nullptr);
            pressed_(held_);
        }
        return 0;
    case PRESSED:
        if (kind_ != Kind::None) {
            pressed_(static_cast<int>(lParam));
        }
        return 0;
    default:
        return Window::OnMessage(message, wParam, lParam);
    }
}
