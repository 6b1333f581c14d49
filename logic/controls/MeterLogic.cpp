#include "logic/controls/MeterLogic.h"

#include <algorithm>

namespace logic {

MeterAnswers::MeterAnswers(MeterCombination combination, std::int32_t minimum, std::int32_t maximum)
    : combination_(combination),
      lowerEnd_(std::min(minimum, maximum)),
      cell_(lowerEnd_),
      largest_(lowerEnd_) {}

void MeterAnswers::Take() {
    largest_ = std::max(largest_, cell_);
    sum_ += cell_;
    ++count_;
}

std::int32_t MeterAnswers::Result() const {
    if (count_ == 0) {
        return lowerEnd_;
    }
    return combination_ == MeterCombination::Maximum ? largest_ : static_cast<std::int32_t>(sum_ / count_);
}

std::int32_t FillHeight(std::int32_t value, std::int32_t minimum, std::int32_t maximum, std::int32_t height) {
    const std::int64_t low = std::min(minimum, maximum);
    const std::int64_t high = std::max(minimum, maximum);
    if (value <= low) {
        return 0;
    }
    if (value >= high) {
        return height;
    }
    return static_cast<std::int32_t>((value - low) * height / (high - low));
}

} // namespace logic
