// The shaded bar that stands in for a missing image.
#pragma once

#include <cstdint>

namespace logic {

// The green of one line of a bar whose other channels stay as they are: 40 brighter in the middle than the
// base, falling off with the square of the distance towards the base at the edges. The bar is `size` lines
// thick, line 0 is its first. What does not fit a byte wraps around.
std::uint8_t ShadedGreen(std::uint8_t base, std::int32_t size, std::int32_t line);

} // namespace logic
