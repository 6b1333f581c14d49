// Words that are looked for in names.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace logic {

// The words of a text that was typed to search by, folded as names are (FoldName).
std::vector<std::string> SearchWords(std::string_view text);
// Whether a folded text holds all of them, in any order; true for no words.
bool HoldsAll(std::string_view folded, const std::vector<std::string>& words);

} // namespace logic
