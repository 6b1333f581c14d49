#include "logic/devices/MonitorOutput.h"

#include <algorithm>
#include <cmath>

#include "logic/devices/SimulatedBlocks.h"
#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

namespace logic {

namespace {

constexpr auto SILENCE = static_cast<float>(LOWEST_LEVEL);
constexpr float LOUDEST = 24;

} // namespace

std::optional<MonitorNames> ParseMonitor(std::string_view text) {
    const std::vector<std::string_view> fields = SplitFields(text, ',');
    const std::optional<std::int32_t> sets = ParseWholeInteger(fields.front());
    if (fields.size() != 3 || !sets || *sets < 1 || *sets > MOST_SPEAKER_SETS ||
        TrimBlanks(fields[1]).empty() || TrimBlanks(fields[2]).empty()) {
        return std::nullopt;
    }
    return MonitorNames{*sets, std::string(TrimBlanks(fields[1])), std::string(TrimBlanks(fields[2]))};
}

std::vector<std::pair<std::string, ParameterDeclaration>> MonitorParameters(std::int32_t sets) {
    const ParameterDeclaration contact{ParameterType::Integer, 0, 1, "0", ""};
    std::vector<std::pair<std::string, ParameterDeclaration>> parameters{
        {".speaker", {ParameterType::Integer, 0, static_cast<float>(sets), "1", ""}},
        {".level", {ParameterType::Float, SILENCE, 10, "-20", "dB"}},
        {".dim", contact},
        {".mono", contact},
        {".mute", contact},
        {".talk", contact},
    };
    for (std::int32_t set = 1; set <= sets; ++set) {
        for (const char* side : {".left", ".right"}) {
            parameters.push_back(
                {side + std::to_string(set), {ParameterType::Float, SILENCE, LOUDEST, "-80", "dB"}});
        }
    }
    return parameters;
}

float MonitorLevel(const MonitorSettings& settings, std::int32_t set, float own, float other) {
    if (settings.speaker != set || settings.isMute) {
        return SILENCE;
    }
    const float both[] = {own, other};
    const float half = 10 * std::log10(0.5F);
    const float played = settings.isMono ? PowerSum(both).value_or(SILENCE) + half : own;
    return std::clamp(played + settings.level + (settings.isDim ? MONITOR_DIM : 0), SILENCE, LOUDEST);
}

} // namespace logic
