#include "Panel/properties/ChoiceList.h"

#include "Panel/resource.h"
#include "base/Guard.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>

namespace {

constexpr int MOST_LINES = 12;
constexpr int LEAST_WIDTH = 220; // pixels
constexpr UINT CHOOSE = WM_APP;  // posted to itself: the list may be filled anew by what is done then

} // namespace

bool ChoiceList::Create(HWND owner, HFONT font, Chosen chosen) {
    chosen_ = std::move(chosen);
    if (!Window::Create("PanelChoices", "", WS_POPUP | WS_BORDER | WS_CLIPCHILDREN,
                        WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_NOACTIVATE, {}, owner, nullptr, nullptr)) {
        return false;
    }
    list_ = CreateWindowExA(0, "LISTBOX", "", WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_NOINTEGRALHEIGHT, 0, 0,
                            0, 0, Handle(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_CHOICES)),
                            GetModuleHandleA(nullptr), nullptr);
    SetWindowFont(list_, font, FALSE);
    return list_ && SetWindowSubclass(list_, ListProc, 0, reinterpret_cast<DWORD_PTR>(this));
}

void ChoiceList::Show(HWND field, const std::vector<std::string>& choices, int marked) {
    if (choices.empty()) {
        return Hide();
    }
    field_ = field;
    GetWindowRect(field, &place_);
    SendMessageA(list_, WM_SETREDRAW, FALSE, 0);
    SendMessageA(list_, LB_RESETCONTENT, 0, 0);
    for (const std::string& choice : choices) {
        SendMessageA(list_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(choice.c_str()));
    }
    SendMessageA(list_, LB_SETCURSEL, static_cast<WPARAM>(marked), 0);
    SendMessageA(list_, WM_SETREDRAW, TRUE, 0);

    constexpr int BORDERS = 2;
    const auto line = static_cast<int>(SendMessageA(list_, LB_GETITEMHEIGHT, 0, 0));
    const int width = std::max<int>(place_.right - place_.left, LEAST_WIDTH);
    const int height = line * std::min(static_cast<int>(choices.size()), MOST_LINES) + BORDERS;
    const RECT work = WorkArea(field);
    const int left = std::max<int>(work.left, std::min<int>(place_.left, work.right - width));
    const bool isBelow = place_.bottom + height <= work.bottom || place_.top - height < work.top;
    const int top = isBelow ? place_.bottom : place_.top - height;
    SetWindowPos(Handle(), HWND_TOPMOST, left, top, width, height, SWP_NOACTIVATE | SWP_SHOWWINDOW);
    InvalidateRect(list_, nullptr, TRUE);
}

void ChoiceList::Hide() {
    if (field_) {
        field_ = nullptr;
        ShowWindow(Handle(), SW_HIDE);
    }
}

void ChoiceList::Follow() {
    RECT now{};
    if (field_ && (!GetWindowRect(field_, &now) || !EqualRect(&now, &place_))) {
        Hide();
    }
}

void ChoiceList::MoveMark(int step) const {
    const auto count = static_cast<int>(SendMessageA(list_, LB_GETCOUNT, 0, 0));
    const auto now = static_cast<int>(SendMessageA(list_, LB_GETCURSEL, 0, 0));
    const int next = now < 0 ? (step > 0 ? 0 : count - 1) : std::clamp(now + step, 0, count - 1);
    SendMessageA(list_, LB_SETCURSEL, static_cast<WPARAM>(next), 0);
}

void ChoiceList::Scroll(int wheel) const {
    SendMessageA(list_, WM_MOUSEWHEEL, MAKEWPARAM(0, wheel), 0);
}

std::string ChoiceList::Marked() const {
    const LRESULT item = SendMessageA(list_, LB_GETCURSEL, 0, 0);
    const LRESULT length = SendMessageA(list_, LB_GETTEXTLEN, static_cast<WPARAM>(item), 0);
    if (item == LB_ERR || length <= 0) {
        return {};
    }
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    SendMessageA(list_, LB_GETTEXT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

LRESULT ChoiceList::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_MOUSEACTIVATE:
        return MA_NOACTIVATE;
    case WM_SIZE:
        SetWindowPos(list_, nullptr, 0, 0, LOWORD(lParam), HIWORD(lParam), SWP_NOZORDER | SWP_NOACTIVATE);
        return 0;
    case CHOOSE:
        if (const std::string marked = Marked(); IsShown()) {
            chosen_(marked);
        }
        return 0;
    default:
        return Window::OnMessage(message, wParam, lParam);
    }
}

int ChoiceList::ItemAt(LPARAM point) const {
    const auto found = static_cast<DWORD>(SendMessageA(list_, LB_ITEMFROMPOINT, 0, point));
    return HIWORD(found) != 0 ? -1 : LOWORD(found);
}

// The mouse is served here, because the system's list would take the focus.
LRESULT CALLBACK ChoiceList::ListProc(HWND list, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                      DWORD_PTR self) noexcept {
    const auto& choices = *reinterpret_cast<const ChoiceList*>(self);
    switch (message) {
    case WM_MOUSEMOVE:
        if (const int item = choices.ItemAt(lParam); item >= 0) {
            SendMessageA(list, LB_SETCURSEL, static_cast<WPARAM>(item), 0);
        }
        return 0;
    case WM_LBUTTONUP:
        if (const int item = choices.ItemAt(lParam); item >= 0) {
            SendMessageA(list, LB_SETCURSEL, static_cast<WPARAM>(item), 0);
            PostMessageA(choices.Handle(), CHOOSE, 0, 0);
        }
        return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        return 0;
    case WM_NCDESTROY:
        RemoveWindowSubclass(list, ListProc, 0);
        break;
    default:
        break;
    }
    return DefSubclassProc(list, message, wParam, lParam);
}
