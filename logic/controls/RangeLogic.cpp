#include "logic/controls/RangeLogic.h"

#include <algorithm>
#include <cmath>

#include "logic/text/Numbers.h"

namespace logic {

namespace {

constexpr std::int32_t MARGIN = 4;
constexpr std::int32_t REACH = 6;

double Span(const RangeTrack& track) {
    return static_cast<double>(track.maximum) - track.minimum;
}

} // namespace

float LimitToRange(float number, std::int32_t minimum, std::int32_t maximum) {
    return Clamp(number, static_cast<float>(std::min(minimum, maximum)),
                 static_cast<float>(std::max(minimum, maximum)));
}

void PermittedEnds::SetLow(std::optional<float> number) {
    low = number && high ? std::min(*number, *high) : number;
}

void PermittedEnds::SetHigh(std::optional<float> number) {
    high = number && low ? std::max(*number, *low) : number;
}

Permitted PermittedIn(const PermittedEnds& ends, std::int32_t minimum, std::int32_t maximum) {
    const auto lowest = static_cast<float>(std::min(minimum, maximum));
    const auto highest = static_cast<float>(std::max(minimum, maximum));
    return {Clamp(ends.low.value_or(lowest), lowest, highest),
            Clamp(ends.high.value_or(highest), lowest, highest)};
}

std::int32_t RangeTrack::Margin() const {
    return std::clamp((length - 1) / 2, 0, MARGIN);
}

std::int32_t RangeTrack::Way() const {
    return std::max(length - 1 - 2 * Margin(), 0);
}

std::int32_t RangeTrack::PlaceOf(float number) const {
    const std::int32_t travel = Way();
    const double span = Span(*this);
    const double share = span == 0.0 ? 0.0 : (static_cast<double>(number) - minimum) / span;
    return Margin() + std::clamp(TruncateToInteger(share * travel + 0.5), 0, travel);
}

float RangeTrack::NumberAt(std::int32_t pixel) const {
    const std::int32_t travel = Way();
    const std::int64_t distance = static_cast<std::int64_t>(pixel) - Margin();
    if (distance <= 0 || travel == 0) {
        return static_cast<float>(minimum);
    }
    if (distance >= travel) {
        return static_cast<float>(maximum);
    }
    const double perPixel = Span(*this) / travel;
    const double number = minimum + static_cast<double>(distance) * perPixel;
    if (perPixel == 0.0) {
        return static_cast<float>(minimum);
    }
    const double step = std::pow(10.0, std::floor(std::log10(std::fabs(perPixel))));
    const auto rounded = static_cast<float>(std::round(number / step) * step);
    return LimitToRange(rounded + 0.0F, minimum, maximum);
}

RangePart PartAt(const RangeGrip& grip, const RangeTrack& track, const Permitted& permitted, float value) {
    constexpr std::int64_t none = REACH + 1;
    const auto distanceTo = [&](float number, bool mayMove) {
        return mayMove ? std::abs(static_cast<std::int64_t>(grip.pixel) - track.PlaceOf(number)) : none;
    };
    const std::int64_t toLow = distanceTo(permitted.low, grip.mayMoveEnds);
    const std::int64_t toHigh = distanceTo(permitted.high, grip.mayMoveEnds);
    const std::int64_t toEnd = std::min(toLow, toHigh);
    const std::int64_t toValue = distanceTo(value, grip.mayMoveValue);
    if (std::min(toEnd, toValue) > REACH) {
        return RangePart::None;
    }
    if (toValue < toEnd || (toValue == toEnd && grip.isAtMarker)) {
        return RangePart::Value;
    }
    if (toLow != toHigh) {
        return toLow < toHigh ? RangePart::Low : RangePart::High;
    }
    const float number = track.NumberAt(grip.pixel);
    const bool isLowFree = permitted.high >= static_cast<float>(std::max(track.minimum, track.maximum));
    return number < permitted.low || (isLowFree && number <= permitted.high) ? RangePart::Low
                                                                             : RangePart::High;
}

} // namespace logic
