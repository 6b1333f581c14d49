// Pieces of text, as every reader of outside text needs them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace logic {

// White space as the C locale has it: space, tab and the line and page controls.
bool IsBlank(char character);

// Codes below 32, and 127.
bool IsControl(char character);

// The text without the blanks at both ends.
std::string_view TrimBlanks(std::string_view text);

// The pieces between the separators, untrimmed, empty ones included: n separators give n + 1 pieces. The
// views lie inside the text.
std::vector<std::string_view> SplitFields(std::string_view text, char separator);

// The place of a word in a list, compared without regard to case and to blanks at its ends; nothing for an
// empty word.
std::optional<std::int32_t> IndexOfWord(std::span<const std::string_view> words, std::string_view word);

} // namespace logic
