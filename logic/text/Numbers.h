// Numbers to text and back, rounding and clamping. Nothing here depends on the locale.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace logic {

// The Take functions read a number at the front of the text, after any blanks, and leave the text behind it;
// the text stays as it was when there is none. A sign + or - is taken, by TakeHex none.
//
// Decimal only: hexadecimal floats and the words inf and nan are no numbers. The result is finite: what is
// too large for a float is no number, what is too small for one is zero.
std::optional<float> TakeFloat(std::string_view& text);
// What does not fit 32 bits is no number.
std::optional<std::int32_t> TakeInteger(std::string_view& text);

// As the Take functions, whatever follows the number being ignored: "12 ms" is 12. For a text that somebody
// else shows and of which the number is wanted.
std::optional<float> ParseFloat(std::string_view text);
std::optional<std::int32_t> ParseInteger(std::string_view text);

// The same, but nothing except blanks may follow: "12 ms" is no number. For every text that sets a number.
std::optional<float> ParseWholeFloat(std::string_view text);
std::optional<std::int32_t> ParseWholeInteger(std::string_view text);
// Hexadecimal digits with or without 0x in front.
std::optional<std::uint32_t> ParseWholeHex(std::string_view text);

// The same, but the unit may follow the number, in capitals or not: with "Hz", "80", "80 Hz" and "80hz" are
// 80.
std::optional<float> ParseFloatIn(std::string_view unit, std::string_view text);
std::optional<std::int32_t> ParseIntegerIn(std::string_view unit, std::string_view text);

// Integers joined by commas, at least one and no more than there is room for; the rest of the span stays as
// it was. False, and nothing changed, when any of them is no integer.
bool ParseIntegers(std::string_view text, std::span<std::int32_t> numbers);

// Numbers joined by commas. Empty pieces are skipped, so "1,,2,,3," has three numbers and an empty text none.
// Nothing when any other piece is no number.
std::optional<std::vector<float>> ParseFloats(std::string_view text);
// The text of them, each as FormatFloat has it.
std::string JoinFloats(std::span<const float> numbers);

// As "%g" does: six significant digits, no trailing zeros. 12 characters at most.
std::string FormatFloat(float value);
constexpr std::size_t LONGEST_FLOAT_TEXT = 12;
// With as many digits as it takes to read the same value.
std::string FormatExact(float value);
// With that many digits behind the point, as "%.2f" does. The result can have more than 300 characters.
std::string FormatFixed(double value, int digits);
// As "%.2e" does.
std::string FormatScientific(double value, int digits);

// Towards zero; beyond 32 bits the nearest end, 0 for a value that is not a number.
std::int32_t TruncateToInteger(double value);

// The multiple of the step nearest to the value, halves away from zero: 10.25 in steps of 0.5 is 10.5, -10.25
// is -10.5. It is deliberately divided in 32 bits, so that -0.25 in steps of 0.1 is -0.3. The sign of the
// step does not matter, and the result is never a negative zero. The value is returned unchanged when the
// step is 0, when either is not finite and when the multiple does not fit a float.
float RoundToStep(float value, float step);

// low when the value is below it, otherwise high when the value is above that, otherwise the value. A
// reversed range thus gives one of its two ends. What is not a number becomes low; an end that is not a
// number does not limit.
float Clamp(float value, float low, float high);

} // namespace logic
