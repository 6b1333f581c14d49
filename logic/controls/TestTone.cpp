#include "logic/controls/TestTone.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

namespace logic {

namespace {

constexpr double TURN = 6.283185307179586;
constexpr std::string_view UNIT = "min";
constexpr std::int32_t MAXIMUM_SECONDS = 60; // 60 itself is taken, as it always was

double FiniteOrZero(double value) {
    return std::isfinite(value) ? value : 0.0;
}

} // namespace

std::optional<std::int32_t> ParseDuration(std::string_view text) {
    const auto fields = SplitFields(text, ':');
    const auto minutes = fields.size() == 1 ? ParseIntegerIn(UNIT, fields[0]) : ParseWholeInteger(fields[0]);
    const auto seconds = fields.size() == 1 ? std::optional(0) : ParseIntegerIn(UNIT, fields[1]);
    if (!minutes || !seconds || fields.size() > 2) {
        return std::nullopt;
    }
    const std::int64_t length = std::int64_t{*minutes} * 60 + std::min(*seconds, MAXIMUM_SECONDS);
    return static_cast<std::int32_t>(
        std::clamp<std::int64_t>(length, 0, std::numeric_limits<std::int32_t>::max()));
}

std::string FormatDuration(std::int32_t seconds) {
    char text[32];
    std::snprintf(text, sizeof text, "%d:%02d min", static_cast<int>(seconds / 60),
                  static_cast<int>(seconds % 60));
    return text;
}

std::optional<ToneSignal> ParseSignal(std::string_view text, std::int32_t presentAmplitude) {
    const auto fields = SplitFields(text, ',');
    const auto frequency = ParseFloatIn("Hz", fields[0]);
    const auto amplitude =
        fields.size() == 1 ? std::optional(presentAmplitude) : ParseWholeInteger(fields[1]);
    if (!frequency || !amplitude || fields.size() > 2) {
        return std::nullopt;
    }
    return ToneSignal{*frequency, std::clamp(*amplitude, 0, MAXIMUM_AMPLITUDE)};
}

std::string FormatSignal(const ToneSignal& signal) {
    return FormatFloat(signal.frequency) + " Hz," + std::to_string(signal.amplitude);
}

SineOscillator::SineOscillator(float frequency, float sampleRate, double phase)
    : step_(FiniteOrZero(
          std::fmod(static_cast<double>(frequency) / static_cast<double>(sampleRate) * TURN, TURN))),
      phase_(std::fmod(FiniteOrZero(phase), TURN)) {}

std::int16_t SineOscillator::Next(std::int32_t amplitude) {
    const double value = std::sin(phase_) * amplitude;
    phase_ += step_;
    if (phase_ > TURN) {
        phase_ -= TURN;
    } else if (phase_ < -TURN) {
        phase_ += TURN;
    }
    return static_cast<std::int16_t>(value);
}

std::int64_t SampleCount(float sampleRate, std::int32_t seconds, std::int64_t limit) {
    const std::int64_t rate = std::max(TruncateToInteger(static_cast<double>(sampleRate)), 0);
    return std::min(rate * std::max(seconds, 0), limit);
}

} // namespace logic
