#include "Controls/families/Tooltip.h"

#include "Controls/framework/ControlClass.h"

namespace {

constexpr UINT RESTING = TTF_IDISHWND | TTF_ABSOLUTE; // and the subclass, unless messages are relayed
constexpr UINT HOVERING = TTF_IDISHWND;
constexpr UINT TRACKING = TTF_IDISHWND | TTF_TRACK | TTF_ABSOLUTE;

} // namespace

void Tooltip::Send(UINT message, WPARAM wParam, UINT flags, const std::string& text, const RECT& area) const {
    TOOLINFOA tool{};
    tool.cbSize = TTTOOLINFOA_V2_SIZE; // the largest that every version of the common controls takes
    tool.uFlags = flags == TRACKING ? flags : flags | subclass_;
    tool.hwnd = control_;
    tool.uId = reinterpret_cast<UINT_PTR>(control_);
    tool.rect = area;
    tool.lpszText = const_cast<char*>(text.c_str());
    SendMessageA(tooltip_, message, wParam, reinterpret_cast<LPARAM>(&tool));
}

Tooltip::~Tooltip() {
    if (tooltip_ != nullptr) {
        Send(TTM_DELTOOLA, 0, RESTING, "");
    }
}

void Tooltip::Attach(const CONTROLPROPERTIES& control) {
    const auto* shared = SharedOf<SharedTooltip>(*control.controlClass);
    tooltip_ = shared == nullptr ? nullptr : shared->Window();
    control_ = control.window;
    if (tooltip_ != nullptr) {
        Send(TTM_ADDTOOLA, 0, RESTING, "");
    }
}

void Tooltip::AttachRelayed(const CONTROLPROPERTIES& control) {
    subclass_ = 0;
    Attach(control);
}

void Tooltip::Relay(UINT message, WPARAM wParam, LPARAM lParam) const {
    if (tooltip_ == nullptr || message < WM_MOUSEFIRST || message > WM_MOUSELAST) {
        return;
    }
    MSG relayed{control_, message, wParam, lParam, static_cast<DWORD>(GetMessageTime()), {}};
    GetCursorPos(&relayed.pt);
    SendMessageA(tooltip_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&relayed));
}

bool Tooltip::IsVisible() const {
    return tooltip_ != nullptr && IsWindowVisible(tooltip_);
}

void Tooltip::Hover(const RECT& area, const std::string& text) {
    if (tooltip_ != nullptr && !tracking_) {
        Send(TTM_SETTOOLINFOA, 0, HOVERING, text, area);
        SendMessageA(tooltip_, TTM_ACTIVATE, TRUE, 0);
    }
}

void Tooltip::Update(const std::string& text) const {
    if (tooltip_ != nullptr && !tracking_) {
        Send(TTM_UPDATETIPTEXTA, 0, HOVERING, text);
    }
}

void Tooltip::Track(POINT screen, const std::string& text) {
    if (tooltip_ == nullptr) {
        return;
    }
    Send(TTM_SETTOOLINFOA, 0, TRACKING, text);
    SendMessageA(tooltip_, TTM_TRACKPOSITION, 0,
                 MAKELPARAM(static_cast<WORD>(screen.x), static_cast<WORD>(screen.y)));
    if (!tracking_) {
        tracking_ = true;
        Send(TTM_TRACKACTIVATE, TRUE, TRACKING, text);
    }
}

void Tooltip::StopTracking() {
    if (tracking_) {
        tracking_ = false;
        Send(TTM_TRACKACTIVATE, FALSE, TRACKING, "");
        Send(TTM_SETTOOLINFOA, 0, RESTING, "");
    }
}
