// Texts of several lines, where only one line may stand.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace logic {

// Line feeds as "\n", a backslash as "\\".
std::string EscapeLines(std::string_view text);
// The other way round; a backslash in front of anything else stands for itself. A carriage return in front of
// a line feed does not count, any other control character becomes a blank.
std::string UnescapeLines(std::string_view escaped);
// The text behind as many whole lines at its front as it takes to leave at most that many characters in a
// field, where a line end is two, and in its escaped form; of a single line that is longer, its end.
std::string_view NewestLines(std::string_view text, std::size_t maximum, std::size_t maximumEscaped);
// As many characters of the front as can be escaped in so many.
std::string_view FrontThatFits(std::string_view text, std::size_t maximumEscaped);

// With "\r\n" for each line feed, as the system's fields have it, and back.
std::string WithReturns(std::string_view text);
std::string WithoutReturns(std::string_view text);

} // namespace logic
