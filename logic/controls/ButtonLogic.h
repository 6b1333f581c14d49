// What the buttons compute: the steps of a button that is held, the text of a question, and click templates.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace logic {

enum class PressMode { Absolute, Increment, Decrement };

// By the first letter, "i" or "d"; any other text is absolute.
PressMode ParsePressMode(std::string_view text);
const char* PressModeText(PressMode mode);

// How many steps a held button takes at once: the acceleration for every period that has passed since the
// press, to the nearest whole number. 0 before the first period has passed, without a period and without an
// acceleration.
std::int32_t RepeatSteps(std::uint32_t heldMilliseconds, std::int32_t periodMilliseconds, float acceleration);

// The value that many steps higher (increment) or lower (decrement), not beyond the ends of 32 bits.
std::int32_t StepValue(std::int32_t value, PressMode mode, std::int32_t steps);

// Every backslash and n becomes a line feed, every backslash and t a tab, whatever stands in front of them.
// All other backslashes stay.
std::string QuestionText(std::string_view text);

// "%" and the letter stand for the text.
struct Placeholder {
    char letter;
    std::string_view text;
};

// The template with its placeholders replaced. A "%" in front of any other letter stays, and so does one that
// comes with an inserted text.
std::string ExpandTemplate(std::string_view text, std::span<const Placeholder> placeholders);

} // namespace logic
