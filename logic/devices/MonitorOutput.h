// The monitor output of a simulated device: which loudspeakers play what two channels bring, and how loud.
//
//     DSP*monitor=monitor,3,left,right          three pairs of loudspeakers for the levels left and right
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "logic/devices/Simulation.h"

namespace logic {

constexpr std::int32_t MOST_SPEAKER_SETS = 8;
constexpr float MONITOR_DIM = -20; // dB

struct MonitorNames {
    std::int32_t sets;       // 1 to MOST_SPEAKER_SETS
    std::string left, right; // levels
};

// Reads "sets,left,right". Nothing when a field is missing or out of range.
std::optional<MonitorNames> ParseMonitor(std::string_view text);

// What stands behind its name, and the declaration: the settings, then the level of each loudspeaker.
std::vector<std::pair<std::string, ParameterDeclaration>> MonitorParameters(std::int32_t sets);

struct MonitorSettings {
    std::int32_t speaker = 0; // the set that is on, from 1; 0: none
    float level = 0;          // dB
    bool isDim = false;
    bool isMono = false;
    bool isMute = false;
};

// The level (dB) of a loudspeaker of that set, of its own channel and the other one. In mono each plays both,
// so that all of it is as loud as before.
float MonitorLevel(const MonitorSettings& settings, std::int32_t set, float own, float other);

} // namespace logic
