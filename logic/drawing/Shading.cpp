#include "logic/drawing/Shading.h"

namespace logic {

std::uint8_t ShadedGreen(std::uint8_t base, std::int32_t size, std::int32_t line) {
    constexpr std::int64_t depth = 40;
    const std::int64_t half = size / 2;
    const std::int64_t distance = line - half;
    // Whole numbers throughout, so that no line depends on how a quotient was rounded.
    const std::int64_t raised =
        half == 0 ? depth : depth * (half * half - distance * distance) / (half * half);
    return static_cast<std::uint8_t>(base + raised);
}

} // namespace logic
