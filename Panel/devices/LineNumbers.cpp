#include "Panel/devices/LineNumbers.h"

#include "Panel/theme/Theme.h"
#include "base/Gdi.h"

#include <commctrl.h>
#include <windowsx.h>

#include <string>
#include <utility>

namespace {

constexpr UINT_PTR SUBCLASS = 1;
constexpr int PADDING = 6; // pixels
constexpr int MARK = 3;

} // namespace

bool LineNumbers::Create(HWND parent, HWND field, HFONT font) {
    field_ = field;
    font_ = font;
    const HDC dc = GetDC(field);
    const HGDIOBJ before = SelectObject(dc, font);
    TEXTMETRICA metrics{};
    GetTextMetricsA(dc, &metrics);
    SelectObject(dc, before);
    ReleaseDC(field, dc);
    lineHeight_ = std::max<int>(1, metrics.tmHeight);
    return Window::Create("PanelLineNumbers", "", WS_CHILD | WS_VISIBLE, 0, {}, parent, nullptr, nullptr) &&
           SetWindowSubclass(field, FieldProcedure, SUBCLASS, reinterpret_cast<DWORD_PTR>(this));
}

// A field tells only of some of the ways by which it can be scrolled.
LRESULT CALLBACK LineNumbers::FieldProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                             UINT_PTR, DWORD_PTR object) noexcept {
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, FieldProcedure, SUBCLASS);
    }
    const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    switch (message) {
    case WM_VSCROLL:
    case WM_MOUSEWHEEL:
    case WM_MOUSEMOVE:
    case WM_KEYDOWN:
    case WM_CHAR:
    case WM_SIZE:
    case WM_PAINT:
    case WM_SETTEXT:
    case EM_SCROLLCARET:
    case EM_REPLACESEL:
    case EM_UNDO:
        reinterpret_cast<LineNumbers*>(object)->Follow();
        break;
    default:
        break;
    }
    return result;
}

void LineNumbers::Mark(std::set<int> lines) {
    if (lines != marked_) {
        marked_ = std::move(lines);
        InvalidateRect(Handle(), nullptr, FALSE);
    }
}

void LineNumbers::Follow() {
    const int first = static_cast<int>(SendMessageA(field_, EM_GETFIRSTVISIBLELINE, 0, 0));
    const int count = Edit_GetLineCount(field_);
    if (first != std::exchange(first_, first) || count != std::exchange(count_, count)) {
        InvalidateRect(Handle(), nullptr, FALSE);
    }
}

void LineNumbers::Paint() const {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(Handle(), &paint);
    RECT client;
    GetClientRect(Handle(), &client);
    FillThemed(dc, client, Colours().ground);
    RECT text;
    Edit_GetRect(field_, &text);
    MapWindowPoints(field_, Handle(), reinterpret_cast<POINT*>(&text), 2);
    const HGDIOBJ before = SelectObject(dc, font_);
    SetBkMode(dc, TRANSPARENT);
    RECT line{0, text.top, client.right, text.top + lineHeight_};
    for (int number = first_ + 1; number <= count_ && line.top < client.bottom; ++number) {
        const bool isMarked = marked_.contains(number);
        if (isMarked) {
            FillThemed(dc, line, Colours().refusedGround);
            FillThemed(dc, {0, line.top, MARK, line.bottom}, Colours().refusedText);
        }
        SetTextColor(dc, isMarked ? Colours().refusedText : Colours().dimText);
        RECT place{0, line.top, client.right - PADDING, line.bottom};
        DrawTextA(dc, std::to_string(number).c_str(), -1, &place, DT_RIGHT | DT_SINGLELINE | DT_NOPREFIX);
        OffsetRect(&line, 0, lineHeight_);
    }
    SelectObject(dc, before);
    EndPaint(Handle(), &paint);
}

LRESULT LineNumbers::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_PAINT:
        Paint();
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case THEME_CHANGED:
        InvalidateRect(Handle(), nullptr, FALSE);
        return 0;
    case WM_MOUSEWHEEL:
        return SendMessageA(field_, message, wParam, lParam);
    default:
        return Window::OnMessage(message, wParam, lParam);
    }
}
