#include "logic/controls/DelayView.h"

#include <algorithm>
#include <cmath>

#include "logic/controls/Response.h"
#include "logic/text/Numbers.h"

namespace logic {

namespace {

std::int32_t IndexOf(ShownUnit unit) {
    const auto found =
        std::find(DELAY_UNITS.begin(), DELAY_UNITS.end(), SHOWN_UNITS[static_cast<std::size_t>(unit)]);
    return static_cast<std::int32_t>(found - DELAY_UNITS.begin());
}

double SecondsOf(float amount, std::int32_t unit, double sampleRate) {
    return DelaySeconds({0, amount, unit}, sampleRate);
}

} // namespace

double DelayIn(ShownUnit unit, const DelaySetting& delay, double sampleRate) {
    const std::int32_t index = IndexOf(unit);
    return delay.unit == index && IsKnown(delay)
               ? delay.amount
               : SecondsOf(delay.amount, delay.unit, sampleRate) / SecondsOf(1, index, sampleRate);
}

std::string DelayTextIn(ShownUnit unit, const DelaySetting& delay, double sampleRate) {
    constexpr int DIGITS[] = {2, 2, 1, 0};
    const auto row = static_cast<std::size_t>(unit);
    return FormatFixed(DelayIn(unit, delay, sampleRate), DIGITS[row]) + " " + std::string(SHOWN_UNITS[row]);
}

DelaySetting StepDelayIn(ShownUnit unit, const DelaySetting& delay, int steps, bool isSmall,
                         double sampleRate) {
    const double step = isSmall && unit != ShownUnit::Samples ? 0.1 : 1;
    const double amount = std::max(std::round(DelayIn(unit, delay, sampleRate) / step + steps) * step, 0.0);
    DelaySetting stepped = delay;
    const std::int32_t index = IndexOf(unit);
    stepped.amount = static_cast<float>(delay.unit == index ? amount
                                                            : amount * SecondsOf(1, index, sampleRate) /
                                                                  SecondsOf(1, delay.unit, sampleRate));
    return IsKnown(stepped) ? stepped : delay;
}

double DelayShare(const DelaySetting& delay, double maximum, double sampleRate) {
    const double share = DelayIn(ShownUnit::Milliseconds, delay, sampleRate) / maximum;
    return share > 0 ? std::min(share, 1.0) : 0.0;
}

} // namespace logic
