#include "logic/text/Search.h"

#include "logic/text/PropertyLine.h"
#include "logic/text/Text.h"

#include <algorithm>

namespace logic {

std::vector<std::string> SearchWords(std::string_view text) {
    std::vector<std::string> words;
    for (const std::string_view word : SplitFields(text, ' ')) {
        if (!word.empty()) {
            words.push_back(FoldName(word));
        }
    }
    return words;
}

bool HoldsAll(std::string_view folded, const std::vector<std::string>& words) {
    return std::all_of(words.begin(), words.end(),
                       [&](const std::string& word) { return folded.find(word) != std::string_view::npos; });
}

} // namespace logic
