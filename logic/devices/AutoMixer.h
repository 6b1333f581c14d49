// What an automatic mixer of microphones does in a simulated device: it shares one gain over its channels.
//
//     DSP*auto%i=automixer,4,mic%i              four channels that listen to mic1 to mic4
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "logic/devices/Simulation.h"

namespace logic {

constexpr std::int32_t LARGEST_AUTOMIXER = 64;

struct AutoMixerNames {
    std::vector<std::string> channels; // what the parameters of each begin with
    std::vector<std::string> sources;  // the level of each
};

// Reads "channels,source pattern" of the channels of that pattern. Nothing when a field is missing or out of
// range, or two channels would have one name.
std::optional<AutoMixerNames> ParseAutoMixer(std::string_view channels, std::string_view text);

// The parameters of a channel: what stands behind its name, and the declaration.
std::vector<std::pair<std::string, ParameterDeclaration>> AutoMixerParameters();

struct AutoMixerChannel {
    std::optional<float> level; // dB; nothing: there is no microphone
    float weight = 0;           // dB
    float threshold = 0;        // dB
    std::uint32_t hold = 0;     // milliseconds
    bool hasPriority = false;
    bool isFrozen = false;
    bool isMuted = false;
    float gain = 0; // dB, what Step answers; 0 or less
};

// The state of a mixer: which of its channels take part.
class AutoMixer {
public:
    // Computes the gains after so many milliseconds. The gain of a channel is its weighted level minus the
    // power sum of the weighted levels of all that take part, so that these sum up to 0 dB. A channel takes
    // no part while it is muted, has no level, or was below its threshold for its hold time, and has the
    // lowest level as gain then. While one with priority takes part, those without do not. A frozen channel
    // keeps its gain, and counts for the others as before.
    void Step(std::span<AutoMixerChannel> channels, std::uint32_t elapsedMilliseconds);

private:
    std::vector<std::uint64_t> quietFor_; // milliseconds, of each channel
};

} // namespace logic
