// What a wave generator makes: a sine of a frequency, an amplitude and a length. The texts it is set by, and
// its samples.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace logic {

// "minutes:seconds min", of which seconds and unit may be missing: "2", "2:00" and "2:00 min" are 120.
// Seconds above 60 become 60. A length below nothing is 0, one beyond 32 bits the longest there is. Nothing
// for any other text.
std::optional<std::int32_t> ParseDuration(std::string_view text);

// "2:05 min" for 125.
std::string FormatDuration(std::int32_t seconds);

constexpr std::int32_t MAXIMUM_AMPLITUDE = 32767;

struct ToneSignal {
    float frequency;        // Hz
    std::int32_t amplitude; // peak value of a sample, 0 to MAXIMUM_AMPLITUDE

    bool operator==(const ToneSignal&) const = default;
};

// "frequency Hz,amplitude", of which unit and amplitude may be missing. The amplitude is then the present
// one; one outside its range becomes the nearest end. Nothing for any other text.
std::optional<ToneSignal> ParseSignal(std::string_view text, std::int32_t presentAmplitude);

// "1000 Hz,24575"
std::string FormatSignal(const ToneSignal& signal);

// A sine whose phase runs on from sample to sample.
class SineOscillator {
public:
    // Begins at a phase in radians. Whole turns between two samples are left out, which changes no sample and
    // keeps the phase within one turn to either side, whatever the frequency. Where the numbers make no step
    // (a rate of 0, something that is no number) the phase stands still, and a phase that is not finite is 0.
    SineOscillator(float frequency, float sampleRate, double phase);

    // The present sample, truncated towards zero. The amplitude lies within -MAXIMUM_AMPLITUDE to
    // MAXIMUM_AMPLITUDE.
    std::int16_t Next(std::int32_t amplitude);

    double Phase() const { return phase_; } // of the next sample

private:
    double step_;
    double phase_;
};

// How many samples a length has, the rate being truncated to whole Hz; none where either is not positive, the
// limit where there are more.
std::int64_t SampleCount(float sampleRate, std::int32_t seconds, std::int64_t limit);

} // namespace logic
