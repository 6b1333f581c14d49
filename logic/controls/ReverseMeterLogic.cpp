#include "logic/controls/ReverseMeterLogic.h"

#include <algorithm>
#include <cmath>

#include "logic/text/Numbers.h"

namespace logic {

void LevelAnswers::Take(float answer) {
    if (!std::isfinite(answer)) {
        return;
    }
    largest_ = count_ == 0 ? answer : std::max(largest_, answer);
    sum_ += static_cast<double>(answer);
    ++count_;
}

std::optional<float> LevelAnswers::Result() const {
    if (count_ == 0) {
        return std::nullopt;
    }
    return combination_ == MeterCombination::Maximum ? largest_
                                                     : static_cast<float>(sum_ / static_cast<double>(count_));
}

std::int32_t HangingHeight(float value, std::int32_t minimum, std::int32_t maximum, std::int32_t height) {
    const double lower = std::min(minimum, maximum);
    const double upper = std::max(minimum, maximum);
    if (upper == lower || std::isnan(value)) {
        return 0;
    }
    const double share = (upper - static_cast<double>(value)) / (upper - lower);
    return TruncateToInteger(std::clamp(share, 0.0, 1.0) * std::max(height, 0) + 0.5);
}

} // namespace logic
