#include "Panel/FrameSize.h"

#include "Panel/PanelView.h"
#include "Panel/common/Window.h"

#include <algorithm>

namespace {

bool HasOwnSize(HWND frame) {
    const bool hasBorder = (GetWindowLongA(frame, GWL_STYLE) & WS_THICKFRAME) != 0;
    return !hasBorder || IsZoomed(frame) || IsIconic(frame);
}

} // namespace

void FullScreen::Set(HWND frame, bool on) {
    if (on == isOn_) {
        return;
    }
    isOn_ = on;
    if (on) {
        style_ = GetWindowLongA(frame, GWL_STYLE);
        place_.length = sizeof place_;
        GetWindowPlacement(frame, &place_);
        SetWindowLongA(frame, GWL_STYLE, (style_ & ~WS_OVERLAPPEDWINDOW) | static_cast<LONG>(WS_POPUP));
        Follow(frame);
        return;
    }
    const LONG shown = GetWindowLongA(frame, GWL_STYLE) & WS_VISIBLE;
    SetWindowLongA(frame, GWL_STYLE, (style_ & ~WS_VISIBLE) | shown);
    SetWindowPlacement(frame, &place_);
    SetWindowPos(frame, nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

void FullScreen::Follow(HWND frame) const {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    if (isOn_ && GetMonitorInfoA(MonitorFromWindow(frame, MONITOR_DEFAULTTONEAREST), &monitor)) {
        const RECT& screen = monitor.rcMonitor;
        SetWindowPos(frame, nullptr, screen.left, screen.top, screen.right - screen.left,
                     screen.bottom - screen.top, SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    }
}

void FitFrame(HWND frame, SIZE panel, SIZE beside) {
    if (HasOwnSize(frame)) {
        return;
    }
    const RECT work = WorkArea(frame);
    RECT border{};
    AdjustWindowRectEx(&border, static_cast<DWORD>(GetWindowLongA(frame, GWL_STYLE)),
                       GetMenu(frame) != nullptr, static_cast<DWORD>(GetWindowLongA(frame, GWL_EXSTYLE)));
    border.bottom += beside.cy;
    border.right += beside.cx;
    const SIZE limits{work.right - work.left - (border.right - border.left),
                      work.bottom - work.top - (border.bottom - border.top)};
    const SIZE view = PanelView::BestSize(panel, limits);
    SIZE size{view.cx + border.right - border.left, view.cy + border.bottom - border.top};

    RECT place;
    GetWindowRect(frame, &place);
    const POINT corner{std::max(work.left, std::min(place.left, work.right - size.cx)),
                       std::max(work.top, std::min(place.top, work.bottom - size.cy))};
    SetWindowPos(frame, nullptr, corner.x, corner.y, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);

    // A narrow window needs more than one line for its menu.
    RECT client;
    GetClientRect(frame, &client);
    const LONG missing = view.cy + beside.cy - client.bottom;
    if (missing > 0) {
        size.cy = std::min(size.cy + missing, work.bottom - work.top);
        SetWindowPos(frame, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

void WidenFrame(HWND frame, LONG by) {
    if (HasOwnSize(frame)) {
        return;
    }
    const RECT work = WorkArea(frame);
    RECT place;
    GetWindowRect(frame, &place);
    const LONG shown = std::min(place.right - place.left + by, work.right - work.left);
    const LONG left = std::max(work.left, std::min(place.left, work.right - shown));
    SetWindowPos(frame, nullptr, left, place.top, shown, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}
