#include "logic/TestTone.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

#include "logic/Numbers.h"
#include "logic/Text.h"

namespace logic {

namespace {

constexpr double TURN = 6.283185307179586;
constexpr std::int32_t MAXIMUM_SECONDS = 60; // 60 itself is taken, as it always was

bool Skip(std::string_view& text, std::string_view expected) {
    if (!text.starts_with(expected)) {
        return false;
    }
    text.remove_prefix(expected.size());
    return true;
}

double FiniteOrZero(double value) {
    return std::isfinite(value) ? value : 0.0;
}

} // namespace

std::optional<std::int32_t> ParseDuration(std::string_view text) {
    const std::optional<std::int32_t> minutes = TakeInteger(text);
    if (!minutes) {
        return std::nullopt;
    }
    std::int32_t seconds = 0;
    if (Skip(text, ":")) {
        seconds = std::min(TakeInteger(text).value_or(0), MAXIMUM_SECONDS);
    }
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(std::int64_t{*minutes} * 60 + seconds, 0,
                                                              std::numeric_limits<std::int32_t>::max()));
}

std::string FormatDuration(std::int32_t seconds) {
    char text[32];
    std::snprintf(text, sizeof text, "%d:%02d min", static_cast<int>(seconds / 60),
                  static_cast<int>(seconds % 60));
    return text;
}

std::optional<ToneSignal> ParseSignal(std::string_view text, std::int32_t presentAmplitude) {
    const std::optional<float> frequency = TakeFloat(text);
    if (!frequency) {
        return std::nullopt;
    }
    ToneSignal signal{*frequency, presentAmplitude};
    while (!text.empty() && IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    if (Skip(text, "Hz,")) {
        signal.amplitude = std::clamp(TakeInteger(text).value_or(presentAmplitude), 0, MAXIMUM_AMPLITUDE);
    }
    return signal;
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
