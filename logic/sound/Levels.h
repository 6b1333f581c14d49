// How loud sound is, and sound made softer.
#pragma once

#include "logic/sound/SampleFormat.h"

namespace logic {

struct ChannelLevel {
    float peak = 0;   // greatest sample, without its sign; 1 is full scale
    double power = 0; // mean of the squares
};

// Of the first two channels; the second one of a single channel is that one.
struct BlockLevels {
    ChannelLevel channels[2];
};

// Of whole frames; what follows the last one does not count.
BlockLevels MeasureLevels(const SampleFormat& format, std::span<const std::uint8_t> frames);
// Of two blocks that follow each other and are of the same length.
BlockLevels Joined(const BlockLevels& one, const BlockLevels& other);

constexpr float SILENCE = -144; // dB: nothing is below it

// Of a peak and of a power, 0 for full scale: a sine of full scale has a power of -3.
float PeakDecibels(const ChannelLevel& level);
float PowerDecibels(const ChannelLevel& level);

// What samples are multiplied by for so many dB.
float GainOf(float decibels);
// Multiplies whole frames; a gain of 1 leaves them bit for bit.
void ApplyGain(const SampleFormat& format, float gain, std::span<std::uint8_t> frames);
// Whole frames as such of 16-bit samples.
void ConvertTo16Bits(const SampleFormat& format, std::span<const std::uint8_t> frames,
                     std::vector<std::uint8_t>& converted);

} // namespace logic
