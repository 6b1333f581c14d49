#include "logic/Text.h"

namespace logic {

bool IsBlank(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

std::string_view TrimBlanks(std::string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::vector<std::string_view> SplitFields(std::string_view text, char separator) {
    std::vector<std::string_view> fields;
    for (;;) {
        const std::size_t end = text.find(separator);
        fields.push_back(text.substr(0, end));
        if (end == std::string_view::npos)
            return fields;
        text.remove_prefix(end + 1);
    }
}

} // namespace logic
