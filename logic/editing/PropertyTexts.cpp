#include "logic/editing/PropertyTexts.h"

#include "logic/text/Text.h"

#include <algorithm>

namespace logic {

std::string PlainSentence(std::string_view marked) {
    std::string plain;
    for (std::size_t i = 0; i < marked.size(); ++i) {
        const std::size_t middle = marked[i] == '[' ? marked.find(']', i) : std::string_view::npos;
        const bool isLink = middle != std::string_view::npos && marked.substr(middle).starts_with("](");
        const std::size_t end = isLink ? marked.find(')', middle) : std::string_view::npos;
        if (end != std::string_view::npos) {
            plain += PlainSentence(marked.substr(i + 1, middle - i - 1));
            i = end;
        } else if (marked[i] != '`') {
            plain += marked[i];
        }
    }
    return plain;
}

EntryPlace EntryAt(std::string_view text, std::size_t place) {
    place = std::min(place, text.size());
    const std::size_t before = place == 0 ? std::string_view::npos : text.rfind(';', place - 1);
    const std::size_t begin = before == std::string_view::npos ? 0 : before + 1;
    const std::size_t end = std::min(text.find(';', place), text.size());
    const std::string_view entry = text.substr(begin, end - begin);
    const std::string_view trimmed = TrimBlanks(entry);
    // Of nothing but blanks nothing is left, at its end.
    const std::size_t offset =
        trimmed.empty() ? entry.size() : static_cast<std::size_t>(trimmed.data() - entry.data());
    return {begin + offset, trimmed.size()};
}

} // namespace logic
