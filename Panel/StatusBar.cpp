#include "Panel/StatusBar.h"

#include "Panel/resource.h"
#include "base/Handles.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>

namespace {

std::string CountText(int count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

} // namespace

StatusBar::~StatusBar() {
    if (IsWindow(bar_)) { // it may have gone with the frame
        DestroyWindow(bar_);
    }
}

bool StatusBar::Create(HWND frame, HFONT font) {
    bar_ = CreateWindowExA(0, STATUSCLASSNAMEA, "", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0, 0, 0, frame,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_STATUS)),
                           GetModuleHandleA(nullptr), nullptr);
    if (!bar_) {
        return false;
    }
    SetWindowFont(bar_, font, FALSE);
    SetControlCount(0);
    SetMessageCount(0);
    return true;
}

int StatusBar::Height() const {
    RECT bar{};
    GetWindowRect(bar_, &bar);
    return bar.bottom - bar.top;
}

void StatusBar::Resize() {
    SendMessageA(bar_, WM_SIZE, 0, 0);
    Arrange();
}

void StatusBar::SetText(const std::string& text) {
    if (text != text_) {
        text_ = text;
        std::string shown = text; // a tab would centre what follows
        std::replace(shown.begin(), shown.end(), '\t', ' ');
        SendMessageA(bar_, SB_SETTEXTA, PART_TEXT, reinterpret_cast<LPARAM>(shown.c_str()));
    }
}

void StatusBar::SetControlCount(int count) {
    if (count != controls_) {
        controls_ = count;
        Arrange();
    }
}

void StatusBar::SetMessageCount(int count) {
    if (count != messages_) {
        messages_ = count;
        Arrange();
    }
}

bool StatusBar::IsMessageClick(const NMHDR& header) const {
    return header.hwndFrom == bar_ && header.code == static_cast<UINT>(NM_CLICK) &&
           reinterpret_cast<const NMMOUSE&>(header).dwItemSpec == PART_MESSAGES;
}

void StatusBar::Arrange() {
    const std::string controls = CountText(controls_, "control");
    const std::string messages = messages_ > 0 ? CountText(messages_, "message") : "";
    RECT client;
    GetClientRect(bar_, &client);
    int ends[] = {0, 0, -1};
    const int grip = GetSystemMetrics(SM_CXVSCROLL);
    const int last = client.right - grip;
    if (messages.empty()) {
        ends[PART_TEXT] = std::max(0, last - TextWidth(controls));
        ends[PART_CONTROLS] = -1;
    } else {
        ends[PART_CONTROLS] = std::max(0, last - TextWidth(messages));
        ends[PART_TEXT] = std::max(0, ends[PART_CONTROLS] - TextWidth(controls));
    }
    SendMessageA(bar_, SB_SETPARTS, messages.empty() ? 2 : 3, reinterpret_cast<LPARAM>(ends));
    SendMessageA(bar_, SB_SETTEXTA, PART_CONTROLS, reinterpret_cast<LPARAM>(controls.c_str()));
    if (!messages.empty()) {
        SendMessageA(bar_, SB_SETTEXTA, PART_MESSAGES, reinterpret_cast<LPARAM>(messages.c_str()));
    }
}

// Of a part that holds the text.
int StatusBar::TextWidth(const std::string& text) const {
    constexpr int BORDERS = 14;
    const WindowDc dc(bar_, 0);
    const HGDIOBJ previous = SelectObject(dc.Get(), GetWindowFont(bar_));
    SIZE size{};
    GetTextExtentPoint32A(dc.Get(), text.c_str(), static_cast<int>(text.size()), &size);
    SelectObject(dc.Get(), previous);
    return size.cx + BORDERS;
}
