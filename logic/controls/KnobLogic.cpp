#include "logic/controls/KnobLogic.h"

#include <cmath>

#include "logic/text/Numbers.h"

namespace logic {

namespace {

constexpr double DOT_RADIUS = 14.0;
constexpr std::int32_t FACE_SIZE = 47;
constexpr std::int32_t DOT_SIZE = 5;
constexpr double SWEEP = 4.71238898038469;        // 270 degrees
constexpr double MAXIMUM_AT = 0.7853981633974483; // 45 degrees below the horizontal
constexpr float PAGE_STEPS = 10.0F;

} // namespace

std::int16_t DragDistance(int x, int origin) {
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(x) - static_cast<std::uint16_t>(origin));
}

float DragKnob(float value, std::int16_t dx, const KnobRange& range) {
    if (dx == 0) {
        return value;
    }
    const auto minimum = static_cast<float>(range.minimum);
    const auto maximum = static_cast<float>(range.maximum);
    const float moved = value + static_cast<float>(dx);
    const float limited = Clamp(moved, minimum, maximum);
    return limited == moved ? RoundToStep(moved, range.resolution) : limited;
}

std::optional<float> StepKnob(float value, KnobKey key, const KnobRange& range) {
    if (key == KnobKey::End) {
        return static_cast<float>(range.minimum);
    }
    if (key == KnobKey::Home) {
        return static_cast<float>(range.maximum);
    }
    const float step = range.resolution;
    if (step == 0.0F || !std::isfinite(step)) {
        return std::nullopt;
    }
    switch (key) {
    case KnobKey::PageUp:
        return value + PAGE_STEPS * step;
    case KnobKey::PageDown:
        return value - PAGE_STEPS * step;
    case KnobKey::Left:
        return value + step;
    case KnobKey::Right:
        return value - step;
    default:
        return std::nullopt;
    }
}

DotRectangle KnobDot(float value, const KnobRange& range, std::int32_t percent) {
    const double span = static_cast<double>(range.maximum) - range.minimum;
    const double belowMaximum =
        static_cast<double>(range.maximum) - TruncateToInteger(std::floor(static_cast<double>(value) + 0.5));
    const double angle = (span == 0.0 ? 0.0 : belowMaximum * SWEEP / span) - MAXIMUM_AT;
    const double radius = DOT_RADIUS * percent / 100;
    const auto dx = static_cast<std::int32_t>(std::round(std::cos(angle) * radius));
    const auto dy = static_cast<std::int32_t>(std::round(std::sin(angle) * radius));
    const std::int32_t face = (FACE_SIZE * percent + 50) / 100;
    const std::int32_t size = (DOT_SIZE * percent) / 100 | (face & 1); // even in an even face, odd in an odd
    const std::int32_t corner = (face - size) / 2;
    return {corner + dx, corner - dy, corner + dx + size, corner - dy + size};
}

} // namespace logic
