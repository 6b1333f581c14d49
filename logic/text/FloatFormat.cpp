#include "logic/text/FloatFormat.h"

#include <cstddef>
#include <cstdio>

#include "logic/text/Text.h"

namespace logic {

namespace {

constexpr std::size_t MAXIMUM_DIGITS = 3;        // of a width: a million blanks are no text to show
constexpr std::size_t LONGEST_CONVERSION = 1100; // a precision of 999 behind 39 digits, sign and point

bool IsAsciiLetterOrDigit(char character) {
    return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
           (character >= 'a' && character <= 'z');
}

std::size_t CountFront(std::string_view text, std::string_view characters) {
    const std::size_t end = text.find_first_not_of(characters);
    return end == std::string_view::npos ? text.size() : end;
}

// Removes digits from the front. False when there are too many.
bool SkipDigits(std::string_view& text) {
    const std::size_t count = CountFront(text, "0123456789");
    text.remove_prefix(count);
    return count <= MAXIMUM_DIGITS;
}

// Removes one conversion, whose '%' is gone already, from the front.
bool SkipFloatConversion(std::string_view& text) {
    text.remove_prefix(CountFront(text, "-+ #0"));
    if (!SkipDigits(text)) {
        return false;
    }
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        if (!SkipDigits(text)) {
            return false;
        }
    }
    if (text.starts_with('l')) {
        text.remove_prefix(1); // means nothing for a floating-point number
    }
    if (text.empty() || std::string_view("fFeEgGaA").find(text.front()) == std::string_view::npos) {
        return false;
    }
    text.remove_prefix(1);
    return true;
}

// "%%" is one character.
std::string Literally(std::string_view text) {
    std::string literal;
    for (std::size_t i = 0; i < text.size(); i += text[i] == '%' ? 2 : 1) {
        literal += text[i];
    }
    return literal;
}

// A number that was written in the locale of the process, with a point in place of what stands for one there.
std::string WithPoint(std::string_view number) {
    const auto isPoint = [](char character) {
        return character != ' ' && character != '+' && character != '-' && !IsAsciiLetterOrDigit(character);
    };
    std::string text;
    for (std::size_t i = 0; i < number.size(); ++i) {
        if (!isPoint(number[i])) {
            text += number[i];
        } else if (i == 0 || !isPoint(number[i - 1])) { // it can have several bytes
            text += '.';
        }
    }
    return text;
}

// What stands before and behind the one conversion of a format.
struct Surroundings {
    std::string before, behind;
};

Surroundings SurroundingsOf(const std::string& format) {
    Surroundings around;
    std::string* part = &around.before;
    for (std::size_t i = 0; i < format.size(); ++i) {
        if (format[i] != '%') {
            *part += format[i];
        } else if (i + 1 < format.size() && format[i + 1] == '%') {
            *part += format[++i];
        } else {
            i = format.find_first_of("fFeEgGaA", i);
            if (i == std::string::npos) {
                break;
            }
            part = &around.behind;
        }
    }
    return around;
}

} // namespace

bool IsFloatFormat(std::string_view format) {
    int conversions = 0;
    for (std::size_t mark = format.find('%'); mark != std::string_view::npos; mark = format.find('%')) {
        format.remove_prefix(mark + 1);
        if (format.starts_with('%')) {
            format.remove_prefix(1);
            continue;
        }
        if (!SkipFloatConversion(format)) {
            return false;
        }
        ++conversions;
    }
    return conversions == 1;
}

std::string FormatFloatAs(const std::string& format, float value) {
    if (!IsFloatFormat(format)) {
        return {};
    }
    std::size_t begin = 0; // of the conversion
    while (format[begin] != '%' || format[begin + 1] == '%') {
        begin += format[begin] == '%' ? 2 : 1;
    }
    std::string_view behind = std::string_view(format).substr(begin + 1);
    SkipFloatConversion(behind);
    const std::string conversion = format.substr(begin, format.size() - behind.size() - begin);
    char number[LONGEST_CONVERSION];
    std::snprintf(number, sizeof number, conversion.c_str(), static_cast<double>(value));
    return Literally(format.substr(0, begin)) + WithPoint(number) + Literally(behind);
}

std::string_view WithoutSurroundings(std::string_view text, const std::string& format) {
    const Surroundings around = SurroundingsOf(format);
    text = TrimBlanks(text);
    if (const auto before = TrimBlanks(around.before); text.starts_with(before)) {
        text.remove_prefix(before.size());
    }
    if (const auto behind = TrimBlanks(around.behind); text.ends_with(behind)) {
        text.remove_suffix(behind.size());
    }
    return TrimBlanks(text);
}

} // namespace logic
