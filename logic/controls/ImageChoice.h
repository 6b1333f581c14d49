// Which of several pictures a number picks, and the number that a click leads to.
#pragma once

#include <cstdint>
#include <optional>

namespace logic {

// Pictures with consecutive numbers.
struct NumberedImages {
    std::int32_t first; // number of the first
    std::int32_t count; // of pictures, not negative

    // The place of the picture of that number, the first being 0; without one that of the substitute, and
    // nothing when there is none of its number either.
    std::optional<std::int32_t> PlaceOf(std::int32_t number, std::optional<std::int32_t> substitute) const;

    // The next number that has a picture, or the one before; from outside of them that of the nearest end.
    // With wrap the last one is followed by the first. Nothing when there is no other.
    std::optional<std::int32_t> Next(std::int32_t number, bool isBack, bool wrap) const;
};

} // namespace logic
