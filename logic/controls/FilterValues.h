// What the equaliser's and the crossover's values have in common: the frequency grid, gains, Q and bandwidth,
// and how they are shown.
#pragma once

#include <string>

namespace logic {

constexpr float LOWEST_FREQUENCY = 20.0F;     // Hz
constexpr float HIGHEST_FREQUENCY = 20000.0F; // Hz
constexpr int FREQUENCY_STEPS = 575;          // of the logarithmic grid between the two

// The frequency that many steps of the grid further up (down where negative), from the grid's step nearest to
// it, limited to the range. A frequency that is not a positive number counts as the lowest.
float StepFrequency(float hertz, int steps);
// Steps of 0.5 dB within a range.
float StepGain(float decibels, int steps, float low, float high);

// "%.0f Hz" from 100 Hz on, "%.1f Hz" below. What is not a number is shown as 0.
std::string FrequencyText(float hertz);
// "%.1f Hz" and "%g Hz", as a typed frequency is shown by the equaliser and by the crossover.
std::string TypedBandFrequencyText(float hertz);
std::string TypedCrossoverFrequencyText(float hertz);
// "%+.1f dB"
std::string GainText(float decibels);
// "%.1f", or in octaves "%.2f Oct"
std::string QText(float q, bool asBandwidth);

// Bandwidth in octaves between the points of half the gain in dB, 2 / ln 2 * asinh(1 / (2 Q)), and back. Both
// give 0 for what is not a positive number.
float QToBandwidth(float q);
float BandwidthToQ(float octaves);

} // namespace logic
