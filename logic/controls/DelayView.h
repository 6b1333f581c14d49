// How a delay is shown and stepped in a unit that need not be its own.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "logic/controls/Crossover.h"

namespace logic {

enum class ShownUnit { Milliseconds, Metres, Feet, Samples };
constexpr std::array<std::string_view, 4> SHOWN_UNITS{"ms", "m", "ft", "samples"};

// The delay in that unit, bypassed or not; samples are those of that rate, in Hz, lengths what sound needs.
// Nothing of an unknown unit or of what is no number is no delay: 0.
double DelayIn(ShownUnit unit, const DelaySetting& delay, double sampleRate);
// "2.50 ms", "0.86 m", "2.8 ft", "120 samples".
std::string DelayTextIn(ShownUnit unit, const DelaySetting& delay, double sampleRate);
// The delay moved by so many steps of that unit (1, or a tenth where they are small; a sample is the least),
// and onto the grid of these; not below 0, in the unit that it had.
DelaySetting StepDelayIn(ShownUnit unit, const DelaySetting& delay, int steps, bool isSmall,
                         double sampleRate);
// How much of a bar it fills that stands for so many milliseconds, 0 to 1.
double DelayShare(const DelaySetting& delay, double maximum, double sampleRate);

} // namespace logic
