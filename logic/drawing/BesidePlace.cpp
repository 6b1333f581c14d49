#include "logic/drawing/BesidePlace.h"

#include <algorithm>

namespace logic {

ScreenPlace PlaceBeside(const ScreenArea& other, std::int32_t width, std::int32_t height,
                        const ScreenArea& screen) {
    constexpr std::int32_t GAP = 8;
    ScreenPlace place{other.left, other.top};
    if (other.right + GAP + width <= screen.right) {
        place.left = other.right + GAP;
    } else if (other.left - GAP - width >= screen.left) {
        place.left = other.left - GAP - width;
    } else if (other.bottom + GAP + height <= screen.bottom) {
        place.top = other.bottom + GAP;
    } else if (other.top - GAP - height >= screen.top) {
        place.top = other.top - GAP - height;
    }
    return {std::max(screen.left, std::min(place.left, screen.right - width)),
            std::max(screen.top, std::min(place.top, screen.bottom - height))};
}

} // namespace logic
