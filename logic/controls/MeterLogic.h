// What the meter computes: one value from several answers, and how far the bar is filled.
#pragma once

#include <cstdint>

namespace logic {

enum class MeterCombination { Maximum, Average };

// Combines the answers of one round of questions. The answers share one cell: every target is asked with what
// the one before it answered, and one that does not answer thereby counts with that value, the first with the
// lower end of the range. This is deliberate.
class MeterAnswers {
public:
    MeterAnswers(MeterCombination combination, std::int32_t minimum, std::int32_t maximum);

    std::int32_t& Cell() { return cell_; }
    // Counts what the cell holds now.
    void Take();
    // The largest value, never below the lower end, or the average, cut off towards zero. Without any value
    // the lower end of the range.
    std::int32_t Result() const;

private:
    MeterCombination combination_;
    std::int32_t lowerEnd_;
    std::int32_t cell_;
    std::int32_t largest_;
    std::int64_t sum_ = 0;
    std::int64_t count_ = 0;
};

// Pixels that are lit of a meter of that height; 0 at and below the lower end, all of it at and above the
// upper end. The order of the ends does not matter.
std::int32_t FillHeight(std::int32_t value, std::int32_t minimum, std::int32_t maximum, std::int32_t height);

} // namespace logic
