// What sound is made of: samples of one size and kind, a frame of one sample a channel, frames a second. Its
// text, the format record of wave files and devices, and samples as numbers of which 1 is full scale.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace logic {

struct SampleFormat {
    std::uint16_t channels = 2; // 1 to 64
    std::uint16_t bits = 16;    // of a sample: 8 (without sign), 16, 24 or 32
    std::uint32_t rate = 44100; // frames a second
    bool isFloat = false;       // of 32 bits

    std::uint32_t FrameSize() const { return std::uint32_t{channels} * bits / 8; } // bytes
    // Frames that last so many milliseconds, at least one.
    std::uint32_t FramesIn(std::uint32_t milliseconds) const;
    bool operator==(const SampleFormat&) const = default;
};

// "44100 Hz,16bit,Stereo": 1000 to 384000 Hz; 8bit, 16bit, 24bit, 32bit or float; Mono or Stereo; in capitals
// or not. Nothing for any other text.
std::optional<SampleFormat> ParseSampleFormat(std::string_view text);
std::string SampleFormatText(const SampleFormat& format);

constexpr std::size_t FORMAT_RECORD_SIZE = 16;

// The record as a format chunk of a wave file and the system hold it: 16 bytes, which say whether it is of
// whole numbers or of floats. More than two channels need what follows in longer ones.
std::vector<std::uint8_t> FormatRecord(const SampleFormat& format);
// Reads one of at least that size, the extensible kind included. Nothing when the samples are of a kind that
// this format cannot describe, or the record contradicts itself.
std::optional<SampleFormat> ReadFormatRecord(std::span<const std::uint8_t> record);

// Of the bytes at a place, which hold one: -1 to 1, or beyond it for a float. A float that is no number is 0.
float ReadSample(const SampleFormat& format, const std::uint8_t* bytes);
// Limited to what the format can hold, rounded.
void WriteSample(const SampleFormat& format, float sample, std::uint8_t* bytes);

} // namespace logic
