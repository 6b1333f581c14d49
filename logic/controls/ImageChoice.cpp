#include "logic/controls/ImageChoice.h"

#include <algorithm>

namespace logic {

std::optional<std::int32_t> NumberedImages::PlaceOf(std::int32_t number,
                                                    std::optional<std::int32_t> substitute) const {
    const std::int64_t place = std::int64_t{number} - first;
    if (place >= 0 && place < count) {
        return static_cast<std::int32_t>(place);
    }
    return substitute ? PlaceOf(*substitute, std::nullopt) : std::nullopt;
}

std::optional<std::int32_t> NumberedImages::Next(std::int32_t number, bool isBack, bool wrap) const {
    // Those with a number of 32 bits.
    const std::int64_t last = std::min<std::int64_t>(std::int64_t{first} + count - 1, INT32_MAX);
    if (last < first) {
        return std::nullopt;
    }
    std::int64_t next = std::int64_t{number} + (isBack ? -1 : 1);
    if (number < first || number > last) {
        next = number < first ? first : last;
    } else if (next < first) {
        next = wrap ? last : first;
    } else if (next > last) {
        next = wrap ? first : last;
    }
    return next == number ? std::nullopt : std::optional(static_cast<std::int32_t>(next));
}

} // namespace logic
