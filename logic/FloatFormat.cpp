#include "logic/FloatFormat.h"

#include <cstddef>
#include <cstdio>

namespace logic {

namespace {

constexpr std::size_t maximumDigits = 3; // of a width: a million blanks are no text to show

std::size_t CountFront(std::string_view text, std::string_view characters) {
    const std::size_t end = text.find_first_not_of(characters);
    return end == std::string_view::npos ? text.size() : end;
}

// Removes digits from the front. False when there are too many.
bool SkipDigits(std::string_view& text) {
    const std::size_t count = CountFront(text, "0123456789");
    text.remove_prefix(count);
    return count <= maximumDigits;
}

// Removes one conversion, whose '%' is gone already, from the front.
bool SkipFloatConversion(std::string_view& text) {
    text.remove_prefix(CountFront(text, "-+ #0"));
    if (!SkipDigits(text))
        return false;
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        if (!SkipDigits(text))
            return false;
    }
    if (text.starts_with('l'))
        text.remove_prefix(1); // means nothing for a floating-point number
    if (text.empty() || std::string_view("fFeEgGaA").find(text.front()) == std::string_view::npos)
        return false;
    text.remove_prefix(1);
    return true;
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
        if (!SkipFloatConversion(format))
            return false;
        ++conversions;
    }
    return conversions == 1;
}

std::string FormatFloatAs(const std::string& format, float value) {
    if (!IsFloatFormat(format))
        return {};
    const auto number = static_cast<double>(value);
    const int length = std::snprintf(nullptr, 0, format.c_str(), number);
    if (length < 0)
        return {};
    std::string text(static_cast<std::size_t>(length) + 1, '\0'); // the terminator is written as well
    std::snprintf(text.data(), text.size(), format.c_str(), number);
    text.pop_back();
    return text;
}

} // namespace logic
