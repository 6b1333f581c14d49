#include "logic/text/Ranges.h"

#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

#include <vector>

namespace logic {

namespace {

bool Read(std::string_view field, std::optional<std::int32_t>& number) {
    return (number = ParseWholeInteger(field)).has_value();
}

bool Read(std::string_view field, std::optional<float>& number) {
    return (number = ParseWholeFloat(field)).has_value();
}

// Reads the fields into the numbers, from the first on. False when one is unreadable, or is one too many.
template <class... Numbers>
bool ReadFields(std::string_view text, Numbers&... numbers) {
    const std::vector<std::string_view> fields = SplitFields(text, ',');
    auto field = fields.begin();
    const bool isReadable = (... && (field == fields.end() || Read(*field++, numbers)));
    return isReadable && field == fields.end();
}

} // namespace

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
