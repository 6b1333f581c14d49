#include "logic/controls/FilterValues.h"

#include <cmath>
#include <numbers>

#include "logic/text/Numbers.h"

namespace logic {

namespace {

const double DECADES = std::log(1000.0);

std::string Fixed(float value, int digits) {
    return FormatFixed(std::isfinite(value) ? static_cast<double>(value) : 0.0, digits);
}

bool IsPositive(float value) {
    return std::isfinite(value) && value > 0.0F;
}

} // namespace

float StepFrequency(float hertz, int steps) {
    const double from = IsPositive(hertz) ? hertz : LOWEST_FREQUENCY;
    const double place = FREQUENCY_STEPS * std::log(from / LOWEST_FREQUENCY) / DECADES;
    const double wanted = std::trunc(place + 0.5) + steps;
    return Clamp(static_cast<float>(LOWEST_FREQUENCY * std::exp(DECADES * wanted / FREQUENCY_STEPS)),
                 LOWEST_FREQUENCY, HIGHEST_FREQUENCY);
}

float StepGain(float decibels, int steps, float low, float high) {
    return Clamp(decibels + static_cast<float>(steps) * 0.5F, low, high);
}

std::string FrequencyText(float hertz) {
    return Fixed(hertz, hertz >= 100.0F ? 0 : 1) + " Hz";
}

std::string TypedBandFrequencyText(float hertz) {
    return Fixed(hertz, 1) + " Hz";
}

std::string TypedCrossoverFrequencyText(float hertz) {
    return FormatFloat(std::isfinite(hertz) ? hertz : 0.0F) + " Hz";
}

std::string GainText(float decibels) {
    const std::string text = Fixed(decibels, 1);
    return (text.starts_with('-') ? "" : "+") + text + " dB";
}

std::string QText(float q, bool asBandwidth) {
    return asBandwidth ? Fixed(QToBandwidth(q), 2) + " Oct" : Fixed(q, 1);
}

float QToBandwidth(float q) {
    if (!IsPositive(q)) {
        return 0.0F;
    }
    return Clamp(static_cast<float>(2.0 / std::numbers::ln2 * std::asinh(0.5 / q)), 0.0F, 1000.0F);
}

float BandwidthToQ(float octaves) {
    if (!IsPositive(octaves)) {
        return 0.0F;
    }
    return Clamp(static_cast<float>(0.5 / std::sinh(octaves * std::numbers::ln2 / 2.0)), 0.0F, 1e9F);
}

} // namespace logic
