// Where the values of a control lie in its window, for whoever wants to stand beside it.
#pragma once

#include <cstdint>

#include "logic/controls/BarLogic.h"

namespace logic {

// The way of a line, or of the edge of a bar, through the client area of a control.
struct Travel {
    enum class Shown {
        Line,      // a line on the pixel of the value
        Bar,       // a bar from the origin to the value
        CutOffBar, // the same, of pixels that are lit as a whole only
    };

    TravelRange range{0, 0};
    std::int32_t begin = 0;  // pixel of the line, or edge of the bar, where the range has its minimum
    std::int32_t length = 0; // pixels from there to the maximum
    bool isHorizontal = false;
    bool isBackwards = false; // up or to the left
    Shown shown = Shown::Line;
    float origin = 0;         // of a bar
    std::int32_t segment = 0; // length of a bar's segment with its gap; 0: it has none

    // The pixel along the client area, x or y, on which the line of that value lies, or the last lit one of
    // the bar. A bar without any length ends on the pixel beside its origin.
    std::int32_t PlaceOf(float value) const;
    bool operator==(const Travel&) const = default;
};

} // namespace logic
