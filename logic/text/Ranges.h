// Ranges as text: the ends of one, and what lies in it, joined by commas.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

namespace logic {

inline bool ReadField(std::string_view field, std::optional<std::int32_t>& number) {
    return (number = ParseWholeInteger(field)).has_value();
}
inline bool ReadField(std::string_view field, std::optional<float>& number) {
    return (number = ParseWholeFloat(field)).has_value();
}
// Reads fields that are joined by "," into the numbers, from the first on. False when one is unreadable, or
// is one too many; those that are missing stay as they were.
template <class... Numbers>
bool ReadFields(std::string_view text, Numbers&... numbers) {
    const std::vector<std::string_view> fields = SplitFields(text, ',');
    auto field = fields.begin();
    const bool isReadable = (... && (field == fields.end() || ReadField(*field++, numbers)));
    return isReadable && field == fields.end();
}

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
