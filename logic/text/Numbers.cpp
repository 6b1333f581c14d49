#include "logic/text/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "logic/text/Text.h"

namespace logic {

namespace {

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

// Blanks and a plus sign, which std::from_chars does not take.
std::string_view WithoutPlus(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') {
        text.remove_prefix(1);
    }
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
    if (firstDigit == std::string_view::npos) {
        return true;
    }
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const auto place = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(firstDigit);
    const std::int64_t magnitude = place > 0 ? place - 1 : place; // power of ten of the first digit
    if (exponentMark == std::string_view::npos) {
        return magnitude < 0;
    }
    const std::string_view exponent = WithoutPlus(number.substr(exponentMark + 1));
    std::int64_t power = 0;
    const auto result = std::from_chars(exponent.data(), exponent.data() + exponent.size(), power);
    if (result.ec == std::errc::result_out_of_range) {
        return exponent.front() == '-';
    }
    return power < -magnitude;
}

std::string FormatDouble(double value, std::chars_format format, int digits) {
    std::string text(static_cast<std::size_t>(digits) + 320, '\0'); // 309 digits, sign and point
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value, format, digits);
    text.resize(static_cast<std::size_t>(result.ptr - text.data()));
    return text;
}

bool IsNothingOr(std::string_view unit, std::string_view text) {
    return TrimBlanks(text).empty() || IndexOfWord(std::span(&unit, 1), text).has_value();
}

} // namespace

std::optional<float> TakeFloat(std::string_view& text) {
    const std::string_view number = WithoutPlus(text);
    const std::string_view digits = number.substr(number.starts_with('-') ? 1 : 0);
    // Keeps out the words for infinity and for what is not a number.
    if (digits.empty() || !(IsDigit(digits.front()) || digits.front() == '.')) {
        return std::nullopt;
    }
    float value = 0.0F;
    const char* const begin = number.data();
    const auto result = std::from_chars(begin, begin + number.size(), value, std::chars_format::general);
    if (result.ec == std::errc::result_out_of_range) {
        if (!IsFraction({begin, static_cast<std::size_t>(result.ptr - begin)})) {
            return std::nullopt;
        }
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
    if (result.ec != std::errc()) {
        return std::nullopt;
    }
    MoveTo(text, result.ptr);
    return value;
}

std::optional<float> ParseFloat(std::string_view text) {
    return TakeFloat(text);
}

std::optional<std::int32_t> ParseInteger(std::string_view text) {
    return TakeInteger(text);
}

std::optional<float> ParseWholeFloat(std::string_view text) {
    return ParseFloatIn("", text);
}

std::optional<std::int32_t> ParseWholeInteger(std::string_view text) {
    return ParseIntegerIn("", text);
}

std::optional<std::uint32_t> ParseWholeHex(std::string_view text) {
    text = TrimBlanks(text);
    if (text.starts_with("0x") || text.starts_with("0X")) {
        text.remove_prefix(2);
    }
    std::uint32_t value = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value, 16);
    return result.ec == std::errc() && result.ptr == end ? std::optional(value) : std::nullopt;
}

std::optional<float> ParseFloatIn(std::string_view unit, std::string_view text) {
    const std::optional<float> number = TakeFloat(text);
    return IsNothingOr(unit, text) ? number : std::nullopt;
}

std::optional<std::int32_t> ParseIntegerIn(std::string_view unit, std::string_view text) {
    const std::optional<std::int32_t> number = TakeInteger(text);
    return IsNothingOr(unit, text) ? number : std::nullopt;
}

bool ParseIntegers(std::string_view text, std::span<std::int32_t> numbers) {
    const std::vector<std::string_view> fields = SplitFields(text, ',');
    std::vector<std::int32_t> read;
    for (const std::string_view field : fields) {
        const std::optional<std::int32_t> number = ParseWholeInteger(field);
        if (!number || fields.size() > numbers.size()) {
            return false;
        }
        read.push_back(*number);
    }
    std::copy(read.begin(), read.end(), numbers.begin());
    return true;
}

std::optional<std::vector<float>> ParseFloats(std::string_view text) {
    std::vector<float> numbers;
    for (const std::string_view piece : SplitFields(text, ',')) {
        if (TrimBlanks(piece).empty()) {
            continue;
        }
        const std::optional<float> number = ParseWholeFloat(piece);
        if (!number) {
            return std::nullopt;
        }
        numbers.push_back(*number);
    }
    return numbers;
}

std::string FormatFloat(float value) {
    char text[LONGEST_FLOAT_TEXT];
    const auto result =
        std::to_chars(text, text + sizeof text, static_cast<double>(value), std::chars_format::general, 6);
    return {text, result.ptr};
}

std::string JoinFloats(std::span<const float> numbers) {
    std::string text;
    for (const float number : numbers) {
        text += (text.empty() ? "" : ",") + FormatFloat(number);
    }
    return text;
}

std::string FormatExact(float value) {
    char text[24];
    const auto result = std::to_chars(text, text + sizeof text, value);
    return {text, result.ptr};
}

std::string FormatFixed(double value, int digits) {
    return FormatDouble(value, std::chars_format::fixed, digits);
}

std::string FormatScientific(double value, int digits) {
    return FormatDouble(value, std::chars_format::scientific, digits);
}

std::int32_t TruncateToInteger(double value) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (std::isnan(value)) {
        return 0;
    }
    if (value <= Limits::min()) {
        return Limits::min();
    }
    if (value >= Limits::max()) {
        return Limits::max();
    }
    return static_cast<std::int32_t>(value);
}

float RoundToStep(float value, float step) {
    if (step == 0.0F || !std::isfinite(step) || !std::isfinite(value)) {
        return value;
    }
    const float size = std::fabs(step);
    const float multiple = std::trunc(value / size + std::copysign(0.5F, value)) * size;
    return std::isfinite(multiple) ? multiple + 0.0F : value; // the addition turns -0 into 0
}

float Clamp(float value, float low, float high) {
    if (std::isnan(value) || value < low) {
        return low;
    }
    if (value > high) {
        return high;
    }
    return value;
}

} // namespace logic
