// Names that are many: a pattern in which `%i` and `%o` stand for the numbers of an input and an output.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace logic {

// The place of a number in a pattern.
struct NumberPlace {
    char letter;        // 'i' or 'o'
    std::size_t digits; // of the number at least
    std::size_t length; // of its own text
};
// The one at the front of the text; nothing when there is none.
std::optional<NumberPlace> NumberPlaceAt(std::string_view text);

// The pattern with both numbers in it. `%02i` is a number of at least two digits, 1 to 9 of them. Everything
// else that follows a per cent sign stays as it is. "route%i_%02o" with 3 and 4 is "route3_04".
std::string ExpandPattern(std::string_view pattern, int input, int output);

// The pattern with all numbers from 1 on, all outputs of the first input first; none for an empty one.
// Without outputs there is one name an input, of which the number may be written either way.
std::vector<std::string> ExpandPatterns(std::string_view pattern, int inputs, int outputs);

} // namespace logic
