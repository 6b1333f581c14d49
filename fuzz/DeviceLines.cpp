// Device files and typed values: declarations, waves, follow rules, layers and numbers out of any text.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/Fuzzer.h"
#include "logic/controls/Layers.h"
#include "logic/devices/AutoMixer.h"
#include "logic/devices/MonitorOutput.h"
#include "logic/devices/SimulatedBlocks.h"
#include "logic/devices/Simulation.h"
#include "logic/devices/Subscription.h"
#include "logic/text/FloatFormat.h"
#include "logic/text/Numbers.h"
#include "logic/text/Ranges.h"

using namespace logic;

namespace {

void CheckNumbers(std::string_view text) {
    std::string_view rest = text;
    if (const auto number = TakeFloat(rest)) {
        Require(std::isfinite(*number) && rest.size() < text.size() && text.ends_with(rest));
        Require(ParseFloat(text) == number);
        // Six digits may round the largest floats up beyond what a float can hold.
        const auto back = ParseWholeFloat(FormatFloat(*number));
        Require(back ? std::fabs(*back - *number) <= std::fabs(*number) * 1e-5F + 1e-44F
                     : std::fabs(*number) > 3.4e38F);
    } else {
        Require(rest == text && !ParseWholeFloat(text));
    }
    if (IsFloatFormat(text)) {
        Require(!FormatFloatAs(std::string(text), -1.5F).empty());
    }
    if (const auto number = ParseInteger(text)) {
        Require(ParseWholeInteger(std::to_string(*number)) == number);
    }
    if (const auto read = ParseRangeAndValue(text)) {
        Require(
            ParseRangeAndValue(RangeAndValueText(read->minimum, read->maximum.value_or(0), 0)).has_value());
    }

    const std::vector<float> numbers = ParseFloats(text).value_or(std::vector<float>());
    for (const float number : numbers) {
        Require(std::isfinite(number));
    }
}

void CheckDeclarations(std::string_view text) {
    if (const auto parameter = ParseParameter(text)) {
        Require(std::isfinite(parameter->minimum) && std::isfinite(parameter->maximum));
        Require(parameter->minimum <= parameter->maximum);
        if (IsNumber(parameter->type)) {
            Require(ParseWholeFloat(parameter->value).has_value());
        }
    }
    if (auto subscription = Subscription::Parse(text)) {
        const std::string offered = subscription->Offered();
        const Items items = Items::OfList(offered);
        const std::string first(items.Size() > 0 ? items.Value(0) : "");
        subscription->Step(first, offered, 0);
        const SubscriptionState state = subscription->Step(first, offered, MAXIMUM_TIME_CONSTANT);
        Require(state != SubscriptionState::Resolving && state != SubscriptionState::Unresolved);
    }
    if (const auto wave = ParseWave(text)) {
        Require(wave->periodMilliseconds >= MINIMUM_WAVE_PERIOD &&
                wave->periodMilliseconds <= MAXIMUM_WAVE_PERIOD);
    }
    if (const auto follow = ParseFollow(text)) {
        Require(!follow->source.empty() && std::isfinite(follow->offset));
        Require(follow->timeConstantMilliseconds <= MAXIMUM_TIME_CONSTANT);
    }
    if (const auto dynamics = ParseDynamics("gate", text)) {
        Require(!dynamics->source.empty());
    }
    const auto split = text.find('=');
    if (const auto matrix = ParseMatrix(text.substr(0, split),
                                        split == text.npos ? "2,12,in%i,out%02o" : text.substr(split + 1))) {
        Require(matrix->crosspoints.size() == matrix->InputNames().size() * matrix->OutputNames().size());
    }
    if (const auto monitor = ParseMonitor(text)) {
        Require(monitor->sets >= 1 && monitor->sets <= MOST_SPEAKER_SETS && !monitor->left.empty());
    }
    if (const auto mixer =
            ParseAutoMixer(text.substr(0, split), split == text.npos ? "12,mic%i" : text.substr(split + 1))) {
        Require(!mixer->channels.empty() && mixer->channels.size() == mixer->sources.size());
    }
    if (const auto layers = ParseLayers(text)) {
        Require(ParseLayers(LayersText(*layers)) == layers);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // A copy of exactly this size, so that reading past the end is seen.
    const std::string text(data, data + size);
    CheckNumbers(text);
    CheckDeclarations(text);
    return 0;
}
