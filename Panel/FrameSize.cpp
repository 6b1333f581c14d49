#include "Panel/FrameSize.h"

#include "Panel/PanelView.h"
#include "Panel/common/Window.h"

#include <algorithm>

namespace {

bool HasOwnSize(HWND frame) {
    return IsZoomed(frame) || IsIconic(frame);
}

} // namespace

void FitFrame(HWND frame, SIZE panel, SIZE beside) {
    if (HasOwnSize(frame)) {
        return;
    }
    const RECT work = WorkArea(frame);
    RECT border{};
    AdjustWindowRectEx(&border, static_cast<DWORD>(GetWindowLongA(frame, GWL_STYLE)), TRUE,
                       static_cast<DWORD>(GetWindowLongA(frame, GWL_EXSTYLE)));
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
