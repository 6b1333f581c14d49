// Panel values as MIDI pitch-bend messages, and back.
#pragma once

#include <cstdint>
#include <optional>

namespace logic {

constexpr unsigned PITCH_BEND_CHANNELS = 8;
constexpr std::uint16_t HIGHEST_PITCH_BEND = 2039; // the highest value that two 7-bit data bytes can carry

// The value plus 0.5, without its fraction. Beyond 32 bits the nearest end, 0 for what is not a number.
std::int32_t RoundPitchBend(float value);

// The short message for a channel, counted from 0: status byte in the lowest byte, then the data bytes. The
// upper seven bits of the value are the second data byte, its lower four bits the upper half of the first.
// That half can set the top bit, which no MIDI data byte has: the receiving devices expect it so.
std::uint32_t PitchBendMessage(unsigned channel, std::uint16_t value);

struct PitchBend {
    unsigned channel; // counted from 0
    std::uint16_t value;
};

// What a received short message says. Nothing when it is no pitch bend on one of the eight channels. A value
// that only faulty data bytes can make becomes the highest one.
std::optional<PitchBend> ReadPitchBend(std::uint32_t message);

} // namespace logic
