#include "logic/sound/Levels.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace logic {

namespace {

constexpr std::size_t LANES = 8;
// The sums of a lane stay exact to five digits, and are those of so many squares at most.
constexpr std::size_t LONGEST_RUN = 1024;

// Of stereo in 16 bits, which is what nearly everybody uses: lanes beside each other, so that the compiler
// does several at a time. Even lanes are the left channel.
struct Lanes {
    float greatest[LANES] = {};
    float sums[LANES] = {};

    void Take(const std::uint8_t* bytes) {
        std::int16_t samples[LANES];
        std::memcpy(samples, bytes, sizeof samples);
        for (std::size_t i = 0; i < LANES; ++i) {
            const auto sample = static_cast<float>(samples[i]);
            const float square = sample * sample;
            sums[i] += square;
            greatest[i] = greatest[i] > square ? greatest[i] : square;
        }
    }
};

BlockLevels MeasureStereo16(std::span<const std::uint8_t> frames) {
    constexpr std::size_t STEP = LANES * 2; // bytes
    float greatest[2] = {};
    double sums[2] = {};
    const std::size_t frameCount = frames.size() / 4;
    while (frames.size() >= STEP) {
        Lanes lanes;
        const std::size_t steps = std::min(frames.size() / STEP, LONGEST_RUN);
        for (std::size_t step = 0; step < steps; ++step) {
            lanes.Take(frames.data() + step * STEP);
        }
        for (std::size_t i = 0; i < LANES; ++i) {
            greatest[i % 2] = std::max(greatest[i % 2], lanes.greatest[i]);
            sums[i % 2] += static_cast<double>(lanes.sums[i]);
        }
        frames = frames.subspan(steps * STEP);
    }
    for (std::size_t i = 0; i + 1 < frames.size() / 4 * 4; i += 2) {
        std::int16_t sample = 0;
        std::memcpy(&sample, frames.data() + i, sizeof sample);
        const auto square = static_cast<float>(sample) * static_cast<float>(sample);
        greatest[i / 2 % 2] = std::max(greatest[i / 2 % 2], square);
        sums[i / 2 % 2] += static_cast<double>(square);
    }
    BlockLevels levels;
    for (int i = 0; i < 2 && frameCount > 0; ++i) {
        levels.channels[i].peak = std::sqrt(greatest[i]) / 32768.0F;
        levels.channels[i].power = sums[i] / static_cast<double>(frameCount) / (32768.0 * 32768.0);
    }
    return levels;
}

// Bytes of the samples of whole frames.
std::size_t WholeFrames(const SampleFormat& format, std::size_t size) {
    return size - size % format.FrameSize();
}

} // namespace

BlockLevels MeasureLevels(const SampleFormat& format, std::span<const std::uint8_t> frames) {
    if (format == SampleFormat{2, 16, format.rate, false}) {
        return MeasureStereo16(frames);
    }
    BlockLevels levels;
    const std::size_t frameSize = format.FrameSize();
    const std::size_t count = frames.size() / frameSize;
    const std::size_t measured = format.channels == 1 ? 1 : 2;
    for (std::size_t i = 0; i < count * measured; ++i) {
        ChannelLevel& level = levels.channels[i % measured];
        const float sample =
            ReadSample(format, frames.data() + i / measured * frameSize + i % measured * (format.bits / 8U));
        level.peak = std::max(level.peak, std::abs(sample));
        level.power += static_cast<double>(sample) * static_cast<double>(sample) / static_cast<double>(count);
    }
    if (measured == 1) {
        levels.channels[1] = levels.channels[0];
    }
    return levels;
}

BlockLevels Joined(const BlockLevels& one, const BlockLevels& other) {
    BlockLevels joined;
    for (int i = 0; i < 2; ++i) {
        joined.channels[i] = {std::max(one.channels[i].peak, other.channels[i].peak),
                              (one.channels[i].power + other.channels[i].power) / 2};
    }
    return joined;
}

float PeakDecibels(const ChannelLevel& level) {
    return level.peak > 0 ? std::max(20 * std::log10(level.peak), SILENCE) : SILENCE;
}

float PowerDecibels(const ChannelLevel& level) {
    return level.power > 0 ? std::max(static_cast<float>(10 * std::log10(level.power)), SILENCE) : SILENCE;
}

float GainOf(float decibels) {
    return std::pow(10.0F, decibels / 20);
}

void ApplyGain(const SampleFormat& format, float gain, std::span<std::uint8_t> frames) {
    if (gain == 1) {
        return;
    }
    const std::size_t step = format.bits / 8U;
    for (std::size_t at = 0; at < WholeFrames(format, frames.size()); at += step) {
        WriteSample(format, gain * ReadSample(format, frames.data() + at), frames.data() + at);
    }
}

void ConvertTo16Bits(const SampleFormat& format, std::span<const std::uint8_t> frames,
                     std::vector<std::uint8_t>& converted) {
    constexpr SampleFormat TARGET;
    const std::size_t step = format.bits / 8U;
    const std::size_t count = WholeFrames(format, frames.size()) / step;
    converted.resize(count * 2);
    for (std::size_t i = 0; i < count; ++i) {
        WriteSample(TARGET, ReadSample(format, frames.data() + i * step), converted.data() + i * 2);
    }
}

} // namespace logic
