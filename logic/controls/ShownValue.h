// A value that is shown as text: a text, or a number in a printf format.
#pragma once

#include "logic/text/Ranges.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace logic {

enum class ValueType { Text, Float, Integer };
enum class Alignment { Left, Center, Right };
// Where something of that width begins when it is aligned within the room; 0 when it does not fit.
std::int32_t AlignedStart(Alignment alignment, std::int32_t width, std::int32_t room);

// The text with each line end, and each other character that is no letter and no sign, as one blank.
std::string OneLine(std::string_view text);

// The text with line feeds in place of blanks where lines would become longer than that many characters.
// Words that are longer are cut.
std::string WrapText(std::string_view text, std::size_t columns);

// The nearest whole number, halves away from zero; nothing when it does not fit 32 bits.
std::optional<std::int32_t> RoundToInteger(float value);
// A whole number at the front of the text, or the nearest one to the number there; the second reads a text
// that is nothing but a number.
std::optional<std::int32_t> ParseRounded(std::string_view text);
std::optional<std::int32_t> ParseWholeRounded(std::string_view text);

class ShownValue {
public:
    ValueType Type() const { return type_; }
    // A text that begins with a number becomes that number, a number becomes the text that is shown; a float
    // is rounded to an integer.
    void SetType(ValueType type);
    // A printf format with one float conversion, or empty for the plain number. A text that was no number
    // becomes one if the format tells where it stands.
    void SetFormat(std::string format);
    const std::string& Format() const { return format_; }

    // What is shown.
    const std::string& Text() const { return text_; }
    // Shows a text as it is. Where the type is a number, the number becomes that at its front if there is
    // one.
    void SetCaption(std::string_view text);

    // The number, 0 while there is none; and whether there is one.
    float Float() const { return type_ == ValueType::Integer ? static_cast<float>(integer_) : float_; }
    std::int32_t Integer() const { return integer_; }
    bool HasNumber() const { return hasNumber_; }

    // Take a value of the type. False when it is the one that is there already.
    bool Take(float value);
    bool Take(std::int32_t value);
    bool Take(std::string_view text);
    // Reads what somebody typed, with or without what the format puts around the number. False, and nothing
    // changed, when it is no finite number. A number outside the limits becomes the nearest of the two.
    bool TakeTyped(std::string_view text, const std::optional<Limits>& limits);

private:
    void Render();

    ValueType type_ = ValueType::Text;
    std::string format_;
    std::string text_;
    float float_ = 0;
    std::int32_t integer_ = 0;
    bool hasNumber_ = false;
};

} // namespace logic
