#include "logic/text/Ranges.h"

namespace logic {

std::optional<RangeAndValue> ParseRangeAndValue(std::string_view text) {
    std::optional<std::int32_t> minimum;
    std::optional<std::int32_t> maximum;
    std::optional<float> value;
    if (!ReadFields(text, minimum, maximum, value)) {
        return std::nullopt;
    }
    return RangeAndValue{*minimum, maximum, value};
}

std::string RangeAndValueText(std::int32_t minimum, std::int32_t maximum, float value) {
    return RangeText(minimum, maximum) + "," + FormatFloat(value);
}

std::optional<RangeAndValue> ParseRange(std::string_view text) {
    std::optional<std::int32_t> minimum;
    std::optional<std::int32_t> maximum;
    if (!ReadFields(text, minimum, maximum)) {
        return std::nullopt;
    }
    return RangeAndValue{*minimum, maximum, std::nullopt};
}

std::string RangeText(std::int32_t minimum, std::int32_t maximum) {
    return std::to_string(minimum) + "," + std::to_string(maximum);
}

std::optional<Limits> ParseLimits(std::string_view text) {
    std::optional<float> minimum;
    std::optional<float> maximum;
    if (!ReadFields(text, minimum, maximum) || !maximum || *minimum > *maximum) {
        return std::nullopt;
    }
    return Limits{*minimum, *maximum};
}

std::string LimitsText(const Limits& limits) {
    return FormatFloat(limits.minimum) + "," + FormatFloat(limits.maximum);
}

} // namespace logic
