#pragma once

#include "Controls/framework/Control.h"

#include <commctrl.h>
#include <string>

// A control as a tool of the tooltip window that all windows of its class share. It is taken out again with
// the control's object. Without such a window nothing happens.
class Tooltip {
public:
    Tooltip() = default;
    ~Tooltip();
    Tooltip(const Tooltip&) = delete;
    Tooltip& operator=(const Tooltip&) = delete;

    // Adds the control with an empty text, which is not shown.
    void Attach(const CONTROLPROPERTIES& control);
    // The same without a subclass of the tooltip window on the control, which looks up a window property at
    // every message, timer ticks included. The control then passes its messages on with Relay.
    void AttachRelayed(const CONTROLPROPERTIES& control);
    // Lets the tooltip window see a message; of interest are those of the mouse.
    void Relay(UINT message, WPARAM wParam, LPARAM lParam) const;
    // Whether the shared window shows anything, be it of another control.
    bool IsVisible() const;
    // Has the text shown while the mouse rests on the area (in client coordinates).
    void Hover(const RECT& area, const std::string& text);
    // Gives a text that Hover has set another wording, at once where it is shown.
    void Update(const std::string& text) const;
    // Shows the text at a place of the screen, wherever the mouse is, until StopTracking.
    void Track(POINT screen, const std::string& text);
    void StopTracking();

private:
    void Send(UINT message, WPARAM wParam, UINT flags, const std::string& text, const RECT& area = {}) const;

    HWND tooltip_ = nullptr;
    HWND control_ = nullptr;
    UINT subclass_ = TTF_SUBCLASS; // or 0
    bool tracking_ = false;
};
