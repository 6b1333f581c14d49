// Pieces of text, as every reader of outside text needs them.
#pragma once

#include <string_view>
#include <vector>

namespace logic {

// White space as the C locale has it: space, tab and the line and page controls.
bool IsBlank(char character);

// The text without the blanks at both ends.
std::string_view TrimBlanks(std::string_view text);

// The pieces between the separators, untrimmed, empty ones included: n separators give n + 1 pieces. The
// views lie inside the text.
std::vector<std::string_view> SplitFields(std::string_view text, char separator);

} // namespace logic
