#include "Panel/PanelView.h"

#include <algorithm>

namespace {

constexpr int LINE = 20; // pixels

int BarWidth() {
    return GetSystemMetrics(SM_CXVSCROLL);
}
int BarHeight() {
    return GetSystemMetrics(SM_CYHSCROLL);
}

// How far to scroll so that what lies from start to end is within 0 to visible; its start where it does not
// fit.
LONG Shift(LONG start, LONG end, LONG visible) {
    if (start < 0) {
        return start;
    }
    return end > visible ? std::min(end - visible, start) : 0;
}

// What stands on the screen is not moved along: while view and panel are moved and sized one after the other
// parts of it would be left behind. False when the window is there already.
bool Move(HWND window, const RECT& place) {
    RECT now;
    GetWindowRect(window, &now);
    MapWindowPoints(nullptr, GetParent(window), reinterpret_cast<POINT*>(&now), 2);
    if (EqualRect(&now, &place)) {
        return false;
    }
    const bool stays = now.left == place.left && now.top == place.top;
    SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE | (stays ? 0U : SWP_NOCOPYBITS));
    return !stays;
}

} // namespace

bool PanelView::Create(HWND frame) {
    return Window::Create("PanelView", "", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS,
                          WS_EX_CONTROLPARENT, {}, frame, nullptr,
                          reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_APPWORKSPACE + 1)));
}

void PanelView::SetPanel(HWND panel, SIZE size) {
    if (panel_ && panel_ != panel) {
        ShowWindow(panel_, SW_HIDE);
    }
    panel_ = panel;
    position_ = {};
    SetPanelSize(size);
    ShowWindow(panel_, SW_SHOWNA);
}

void PanelView::SetPanelSize(SIZE size) {
    size_ = size;
    Arrange();
}

SIZE PanelView::BestSize(SIZE panel, SIZE limits) {
    SIZE size = panel;
    // A bar at one side takes room that the other side may then miss.
    for (int pass = 0; pass < 2; ++pass) {
        size.cx = panel.cx + (size.cy > limits.cy ? BarWidth() : 0);
        size.cy = panel.cy + (size.cx > limits.cx ? BarHeight() : 0);
    }
    return {std::min(size.cx, limits.cx), std::min(size.cy, limits.cy)};
}

void PanelView::MoveTo(const RECT& place) const {
    Move(Handle(), place);
}

void PanelView::Arrange() {
    if (!panel_ || arranging_) { // showing a bar sizes the client area
        return;
    }
    arranging_ = true;
    RECT window;
    GetWindowRect(Handle(), &window); // the view has no border: this is the client area without bars
    SIZE room{window.right - window.left, window.bottom - window.top};
    const SIZE whole = room;
    for (int pass = 0; pass < 2; ++pass) {
        room.cx = whole.cx - (size_.cy > room.cy ? BarWidth() : 0);
        room.cy = whole.cy - (size_.cx > room.cx ? BarHeight() : 0);
    }
    SetBar(SB_HORZ, size_.cx, room.cx, position_.x);
    SetBar(SB_VERT, size_.cy, room.cy, position_.y);
    const int left = size_.cx < room.cx ? (room.cx - size_.cx) / 2 : -position_.x;
    const int top = size_.cy < room.cy ? (room.cy - size_.cy) / 2 : -position_.y;
    if (Move(panel_, {left, top, left + size_.cx, top + size_.cy})) {
        RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    }
    arranging_ = false;
}

void PanelView::SetBar(int bar, int length, int visible, LONG& position) {
    position = std::clamp<LONG>(position, 0, std::max(0, length - visible));
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = length - 1;
    info.nPage = static_cast<UINT>(std::max(0, visible));
    info.nPos = position;
    SetScrollInfo(Handle(), bar, &info, TRUE);
    ShowScrollBar(Handle(), bar, length > visible);
}

void PanelView::Scroll(int bar, int to) {
    (bar == SB_HORZ ? position_.x : position_.y) = to;
    Arrange();
}

void PanelView::OnScroll(int bar, int request) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    GetScrollInfo(Handle(), bar, &info);
    const int page = static_cast<int>(info.nPage);
    switch (request) {
    case SB_LINEUP:
        return Scroll(bar, info.nPos - LINE);
    case SB_LINEDOWN:
        return Scroll(bar, info.nPos + LINE);
    case SB_PAGEUP:
        return Scroll(bar, info.nPos - page);
    case SB_PAGEDOWN:
        return Scroll(bar, info.nPos + page);
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        return Scroll(bar, info.nTrackPos);
    case SB_TOP:
        return Scroll(bar, info.nMin);
    case SB_BOTTOM:
        return Scroll(bar, info.nMax);
    default:
        return;
    }
}

void PanelView::OnWheel(int delta, bool sideways) {
    constexpr int LINES_A_NOTCH = 3;
    wheel_ += delta;
    const int notches = wheel_ / WHEEL_DELTA;
    wheel_ %= WHEEL_DELTA;
    if (sideways) {
        Scroll(SB_HORZ, position_.x - notches * LINES_A_NOTCH * LINE);
    } else {
        Scroll(SB_VERT, position_.y - notches * LINES_A_NOTCH * LINE);
    }
}

void PanelView::MakeVisible(HWND child) {
    RECT place;
    RECT client;
    GetClientRect(Handle(), &client);
    if (!IsChild(panel_, child) || !GetWindowRect(child, &place)) {
        return;
    }
    MapWindowPoints(nullptr, Handle(), reinterpret_cast<POINT*>(&place), 2);
    position_.x += Shift(place.left, place.right, client.right);
    position_.y += Shift(place.top, place.bottom, client.bottom);
    Arrange();
}

LRESULT PanelView::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SIZE:
        Arrange();
        return 0;
    case WM_HSCROLL:
        OnScroll(SB_HORZ, LOWORD(wParam));
        return 0;
    case WM_VSCROLL:
        OnScroll(SB_VERT, LOWORD(wParam));
        return 0;
    case WM_MOUSEWHEEL:
        OnWheel(GET_WHEEL_DELTA_WPARAM(wParam), (GET_KEYSTATE_WPARAM(wParam) & MK_SHIFT) != 0);
        return 0;
    default:
        return Window::OnMessage(message, wParam, lParam);
    }
}
