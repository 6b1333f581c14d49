// Ranges as text: the ends of one, and what lies in it, joined by commas.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace logic {

// Of both functions that read one: nothing when a field that is there is no number of its kind, or when there
// are too many of them.
struct RangeAndValue {
    std::int32_t minimum;
    std::optional<std::int32_t> maximum;
    std::optional<float> value;
};
// "minimum,maximum,value", of which the value, or maximum and value, may be missing.
std::optional<RangeAndValue> ParseRangeAndValue(std::string_view text);
std::string RangeAndValueText(std::int32_t minimum, std::int32_t maximum, float value);
// "minimum,maximum", of which the maximum may be missing.
std::optional<RangeAndValue> ParseRange(std::string_view text);
std::string RangeText(std::int32_t minimum, std::int32_t maximum);

// Smallest and largest number.
struct Limits {
    float minimum;
    float maximum;
};
// "minimum,maximum", neither of them missing or above the other.
std::optional<Limits> ParseLimits(std::string_view text);
std::string LimitsText(const Limits& limits);

} // namespace logic
