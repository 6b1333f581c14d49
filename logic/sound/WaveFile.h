// Wave files: where the samples of one lie and of what format they are, and the header of a new one.
#pragma once

#include "logic/sound/SampleFormat.h"

#include <functional>

namespace logic {

struct WaveLayout {
    SampleFormat format;
    std::vector<std::uint8_t> record; // the format as the file describes it, 16 bytes at least
    std::uint64_t begin = 0;          // of the samples in the file
    std::uint64_t size = 0;           // of the samples in bytes: whole frames that are there
    std::uint64_t missing = 0;        // bytes that the file claims beyond its end

    std::uint64_t Frames() const { return size / format.FrameSize(); }
};

struct WaveReading {
    WaveLayout layout;
    const char* fault =
        nullptr; // what is wrong with the file, in words that follow its name; null for nothing
};

// Reads bytes of a file from a place on; answers how many there were.
using ByteSource = std::function<std::size_t(std::uint64_t place, std::span<std::uint8_t> into)>;

// Finds the samples of a file of that size. Reads its chunk headers and its format, nothing else.
WaveReading ReadWave(const ByteSource& read, std::uint64_t fileSize);

// The header of a file with so many bytes of samples; where they are an odd number, one more byte ends the
// file. The samples follow it at once.
std::vector<std::uint8_t> WaveHeader(const SampleFormat& format, std::uint32_t size);
// Bytes of samples that a file can have at most.
constexpr std::uint32_t LONGEST_WAVE = 0xFFFFFF00;

} // namespace logic
