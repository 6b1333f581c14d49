#include "Panel/NoticeBar.h"

#include "Panel/resource.h"
#include "Panel/theme/Theme.h"
#include "base/Gdi.h"

#include <windowsx.h>

#include <algorithm>

namespace {

constexpr int HEIGHT = 36; // two lines of text
constexpr int GAP = 6;
constexpr int BUTTON_HEIGHT = 24;
constexpr int BUTTON_WIDTH = 64;
constexpr int ICON = 16;

} // namespace

HWND NoticeBar::MakeButton(const char* text, int command) const {
    const HWND button = CreateWindowExA(0, "BUTTON", text, WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON, 0, 0, 0, 0,
                                        Handle(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(command)),
                                        GetModuleHandleA(nullptr), nullptr);
    SetWindowFont(button, font_, FALSE);
    return button;
}

bool NoticeBar::Create(HWND frame, HFONT font) {
    font_ = font;
    if (!Window::Create("PanelNotice", "", WS_CHILD | WS_CLIPCHILDREN, 0, {}, frame, nullptr, nullptr)) {
        return false;
    }
    show_ = MakeButton("Show", 0);
    close_ = MakeButton("Close", CMD_CLOSE_NOTICE);
    return show_ && close_;
}

void NoticeBar::SetText(const std::string& text, int command) {
    text_ = text;
    SetWindowLongA(show_, GWL_ID, command);
    SetWindowTextA(Handle(), text.c_str());
    ShowWindow(Handle(), text.empty() ? SW_HIDE : SW_SHOWNA);
    InvalidateRect(Handle(), nullptr, FALSE);
}

int NoticeBar::Height() const {
    return text_.empty() ? 0 : HEIGHT;
}

void NoticeBar::Place(int top, int width) {
    SetWindowPos(Handle(), nullptr, 0, top, width, HEIGHT, SWP_NOZORDER | SWP_NOACTIVATE);
    int left = width;
    for (const HWND button : {close_, show_}) {
        left -= BUTTON_WIDTH + GAP;
        SetWindowPos(button, nullptr, left, (HEIGHT - BUTTON_HEIGHT) / 2, BUTTON_WIDTH, BUTTON_HEIGHT,
                     SWP_NOZORDER | SWP_NOACTIVATE);
    }
    InvalidateRect(Handle(), nullptr, FALSE);
}

void NoticeBar::Paint() const {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(Handle(), &paint);
    RECT place;
    GetClientRect(Handle(), &place);
    FillThemed(dc, place, Colours().noticeGround);
    FillThemed(dc, {0, place.bottom - 1, place.right, place.bottom}, Colours().noticeEdge);
    const auto icon = static_cast<HICON>(LoadImageA(nullptr, IDI_WARNING, IMAGE_ICON, 0, 0, LR_SHARED));
    DrawIconEx(dc, GAP, (HEIGHT - ICON) / 2, icon, ICON, ICON, 0, nullptr, DI_NORMAL);
    place.left = GAP + ICON + GAP;
    place.right -= 2 * (BUTTON_WIDTH + GAP) + GAP;
    {
        const Selected font(dc, font_);
        SetBkMode(dc, TRANSPARENT);
        SetTextColor(dc, Colours().noticeText);
        constexpr UINT FORMAT = DT_WORDBREAK | DT_NOPREFIX | DT_END_ELLIPSIS;
        RECT needed = place;
        DrawTextA(dc, text_.c_str(), -1, &needed, FORMAT | DT_CALCRECT);
        OffsetRect(&place, 0, std::max(1L, (HEIGHT - 1 - (needed.bottom - needed.top)) / 2));
        place.bottom = HEIGHT - 1;
        DrawTextA(dc, text_.c_str(), -1, &place, FORMAT);
    }
    EndPaint(Handle(), &paint);
}

LRESULT NoticeBar::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_PAINT:
        Paint();
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_COMMAND:
        return SendMessageA(GetParent(Handle()), WM_COMMAND, LOWORD(wParam), 0);
    default:
        return Window::OnMessage(message, wParam, lParam);
    }
}
