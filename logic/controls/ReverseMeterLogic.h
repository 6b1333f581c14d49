// What the reverse meter computes: one value from several answers, and how far the bar hangs down.
#pragma once

#include <cstdint>
#include <optional>

#include "logic/controls/MeterLogic.h"

namespace logic {

// Combines the answers of one round of questions.
class LevelAnswers {
public:
    explicit LevelAnswers(MeterCombination combination) : combination_(combination) {}

    // What is not finite does not count.
    void Take(float answer);
    // The largest or the average of those that count; nothing when there are none.
    std::optional<float> Result() const;

private:
    MeterCombination combination_;
    float largest_ = 0;
    double sum_ = 0;
    std::int64_t count_ = 0;
};

// Pixels that hang from the upper end of a meter of that height, to the nearest one: none at and above the
// upper end, all of them at and below the lower one. The order of the ends does not matter; of a range of one
// number none hang, and of what is not a number neither.
std::int32_t HangingHeight(float value, std::int32_t minimum, std::int32_t maximum, std::int32_t height);

} // namespace logic
