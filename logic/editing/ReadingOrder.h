// In which order people read what stands on a panel.
#pragma once

#include "logic/text/PropertyLine.h"

#include <cstddef>
#include <span>
#include <vector>

namespace logic {

// The places of the rectangles in the order of reading: line by line from the top, each from the left. What
// has its middle beside another one is in the same line. Of two that overlap the one that was in front stays
// in front, so that nothing is covered that was not. The rectangles are given in their present order.
std::vector<std::size_t> ReadingOrder(std::span<const Rectangle> rectangles);

} // namespace logic
