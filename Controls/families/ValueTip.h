#pragma once

#include "Controls/families/Tooltip.h"

#include <string>

// A tooltip with the number of a control in a printf format, while the mouse rests on the control and beside
// the mouse while it drags. Without a format there is none.
class ValueTip {
public:
    void Attach(const CONTROLPROPERTIES& control) { tooltip_.AttachRelayed(control); }
    const std::string& Format() const { return format_; }
    // False, and nothing changed, when it is no format with one float conversion.
    bool SetFormat(const std::string& format);

    // A message of the control, which is not dragged. The tooltip belongs to the client area, or to one that
    // lies a little lower.
    void Relay(const CONTROLPROPERTIES& control, UINT message, WPARAM wParam, LPARAM lParam, float value,
               bool isLower);
    // Gives a tooltip that is shown another number.
    void Update(float value) const;
    // Shows it where the mouse is on the screen, or below it, until StopTracking.
    void Track(POINT mouse, float value, bool isBelow);
    void StopTracking() { tooltip_.StopTracking(); }

private:
    Tooltip tooltip_;
    std::string format_; // empty: no tooltip
};
