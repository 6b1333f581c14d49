#include "logic/editing/Overlaps.h"

#include <algorithm>
#include <numeric>

namespace logic {

namespace {

constexpr std::int32_t RIM = 2;

bool Shares(const Rectangle& one, const Rectangle& other) {
    return std::min(one.right, other.right) - std::max(one.left, other.left) > RIM &&
           std::min(one.bottom, other.bottom) - std::max(one.top, other.top) > RIM;
}

bool LiesOn(const Rectangle& front, const Rectangle& behind) {
    return front.left >= behind.left && front.top >= behind.top && front.right <= behind.right &&
           front.bottom <= behind.bottom;
}

bool ShownTogether(std::uint64_t one, std::uint64_t other) {
    return one == 0 || other == 0 || (one & other) != 0;
}

} // namespace

std::vector<std::pair<std::size_t, std::size_t>> FindCovers(std::span<const PlacedControl> controls,
                                                            std::size_t most) {
    std::vector<std::size_t> order(controls.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::sort(order, {}, [&](std::size_t index) { return controls[index].place.left; });
    std::vector<std::pair<std::size_t, std::size_t>> covers;
    for (auto one = order.begin(); one != order.end(); ++one) {
        for (auto other = one + 1;
             other != order.end() && controls[*other].place.left < controls[*one].place.right; ++other) {
            const auto [front, behind] = std::minmax(*one, *other);
            const PlacedControl& upper = controls[front];
            const PlacedControl& lower = controls[behind];
            // Of two that have the same place the lower one cannot be seen.
            if (Shares(upper.place, lower.place) && ShownTogether(upper.layers, lower.layers) &&
                (!LiesOn(upper.place, lower.place) || LiesOn(lower.place, upper.place))) {
                covers.emplace_back(front, behind);
                if (covers.size() == most) {
                    return covers;
                }
            }
        }
    }
    std::ranges::sort(covers);
    return covers;
}

bool ReachesBeyond(const Rectangle& place, std::int32_t width, std::int32_t height) {
    return place.left < 0 || place.top < 0 || place.right > width || place.bottom > height;
}

} // namespace logic
