#include "logic/controls/PitchBend.h"

#include "logic/text/Numbers.h"

#include <algorithm>

namespace logic {

namespace {

constexpr unsigned STATUS = 0xE0; // pitch bend on the first channel

} // namespace

std::int32_t RoundPitchBend(float value) {
    return TruncateToInteger(static_cast<double>(value) + 0.5);
}

std::uint32_t PitchBendMessage(unsigned channel, std::uint16_t value) {
    return value * 0x1000U + STATUS + channel;
}

std::optional<PitchBend> ReadPitchBend(std::uint32_t message) {
    const unsigned channel = (message & 0xFF) - STATUS;
    if (channel >= PITCH_BEND_CHANNELS) { // a lower status has wrapped around
        return std::nullopt;
    }
    const unsigned first = message >> 8 & 0xFF;
    const unsigned second = message >> 16 & 0xFF;
    const unsigned value = std::min<unsigned>(second * 16 + first / 16, HIGHEST_PITCH_BEND);
    return PitchBend{channel, static_cast<std::uint16_t>(value)};
}

} // namespace logic
