#pragma once

#include "Controls/families/FunctionList.h"
#include "Controls/framework/Control.h"

#include <optional>
#include <string>

// For a control that stands beside another one of the same panel, which may be part of a strip, and keeps to
// the travel of its value. The other one may come later, move, change its range or go; then the last travel
// stays.
class TravelBeside {
public:
    // Once, when the control is created.
    void Attach(HOSTINFO& control) { address_.Attach(control); }

    // Address of the other one; empty for none. False, and nothing changed, when it is more than one.
    std::string Text() const { return address_.Text(); }
    bool Load(CONTROLPROPERTIES& control, const std::string& text);

    // Whether there is something new to follow. Asks the system nothing: cheap enough for each tick.
    bool IsBehind(const CONTROLPROPERTIES& control) const noexcept { return Look(control) != seen_; }
    // Takes it over. Whether it was something new.
    bool Follow(const CONTROLPROPERTIES& control);

    // The travel in the client area of the other one; nothing when there was none yet.
    const std::optional<logic::Travel>& Travel() const { return travel_; }
    // Pixels from the client area of the control to that of the other one, along the travel.
    int Offset() const { return offset_; }

private:
    // All that the travel depends on, seen from the control.
    struct View {
        RECT own{};
        RECT others{};                       // both in the panel
        std::optional<logic::Travel> travel; // nothing: there is no other one

        bool operator==(const View& view) const {
            return travel == view.travel && EqualRect(&own, &view.own) != 0 &&
                   EqualRect(&others, &view.others) != 0;
        }
    };
    const CONTROLPROPERTIES* Other(const CONTROLPROPERTIES& control) const noexcept;
    View Look(const CONTROLPROPERTIES& control) const noexcept;

    FunctionList address_;
    View seen_;
    std::optional<logic::Travel> travel_;
    int offset_ = 0;
};
