#include "Controls/families/FieldMargin.h"

#include "Panelhost/Bitmap.h"
#include "Panelhost/Hostinfo.h"
#include "base/Gdi.h"

#include <algorithm>
#include <string>

namespace {

constexpr int MARGIN = 1; // at the left and right end of the text, pixels
constexpr int CARET = 1;  // its width, behind the text

} // namespace

bool FieldMargin::IsMovedBy(UINT message) {
    switch (message) {
    case WM_CHAR:
    case WM_KEYDOWN:
    case WM_IME_CHAR:
    case WM_SETTEXT:
    case WM_SETFONT:
    case WM_SIZE:
    case WM_PASTE:
    case WM_CUT:
    case WM_CLEAR:
    case WM_UNDO:
    case EM_UNDO:
    case EM_REPLACESEL:
        return true;
    default:
        return false;
    }
}

int FieldMargin::Least() const {
    return MARGIN + (isMarked_ ? a_GetNotEqualSign()->Width() + MARGIN : 0);
}

void FieldMargin::Set(int margin) {
    margin_ = margin;
    SendMessageA(field_, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(margin, MARGIN));
}

void FieldMargin::MakeRoom() {
    if (margin_ != Least()) {
        Set(Least());
    }
}

void FieldMargin::Handled(UINT message, logic::Alignment alignment) {
    if (message == WM_SETFONT) {
        margin_ = UNKNOWN; // the system's control makes it fit the font
    }
    Align(alignment);
}

void FieldMargin::Align(logic::Alignment alignment) {
    const HWND window = field_;
    if (margin_ == UNKNOWN) {
        MakeRoom();
    }
    int margin = Least();
    if (alignment != logic::Alignment::Left) {
        char text[TEXT_SIZE] = "";
        const int length = GetWindowTextA(window, text, sizeof text);
        SIZE extent{};
        TEXTMETRICA metrics{};
        const HDC dc = GetDC(window);
        {
            const Selected selected(dc, reinterpret_cast<HFONT>(SendMessageA(window, WM_GETFONT, 0, 0)));
            GetTextExtentPoint32A(dc, text, length, &extent);
            GetTextMetricsA(dc, &metrics);
        }
        ReleaseDC(window, dc);
        RECT inner{}; // what the system's control writes in; it keeps some distance from its border
        SendMessageA(window, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&inner));
        const int room = inner.right - (inner.left - margin_) - margin;
        // The system's control wants room for a character, or it writes beyond its right end.
        const int width = std::max(extent.cx, metrics.tmAveCharWidth) + CARET;
        margin += logic::AlignedStart(alignment, width, room);
    }
    if (margin == margin_) {
        return;
    }
    Set(margin);
    if (GetFocus() == window) { // the caret moves along
        DWORD start = 0;
        DWORD end = 0;
        SendMessageA(window, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        SendMessageA(window, EM_SETSEL, start, static_cast<LPARAM>(end));
    }
}

// To the screen, unless it is printed.
void FieldMargin::DrawMark(HDC printed) const {
    RECT client{};
    GetClientRect(field_, &client);
    const OSMIRBitmap& sign = *a_GetNotEqualSign();
    const HDC dc = printed != nullptr ? printed : GetDC(field_);
    sign.Draw(dc, MARGIN, (client.bottom - sign.Height()) / 2);
    if (printed == nullptr) {
        ReleaseDC(field_, dc);
    }
}
