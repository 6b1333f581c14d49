// Which controls of a panel stand in each other's way.
#pragma once

#include "logic/text/PropertyLine.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace logic {

struct PlacedControl {
    Rectangle place;
    std::uint64_t layers = 0; // 0: all
};

// Pairs (front, behind) of those that share more than a rim of 2 pixels and can be shown at the same time:
// both stand on one of the same layers, or one on all. They are given from front to back. One that lies
// wholly on another is no fault of either: the other one is its ground. At most so many pairs.
std::vector<std::pair<std::size_t, std::size_t>> FindCovers(std::span<const PlacedControl> controls,
                                                            std::size_t most);

// Whether some of the place lies outside an area of that size at 0,0.
bool ReachesBeyond(const Rectangle& place, std::int32_t width, std::int32_t height);

} // namespace logic
