#include "logic/text/NamePattern.h"

#include <algorithm>

namespace logic {

std::optional<NumberPlace> NumberPlaceAt(std::string_view text) {
    if (!text.starts_with('%')) {
        return std::nullopt;
    }
    const bool isPadded = text.size() > 3 && text[1] == '0' && text[2] >= '1' && text[2] <= '9';
    const std::size_t letterAt = isPadded ? 3 : 1;
    if (text.size() <= letterAt || (text[letterAt] != 'i' && text[letterAt] != 'o')) {
        return std::nullopt;
    }
    return NumberPlace{text[letterAt], isPadded ? static_cast<std::size_t>(text[2] - '0') : 1, letterAt + 1};
}

std::string ExpandPattern(std::string_view pattern, int input, int output) {
    std::string expanded;
    while (!pattern.empty()) {
        std::size_t taken = 1;
        if (const auto place = NumberPlaceAt(pattern)) {
            const std::string number = std::to_string(place->letter == 'i' ? input : output);
            expanded.append(place->digits - std::min(place->digits, number.size()), '0');
            expanded += number;
            taken = place->length;
        } else {
            expanded += pattern.front();
        }
        pattern.remove_prefix(taken);
    }
    return expanded;
}

std::vector<std::string> ExpandPatterns(std::string_view pattern, int inputs, int outputs) {
    std::vector<std::string> names;
    for (int input = 1; !pattern.empty() && input <= inputs; ++input) {
        for (int output = 1; output <= std::max(outputs, 1); ++output) {
            names.push_back(ExpandPattern(pattern, input, outputs > 0 ? output : input));
        }
    }
    return names;
}

} // namespace logic
