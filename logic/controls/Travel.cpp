#include "logic/controls/Travel.h"

#include <algorithm>
#include <cmath>

namespace logic {

namespace {

// Pixels that lie between the beginning and the last lit one of the bar.
std::int32_t LastLit(const Travel& travel, float value) {
    const std::int32_t length = std::max(travel.length, 0);
    Span lit = LitSpan(travel.range, travel.origin, value, length, travel.segment);
    if (travel.shown == Travel::Shown::CutOffBar) {
        constexpr double slack = 1e-9; // what is a whole pixel in theory is one
        const auto edge = [&](float of) {
            return static_cast<std::int32_t>(std::floor(travel.range.Fraction(of) * length + slack));
        };
        const auto [first, last] = std::minmax({edge(travel.origin), edge(value)});
        lit = {first, last};
    }
    const bool isAhead = travel.range.Fraction(value) >= travel.range.Fraction(travel.origin);
    const std::int32_t gap = travel.segment > 0 ? 1 : 0;
    const std::int32_t pixel = isAhead ? lit.last - 1 - gap : lit.first;
    return std::clamp(pixel, 0, std::max(length - 1, 0));
}

} // namespace

std::int32_t Travel::PlaceOf(float value) const {
    if (shown == Shown::Line) {
        const std::int32_t way = range.Edge(value, length);
        return isBackwards ? begin - way : begin + way;
    }
    const std::int32_t pixel = LastLit(*this, value);
    return isBackwards ? begin - 1 - pixel : begin + pixel;
}

} // namespace logic
