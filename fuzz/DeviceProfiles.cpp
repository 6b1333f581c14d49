// Profiles of devices, and the laws in them.
#include <cmath>

#include "fuzz/Fuzzer.h"
#include "logic/devices/osc/DeviceProfile.h"
#include "logic/text/Text.h"

using namespace logic;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    RangeLimits limits;
    ReadRangeLimits(text.substr(0, text.find('\n')), limits);
    DeviceProfileReader reader(limits);
    for (const std::string_view line : SplitFields(text, '\n')) {
        reader.Take(line);
    }
    std::string why;
    const auto profile = reader.Finish(why);
    Require(profile.has_value() == why.empty());
    if (!profile) {
        return 0;
    }
    Require(profile->numbers.size() == profile->parameters.size());
    for (const ProfileParameter& parameter : profile->parameters) {
        Require(profile->Find(parameter.name).has_value());
        for (const BlockComponent& component : parameter.components) {
            const auto* number = std::get_if<std::size_t>(&component);
            Require(number == nullptr || *number < profile->parameters.size());
        }
        if (!parameter.IsBlock()) {
            const ParameterLaw& law = profile->laws.at(parameter.law);
            for (const float value : {parameter.minimum, parameter.maximum}) {
                const auto wire = law.ToWire(value);
                Require(!wire || std::isfinite(*wire));
                Require(std::isfinite(law.ToValue(static_cast<double>(wire.value_or(value)))));
            }
        }
    }
    return 0;
}
