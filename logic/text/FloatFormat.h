// printf formats from outside that show one number.
#pragma once

#include <string>
#include <string_view>

namespace logic {

// Whether the format holds exactly one conversion and that one is for a floating-point number (any of
// "fFeEgGaA", with flags, width and precision as digits, at most three of each). "%%" is text. Everything
// else printf knows is refused: it would read arguments that are not there.
bool IsFloatFormat(std::string_view format);

// The value in a format that IsFloatFormat accepts, whatever the locale; empty for any other.
std::string FormatFloatAs(const std::string& format, float value);

// The text between what such a format puts in front of the number and behind it, as far as the text has them,
// without blanks at its ends. The view lies inside the text.
std::string_view WithoutSurroundings(std::string_view text, const std::string& format);

} // namespace logic
