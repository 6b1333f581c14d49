// What a turn of the mouse wheel is to a control that it steps.
#pragma once

#include <windows.h>

struct WheelTurn {
    explicit WheelTurn(WPARAM wParam)
        : steps(GET_WHEEL_DELTA_WPARAM(wParam) < 1 ? -1 : 1),
          isFine((GET_KEYSTATE_WPARAM(wParam) & MK_SHIFT) != 0) {}

    // A step of the control, with Shift a tenth of it.
    float Size(float step) const { return isFine ? step / 10 : step; }

    int steps; // up
    bool isFine;
};
