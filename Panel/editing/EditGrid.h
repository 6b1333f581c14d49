#pragma once

#include "base/Gdi.h"

// The grid of the edit mode.
class EditGrid {
public:
    static constexpr int SPACING = 8; // pixels

    bool IsOn() const { return on_; }
    void TurnOn(bool on) { on_ = on; }
    // Dots on what the panel shows already; they can be seen on light and dark grounds alike.
    void Draw(HDC dc, const RECT& area);

private:
    Brush brush_;
    bool on_ = true;
};
