#include "logic/text/Text.h"

#include <algorithm>

namespace logic {

bool IsBlank(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

bool IsControl(char character) {
    const auto code = static_cast<unsigned char>(character);
    return code < 0x20 || code == 0x7F;
}

std::string_view TrimBlanks(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && IsBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::vector<std::string_view> SplitFields(std::string_view text, char separator) {
    std::vector<std::string_view> fields;
    for (;;) {
        const std::size_t end = text.find(separator);
        fields.push_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            return fields;
        }
        text.remove_prefix(end + 1);
    }
}

std::optional<std::int32_t> IndexOfWord(std::span<const std::string_view> words, std::string_view word) {
    const auto lower = [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? letter - 'A' + 'a' : letter;
    };
    const auto equal = [&](char left, char right) { return lower(left) == lower(right); };
    word = TrimBlanks(word);
    const auto found = std::find_if(words.begin(), words.end(), [&](std::string_view candidate) {
        return std::equal(candidate.begin(), candidate.end(), word.begin(), word.end(), equal);
    });
    return found == words.end() || word.empty()
               ? std::nullopt
               : std::optional(static_cast<std::int32_t>(found - words.begin()));
}

} // namespace logic
