#include "Controls/families/ValueTip.h"

#include "Controls/framework/KeywordHandlers.h"
#include "logic/text/FloatFormat.h"

namespace {

constexpr int TIP_BELOW = 21;  // of the tooltip from the mouse, pixels
constexpr int AREA_BELOW = 16; // of a lower area from the client area

} // namespace

bool ValueTip::SetFormat(const std::string& format) {
    if (!MayBeFormat(format)) {
        return false;
    }
    format_ = format;
    return true;
}

void ValueTip::Relay(const CONTROLPROPERTIES& control, UINT message, WPARAM wParam, LPARAM lParam,
                     float value, bool isLower) {
    if (format_.empty()) {
        return;
    }
    tooltip_.Relay(message, wParam, lParam);
    if (message == WM_MOUSEMOVE && !tooltip_.IsVisible()) {
        RECT area{};
        GetClientRect(control.window, &area);
        OffsetRect(&area, 0, isLower ? AREA_BELOW : 0);
        tooltip_.Hover(area, logic::FormatFloatAs(format_, value));
    }
}

void ValueTip::Update(float value) const {
    if (!format_.empty()) {
        tooltip_.Update(logic::FormatFloatAs(format_, value));
    }
}

void ValueTip::Track(POINT mouse, float value, bool isBelow) {
    if (!format_.empty()) {
        mouse.y += isBelow ? TIP_BELOW : 0;
        tooltip_.Track(mouse, logic::FormatFloatAs(format_, value));
    }
}
