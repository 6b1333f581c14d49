#include "Panel/StatusBar.h"

#include "Panel/resource.h"
#include "base/Handles.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>

namespace {

constexpr UINT_PTR LAMP_TOOL = 1;
constexpr int LONGEST_TIP = 600; // pixels in a line

std::string CountText(int count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

TOOLINFOA LampTool(HWND bar) {
    TOOLINFOA tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_SUBCLASS;
    tool.hwnd = bar;
    tool.uId = LAMP_TOOL;
    return tool;
}

} // namespace

StatusBar::~StatusBar() {
    for (const HWND window : {tip_, bar_}) {
        if (IsWindow(window)) { // it may have gone with the frame
            DestroyWindow(window);
        }
    }
}

bool StatusBar::Create(HWND frame, HFONT font) {
    const HINSTANCE instance = GetModuleHandleA(nullptr);
    bar_ = CreateWindowExA(0, STATUSCLASSNAMEA, "", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, 0, 0, 0, 0, frame,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_STATUS)), instance, nullptr);
    if (!bar_) {
        return false;
    }
    tip_ = CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASSA, "", WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0,
                           0, 0, bar_, nullptr, instance, nullptr);
    SendMessageA(tip_, TTM_SETMAXTIPWIDTH, 0, LONGEST_TIP);
    TOOLINFOA tool = LampTool(bar_);
    char nothing[] = "";
    tool.lpszText = nothing;
    SendMessageA(tip_, TTM_ADDTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
    lamps_[false] = MakeDeviceLamp(false);
    lamps_[true] = MakeDeviceLamp(true);
    SetWindowFont(bar_, font, FALSE);
    SetControlCount(0);
    SetMessageCount(0);
    return true;
}

void StatusBar::Show(bool shown) const {
    ShowWindow(bar_, shown ? SW_SHOWNA : SW_HIDE);
}

int StatusBar::Height() const {
    RECT bar{};
    if ((GetWindowLongA(bar_, GWL_STYLE) & WS_VISIBLE) != 0) {
        GetWindowRect(bar_, &bar);
    }
    return bar.bottom - bar.top;
}

void StatusBar::Resize() {
    SendMessageA(bar_, WM_SIZE, 0, 0);
    Arrange();
}

void StatusBar::SetText(const std::string& text) {
    if (text != text_) {
        text_ = text;
        ShowText();
    }
}

void StatusBar::SetHint(const std::string& hint) {
    if (hint != hint_) {
        hint_ = hint;
        ShowText();
    }
}

void StatusBar::ShowText() const {
    std::string shown = hint_.empty() ? text_ : hint_;
    std::replace(shown.begin(), shown.end(), '\t', ' '); // which would centre what follows
    SendMessageA(bar_, SB_SETTEXTA, 0, reinterpret_cast<LPARAM>(shown.c_str()));
}

void StatusBar::SetDevices(const Devices& devices) {
    if (devices == devices_) {
        return;
    }
    const bool isAnother = devices.count != devices_.count || devices.notLive != devices_.notLive;
    devices_ = devices;
    TOOLINFOA tool = LampTool(bar_);
    tool.lpszText = devices_.states.data();
    SendMessageA(tip_, TTM_UPDATETIPTEXTA, 0, reinterpret_cast<LPARAM>(&tool));
    if (isAnother) {
        Arrange();
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

bool StatusBar::IsClick(const NMHDR& header, std::optional<std::size_t> part) const {
    return header.hwndFrom == bar_ && header.code == static_cast<UINT>(NM_CLICK) && part &&
           reinterpret_cast<const NMMOUSE&>(header).dwItemSpec == *part;
}

// From left to right. The first one takes what the others leave.
std::vector<StatusBar::Part> StatusBar::Parts() const {
    std::vector<Part> parts{{Part::Text, ""}};
    if (devices_.count > 0) {
        parts.push_back({Part::Devices, devices_.notLive == 0
                                            ? CountText(devices_.count, "device") + " live"
                                            : CountText(devices_.notLive, "device") + " not live"});
    }
    parts.push_back({Part::Controls, CountText(controls_, "control")});
    if (messages_ > 0) {
        parts.push_back({Part::Messages, CountText(messages_, "message")});
    }
    return parts;
}

void StatusBar::Arrange() {
    const std::vector<Part> parts = Parts();
    RECT client;
    GetClientRect(bar_, &client);
    std::vector<int> ends(parts.size(), -1);
    int left = client.right - GetSystemMetrics(SM_CXVSCROLL); // the grip
    for (std::size_t i = parts.size() - 1; i > 0; --i) {
        left = std::max(0, left - WidthOf(parts[i]));
        ends[i - 1] = left;
    }
    SendMessageA(bar_, SB_SETPARTS, parts.size(), reinterpret_cast<LPARAM>(ends.data()));
    messagesPart_.reset();
    devicesPart_.reset();
    RECT lamp{};
    for (std::size_t i = 1; i < parts.size(); ++i) {
        const bool isLamp = parts[i].kind == Part::Devices;
        SendMessageA(bar_, SB_SETTEXTA, i, reinterpret_cast<LPARAM>(parts[i].text.c_str()));
        SendMessageA(bar_, SB_SETICON, i,
                     isLamp ? reinterpret_cast<LPARAM>(lamps_[devices_.notLive == 0].get()) : 0);
        if (isLamp) {
            SendMessageA(bar_, SB_GETRECT, i, reinterpret_cast<LPARAM>(&lamp));
            devicesPart_ = i;
        } else if (parts[i].kind == Part::Messages) {
            messagesPart_ = i;
        }
    }
    PlaceTip(lamp);
}

void StatusBar::PlaceTip(const RECT& place) {
    TOOLINFOA tool = LampTool(bar_);
    tool.rect = place;
    SendMessageA(tip_, TTM_NEWTOOLRECTA, 0, reinterpret_cast<LPARAM>(&tool));
}

int StatusBar::WidthOf(const Part& part) const {
    constexpr int BORDERS = 14;
    constexpr int LAMP = 20;
    const WindowDc dc(bar_, 0);
    const HGDIOBJ previous = SelectObject(dc.Get(), GetWindowFont(bar_));
    SIZE size{};
    GetTextExtentPoint32A(dc.Get(), part.text.c_str(), static_cast<int>(part.text.size()), &size);
    SelectObject(dc.Get(), previous);
    return size.cx + BORDERS + (part.kind == Part::Devices ? LAMP : 0);
}
