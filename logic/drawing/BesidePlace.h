// Where a window stands beside another one.
#pragma once

#include <cstdint>

namespace logic {

struct ScreenArea {
    std::int32_t left, top, right, bottom;
};
struct ScreenPlace {
    std::int32_t left, top;
    bool operator==(const ScreenPlace&) const = default;
};

// The top left corner of a window of that size: with a gap to the right of the other one, or else to the
// left, below or above it, wherever it has room on the screen. With room nowhere it covers the other one. It
// does not reach over the edges of the screen, of a screen that is too small not over the left and upper one.
ScreenPlace PlaceBeside(const ScreenArea& other, std::int32_t width, std::int32_t height,
                        const ScreenArea& screen);

} // namespace logic
