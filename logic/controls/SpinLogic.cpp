#include "logic/controls/SpinLogic.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "logic/text/Numbers.h"
#include "logic/text/Ranges.h"

namespace logic {

namespace {

constexpr std::int32_t PIXELS_A_STEP = 2;
constexpr std::int32_t DRAG_BEGINS = 4; // pixels from the press

} // namespace

bool SpinRange::Contains(float value) const {
    return value >= std::min(minimum, maximum) && value <= std::max(minimum, maximum);
}

float SpinRange::Limited(float value) const {
    return Clamp(value, std::min(minimum, maximum), std::max(minimum, maximum));
}

float StepSpin(float value, std::int32_t steps, float step, const SpinRange& range) {
    constexpr double nearly = 0.001; // of a step
    const double size = std::fabs(static_cast<double>(step));
    double stepped = static_cast<double>(value) + steps * size;
    if (size > 0) {
        const double multiple = std::round(stepped / size);
        stepped = std::fabs(stepped / size - multiple) < nearly ? multiple * size : stepped;
    }
    const double low = std::min(range.minimum, range.maximum);
    const double high = std::max(range.minimum, range.maximum);
    return range.Limited(static_cast<float>(std::clamp(stepped, low, high)) + 0.0F); // no -0
}

bool SpinDrag::IsMeant(std::int32_t y) const {
    return std::abs(y - origin_) >= DRAG_BEGINS;
}

std::int32_t SpinDrag::StepsTo(std::int32_t y) {
    const std::int32_t steps = (origin_ - y) / PIXELS_A_STEP;
    origin_ -= steps * PIXELS_A_STEP;
    return steps;
}

std::optional<SpinProperties> ParseSpinProperties(std::string_view text) {
    std::optional<float> minimum;
    std::optional<float> maximum;
    std::optional<float> value;
    if (!ReadFields(text, minimum, maximum, value)) {
        return std::nullopt;
    }
    return SpinProperties{*minimum, maximum, value};
}

std::string SpinPropertiesText(const SpinRange& range, float value) {
    return FormatExact(range.minimum) + "," + FormatExact(range.maximum) + "," + FormatExact(value);
}

} // namespace logic
