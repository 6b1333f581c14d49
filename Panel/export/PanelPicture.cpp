#include "Panel/export/PanelPicture.h"

#include "Panelhost/Bitmap.h"
#include "base/Gdi.h"

#include <algorithm>
#include <vector>

namespace {

// A bar of a window that stands at that place.
void PaintBar(HWND window, HDC dc, const RECT& whole, bool isVertical) {
    SCROLLBARINFO bar{};
    bar.cbSize = sizeof bar;
    const LONG style = isVertical ? WS_VSCROLL : WS_HSCROLL;
    if ((GetWindowLongA(window, GWL_STYLE) & style) == 0 ||
        !GetScrollBarInfo(window, isVertical ? OBJID_VSCROLL : OBJID_HSCROLL, &bar)) {
        return;
    }
    RECT onScreen;
    GetWindowRect(window, &onScreen);
    RECT place = bar.rcScrollBar;
    OffsetRect(&place, whole.left - onScreen.left, whole.top - onScreen.top);
    FillRect(dc, &place, GetSysColorBrush(COLOR_SCROLLBAR));
    const auto piece = [&](int from, int to) {
        return isVertical ? RECT{place.left, place.top + from, place.right, place.top + to}
                          : RECT{place.left + from, place.top, place.left + to, place.bottom};
    };
    const int length = isVertical ? place.bottom - place.top : place.right - place.left;
    RECT first = piece(0, bar.dxyLineButton);
    RECT last = piece(length - bar.dxyLineButton, length);
    const UINT state = bar.xyThumbBottom > bar.xyThumbTop ? 0 : DFCS_INACTIVE;
    DrawFrameControl(dc, &first, DFC_SCROLL, (isVertical ? DFCS_SCROLLUP : DFCS_SCROLLLEFT) | state);
    DrawFrameControl(dc, &last, DFC_SCROLL, (isVertical ? DFCS_SCROLLDOWN : DFCS_SCROLLRIGHT) | state);
    if (state == 0) {
        RECT thumb = piece(bar.xyThumbTop, bar.xyThumbBottom);
        DrawFrameControl(dc, &thumb, DFC_BUTTON, DFCS_BUTTONPUSH);
    }
}

void PaintFrame(HWND window, HDC dc, const RECT& whole) {
    RECT edge = whole;
    const LONG exStyle = GetWindowLongA(window, GWL_EXSTYLE);
    if ((exStyle & WS_EX_CLIENTEDGE) != 0) {
        DrawEdge(dc, &edge, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
    }
    if ((exStyle & WS_EX_STATICEDGE) != 0) {
        DrawEdge(dc, &edge, BDR_SUNKENOUTER, BF_RECT | BF_ADJUST);
    }
    if ((GetWindowLongA(window, GWL_STYLE) & WS_BORDER) != 0) {
        FrameRect(dc, &edge, GetSysColorBrush(COLOR_WINDOWFRAME));
    }
    PaintBar(window, dc, whole, true);
    PaintBar(window, dc, whole, false);
}

void Paint(HWND window, HDC target, POINT corner);

// As the system does: the topmost first. Where children overlap, the lower one covers the other unless it
// leaves out what is above it.
void PaintChildren(HWND window, HDC dc) {
    std::vector<RECT> above;
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        const LONG style = GetWindowLongA(child, GWL_STYLE);
        if ((style & WS_VISIBLE) == 0) {
            continue;
        }
        RECT place;
        GetWindowRect(child, &place);
        MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
        const int saved = SaveDC(dc);
        if ((style & WS_CLIPSIBLINGS) != 0) {
            for (const RECT& other : above) {
                ExcludeClipRect(dc, other.left, other.top, other.right, other.bottom);
            }
        }
        Paint(child, dc, {place.left, place.top});
        RestoreDC(dc, saved);
        above.push_back(place);
    }
}

// Paints a window with its children over what is there; its corner is at that point. Not every system paints
// children along, and some controls of the system paint wrongly where the origin is elsewhere: each window
// gets a bitmap of its own.
void Paint(HWND window, HDC target, POINT corner) {
    RECT whole;
    RECT client;
    GetWindowRect(window, &whole);
    GetClientRect(window, &client);
    const SIZE size{client.right, client.bottom};
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
    const POINT inside{corner.x + client.left - whole.left, corner.y + client.top - whole.top};
    OffsetRect(&whole, corner.x - whole.left, corner.y - whole.top);
    PaintFrame(window, target, whole);

    const Bitmap bitmap(CreatePixels(size.cx, size.cy));
    if (!bitmap) {
        return;
    }
    const MemoryDc dc(bitmap.get());
    BitBlt(dc.Get(), 0, 0, size.cx, size.cy, target, inside.x, inside.y, SRCCOPY);
    SendMessageA(window, WM_PRINT, reinterpret_cast<WPARAM>(dc.Get()), PRF_ERASEBKGND | PRF_CLIENT);
    PaintChildren(window, dc.Get());
    BitBlt(target, inside.x, inside.y, size.cx, size.cy, dc.Get(), 0, 0, SRCCOPY);
}

} // namespace

Bitmap PaintWindow(HWND window, SIZE size) {
    Bitmap bitmap(CreatePixels(size.cx, size.cy));
    if (bitmap) {
        const MemoryDc dc(bitmap.get());
        Paint(window, dc.Get(), {0, 0});
    }
    return bitmap;
}

bool SavePanelPicture(HWND panel, SIZE size, const std::string& file) {
    const Bitmap bitmap = PaintWindow(panel, size);
    if (!bitmap) {
        return false;
    }
    const MemoryDc dc(bitmap.get());
    return a_SavePicture(dc.Get(), size.cx, size.cy, file.c_str()) != 0;
}

bool SavePanelThumbnail(HWND panel, SIZE size, SIZE room, const std::string& file) {
    const Bitmap bitmap = PaintWindow(panel, size);
    const double scale = std::min({1.0, static_cast<double>(room.cx) / std::max(1L, size.cx),
                                   static_cast<double>(room.cy) / std::max(1L, size.cy)});
    const int width = std::max(1, static_cast<int>(size.cx * scale));
    const int height = std::max(1, static_cast<int>(size.cy * scale));
    const Bitmap small(CreatePixels(width, height));
    if (!bitmap || !small) {
        return false;
    }
    const MemoryDc from(bitmap.get());
    const MemoryDc to(small.get());
    SetStretchBltMode(to.Get(), HALFTONE);
    SetBrushOrgEx(to.Get(), 0, 0, nullptr);
    StretchBlt(to.Get(), 0, 0, width, height, from.Get(), 0, 0, size.cx, size.cy, SRCCOPY);
    return a_SavePicture(to.Get(), width, height, file.c_str()) != 0;
}
