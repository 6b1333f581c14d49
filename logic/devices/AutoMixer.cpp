#include "logic/devices/AutoMixer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <set>

#include "logic/controls/DynamicsCurve.h"
#include "logic/devices/SimulatedBlocks.h"
#include "logic/text/NamePattern.h"
#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

namespace logic {

namespace {

constexpr auto SILENCE = static_cast<float>(LOWEST_LEVEL);

} // namespace

std::optional<AutoMixerNames> ParseAutoMixer(std::string_view channels, std::string_view text) {
    const std::vector<std::string_view> fields = SplitFields(text, ',');
    const std::optional<std::int32_t> count = ParseWholeInteger(fields.front());
    if (channels.empty() || fields.size() != 2 || TrimBlanks(fields[1]).empty() || !count || *count < 1 ||
        *count > LARGEST_AUTOMIXER) {
        return std::nullopt;
    }
    AutoMixerNames names;
    for (int number = 1; number <= *count; ++number) {
        names.channels.push_back(ExpandPattern(channels, number, 0));
        names.sources.push_back(ExpandPattern(TrimBlanks(fields[1]), number, 0));
    }
    const std::set<std::string> distinct(names.channels.begin(), names.channels.end());
    return distinct.size() == names.channels.size() ? std::optional(names) : std::nullopt;
}

std::vector<std::pair<std::string, ParameterDeclaration>> AutoMixerParameters() {
    const ParameterDeclaration contact{ParameterType::Integer, 0, 1, "0", ""};
    return {
        {".gain", {ParameterType::Float, SILENCE, 0, "-80", "dB"}},
        {".weight", {ParameterType::Float, -24, 24, "0", "dB"}},
        {".threshold", {ParameterType::Float, SILENCE, HIGHEST_LEVEL, "-50", "dB"}},
        {".hold", {ParameterType::Float, 0, 10'000, "500", "ms"}},
        {".priority", contact},
        {".freeze", contact},
        {".mute", contact},
    };
}

void AutoMixer::Step(std::span<AutoMixerChannel> channels, std::uint32_t elapsedMilliseconds) {
    quietFor_.resize(channels.size());
    std::vector<const AutoMixerChannel*> present;
    for (std::size_t place = 0; place < channels.size(); ++place) {
        const AutoMixerChannel& channel = channels[place];
        const bool isQuiet = channel.level.value_or(SILENCE) < channel.threshold;
        quietFor_[place] = isQuiet ? quietFor_[place] + elapsedMilliseconds : 0;
        const bool isOut = isQuiet && quietFor_[place] >= channel.hold;
        if (channel.level && !channel.isMuted && !isOut) {
            present.push_back(&channel);
        }
    }
    const auto hasPriority = [](const AutoMixerChannel* channel) { return channel->hasPriority; };
    if (std::any_of(present.begin(), present.end(), hasPriority)) {
        std::erase_if(present, std::not_fn(hasPriority));
    }
    std::vector<float> weighted;
    for (const AutoMixerChannel* channel : present) {
        weighted.push_back(*channel->level + channel->weight);
    }
    const float sum = PowerSum(weighted).value_or(0);
    auto next = present.begin();
    for (AutoMixerChannel& channel : channels) {
        const bool isPresent = next != present.end() && *next == &channel;
        next += isPresent ? 1 : 0;
        if (!channel.isFrozen) {
            // Weights beyond all measure give no number, and that is silence, too.
            channel.gain = isPresent
                               ? std::fmin(std::fmax(*channel.level + channel.weight - sum, SILENCE), 0.0F)
                               : SILENCE;
        }
    }
}

} // namespace logic
