#include "logic/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "logic/Text.h"

namespace logic {

namespace {

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

// Blanks and a plus sign, which std::from_chars does not take.
std::string_view WithoutPlus(std::string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        text.remove_prefix(1);
    return text;
}

void MoveTo(std::string_view& text, const char* end) {
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
}

// Whether a decimal number is smaller than one in size. std::from_chars reports too small and too large
// alike, and only its digits tell which.
bool IsFraction(std::string_view number) {
    const std::size_t exponentMark = number.find_first_of("eE");
    const std::string_view mantissa = number.substr(0, exponentMark);
    const std::size_t firstDigit = mantissa.find_first_of("123456789");
    if (firstDigit == std::string_view::npos)
        return true;
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const auto place = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(firstDigit);
    const std::int64_t magnitude = place > 0 ? place - 1 : place; // power of ten of the first digit
    if (exponentMark == std::string_view::npos)
        return magnitude < 0;
    const std::string_view exponent = WithoutPlus(number.substr(exponentMark + 1));
    std::int64_t power = 0;
    const auto result = std::from_chars(exponent.data(), exponent.data() + exponent.size(), power);
    if (result.ec == std::errc::result_out_of_range)
        return exponent.front() == '-';
    return power < -magnitude;
}

template <class Number, class Take>
std::optional<Number> Whole(std::string_view text, Take take) {
    const std::optional<Number> number = take(text);
    return TrimBlanks(text).empty() ? number : std::nullopt;
}

} // namespace

std::optional<float> TakeFloat(std::string_view& text) {
    const std::string_view number = WithoutPlus(text);
    const std::string_view digits = number.substr(number.starts_with('-') ? 1 : 0);
    // Keeps out the words for infinity and for what is not a number.
    if (digits.empty() || !(IsDigit(digits.front()) || digits.front() == '.'))
        return std::nullopt;
    float value = 0.0F;
    const char* const begin = number.data();
    const auto result = std::from_chars(begin, begin + number.size(), value, std::chars_format::general);
    if (result.ec == std::errc::result_out_of_range) {
        if (!IsFraction({begin, static_cast<std::size_t>(result.ptr - begin)}))
            return std::nullopt;
        value = 0.0F;
    } else if (result.ec != std::errc() || !std::isfinite(value)) {
        return std::nullopt;
    }
    MoveTo(text, result.ptr);
    return value;
}

std::optional<std::int32_t> TakeInteger(std::string_view& text) {
    const std::string_view number = WithoutPlus(text);
    std::int32_t value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec != std::errc())
        return std::nullopt;
    MoveTo(text, result.ptr);
    return value;
}

std::optional<std::uint32_t> TakeHex(std::string_view& text) {
    std::string_view number = text;
    while (!number.empty() && IsBlank(number.front()))
        number.remove_prefix(1);
    if (number.starts_with("0x") || number.starts_with("0X"))
        number.remove_prefix(2);
    std::uint32_t value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value, 16);
    if (result.ec != std::errc())
        return std::nullopt;
    MoveTo(text, result.ptr);
    return value;
}

std::size_t TakeIntegers(std::string_view& text, std::span<std::int32_t> numbers) {
    std::size_t count = 0;
    for (std::string_view rest = text; count < numbers.size(); ++count) {
        if (count > 0) {
            if (!rest.starts_with(','))
                break;
            rest.remove_prefix(1);
        }
        const std::optional<std::int32_t> number = TakeInteger(rest);
        if (!number)
            break;
        numbers[count] = *number;
        text = rest;
    }
    return count;
}

std::optional<float> ParseFloat(std::string_view text) {
    return TakeFloat(text);
}

std::optional<std::int32_t> ParseInteger(std::string_view text) {
    return TakeInteger(text);
}

std::optional<std::uint32_t> ParseHex(std::string_view text) {
    return TakeHex(text);
}

std::optional<float> ParseWholeFloat(std::string_view text) {
    return Whole<float>(text, [](std::string_view& rest) { return TakeFloat(rest); });
}

std::optional<std::int32_t> ParseWholeInteger(std::string_view text) {
    return Whole<std::int32_t>(text, [](std::string_view& rest) { return TakeInteger(rest); });
}

std::optional<std::uint32_t> ParseWholeHex(std::string_view text) {
    return Whole<std::uint32_t>(text, [](std::string_view& rest) { return TakeHex(rest); });
}

std::vector<float> ParseFloats(std::string_view text) {
    std::vector<float> numbers;
    for (const std::string_view piece : SplitFields(text, ',')) {
        if (TrimBlanks(piece).empty())
            continue;
        const std::optional<float> number = ParseFloat(piece);
        if (!number)
            break;
        numbers.push_back(*number);
    }
    return numbers;
}

std::string FormatFloat(float value) {
    char text[32]; // six digits, sign, point and exponent need 13
    const auto result =
        std::to_chars(text, text + sizeof text, static_cast<double>(value), std::chars_format::general, 6);
    return {text, result.ptr};
}

std::int32_t TruncateToInteger(double value) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (std::isnan(value))
        return 0;
    if (value <= Limits::min())
        return Limits::min();
    if (value >= Limits::max())
        return Limits::max();
    return static_cast<std::int32_t>(value);
}

float RoundToStep(float value, float step) {
    if (step == 0.0F || !std::isfinite(step) || !std::isfinite(value))
        return value;
    const float size = std::fabs(step);
    const float multiple = std::trunc(value / size + std::copysign(0.5F, value)) * size;
    return std::isfinite(multiple) ? multiple + 0.0F : value; // the addition turns -0 into 0
}

float Clamp(float value, float low, float high) {
    if (std::isnan(value) || value < low)
        return low;
    if (value > high)
        return high;
    return value;
}

} // namespace logic
