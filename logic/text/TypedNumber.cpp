#include "logic/text/TypedNumber.h"

#include <algorithm>
#include <span>

#include "logic/text/FloatFormat.h"
#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

namespace logic {

namespace {

constexpr std::string_view DIGITS = "0123456789";

// The exponent of a multiplier, or null.
const char* ExponentOf(char letter) {
    return letter == 'k' || letter == 'K' ? "e3" : letter == 'M' ? "e6" : nullptr;
}

bool IsDigit(char character) {
    return DIGITS.find(character) != std::string_view::npos;
}

std::optional<float> ParsePlain(std::string_view text) {
    text = TrimBlanks(text);
    if (text.find_first_of("eE") != std::string_view::npos) { // as large numbers are shown
        std::string number(text);
        std::replace(number.begin(), number.end(), ',', '.');
        return ParseWholeFloat(number);
    }
    const char* exponent = nullptr;
    std::string number;
    bool hasPoint = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char character = text[i];
        const char* const multiplier = ExponentOf(character);
        if (multiplier != nullptr) {
            const bool isBetween = i + 1 < text.size();
            if (exponent != nullptr || (isBetween && (hasPoint || i == 0 || !IsDigit(text[i - 1])))) {
                return std::nullopt;
            }
            exponent = multiplier;
            if (isBetween) {
                hasPoint = true;
                number += '.';
            } else {
                number = TrimBlanks(number); // "2 k"
            }
        } else if (character == ',' || character == '.') {
            hasPoint = true;
            number += '.'; // a second one is no part of a number
        } else {
            number += character;
        }
    }
    return ParseWholeFloat(exponent == nullptr ? number : number + exponent);
}

// The text without the unit at its end; nothing when it does not end so.
std::optional<std::string_view> WithoutUnit(std::string_view text, std::string_view unit, bool isExact) {
    if (unit.empty() || text.size() < unit.size()) {
        return std::nullopt;
    }
    const std::string_view end = text.substr(text.size() - unit.size());
    const bool isUnit = isExact ? end == unit : IndexOfWord(std::span(&unit, 1), end).has_value();
    return isUnit ? std::optional(text.substr(0, text.size() - unit.size())) : std::nullopt;
}

template <class Parse>
std::optional<float> ParseWithUnit(std::string_view text, std::string_view unit, Parse parse) {
    text = TrimBlanks(text);
    unit = TrimBlanks(unit);
    if (const auto number = WithoutUnit(text, unit, true)) {
        return parse(*number);
    }
    if (const auto plain = parse(text)) {
        return plain;
    }
    const auto number = WithoutUnit(text, unit, false);
    return number ? parse(*number) : std::nullopt;
}

} // namespace

std::optional<float> ParseTypedNumber(std::string_view text, std::string_view unit) {
    return ParseWithUnit(text, unit, ParsePlain);
}

std::optional<float> ParseTypedNumber(std::string_view text, std::string_view unit,
                                      const std::string& format) {
    return ParseWithUnit(
        text, unit, [&](std::string_view number) { return ParsePlain(WithoutSurroundings(number, format)); });
}

} // namespace logic
