#pragma once

#include "Controls/families/SystemChild.h"
#include "Controls/framework/WheelTurn.h"
#include "logic/controls/SpinLogic.h"

#include <commctrl.h>

// Makes the class of the system's arrows known.
void NeedArrows();

// The system's arrows inside a control: a press is one step, held it repeats and gets faster, dragged up or
// down it turns.
class Arrows {
public:
    class Owner {
    public:
        virtual void Step(int steps) = 0; // up, or down where negative
        virtual void Turn(WheelTurn wheel) { Step(wheel.steps); }

    protected:
        ~Owner() = default;
    };

    Arrows(CONTROLPROPERTIES& control, Owner& owner) : control_(control), owner_(owner) {}

    HWND Create(int id, const RECT& place);
    HWND Window() const { return window_; }
    bool IsHeld() const { return GetCapture() == window_; }

    // A message of the window, a press of which moves the focus there.
    LRESULT Handle(const ChildMessage& of, HWND focus);
    // WM_NOTIFY and WM_COMMAND of the control. Whether they were of the arrows.
    bool Notified(const NMHDR& header) const;
    bool Commanded(int id, WORD code, LPARAM number) const;

private:
    std::optional<LRESULT> Paint(const ChildMessage& of) const;
    void Move(const ChildMessage& of, int y);

    CONTROLPROPERTIES& control_;
    Owner& owner_;
    HWND window_ = nullptr;
    logic::SpinDrag drag_;
    bool isTurning_ = false;
};
