#include "logic/remote/RemoteValues.h"

#include <algorithm>
#include <array>
#include <string>

#include "logic/controls/TestTone.h"
#include "logic/text/PropertyLine.h"
#include "logic/text/Text.h"

namespace logic {

namespace {

// The system ignores blanks and dots at the end of a name, and blanks in front of a path.
std::string_view TrimEnd(std::string_view name, std::string_view characters) {
    return name.substr(0, name.find_last_not_of(characters) + 1);
}

bool IsDevice(std::string_view name) {
    const std::string word = FoldName(TrimBlanks(name.substr(0, name.find('.'))));
    constexpr std::array<std::string_view, 7> devices = {"con",    "prn",     "aux",   "nul",
                                                         "conin$", "conout$", "clock$"};
    if (std::find(devices.begin(), devices.end(), word) != devices.end()) {
        return true;
    }
    // Digits, and the raised 1, 2 and 3 that count as such.
    constexpr std::string_view numbers = "0123456789\xB9\xB2\xB3";
    return word.size() == 4 && (word.starts_with("com") || word.starts_with("lpt")) &&
           numbers.find(word.back()) != std::string_view::npos;
}

bool LeadsUp(std::string_view name) {
    return TrimBlanks(name).starts_with("..") && TrimEnd(TrimBlanks(name), ". ").empty();
}

} // namespace

bool IsPathBelow(std::string_view path) {
    const std::string_view trimmed = TrimBlanks(path);
    if (trimmed.starts_with('\\') || trimmed.starts_with('/') || path.find(':') != std::string_view::npos) {
        return false;
    }
    std::string folded(path);
    std::replace(folded.begin(), folded.end(), '/', '\\');
    const auto names = SplitFields(folded, '\\');
    return std::none_of(names.begin(), names.end(),
                        [](std::string_view name) { return LeadsUp(name) || IsDevice(name); });
}

bool ArePathsBelow(std::string_view paths) {
    const auto all = SplitFields(paths, ';');
    return std::all_of(all.begin(), all.end(), IsPathBelow);
}

bool IsRemoteDuration(std::string_view text) {
    return ParseDuration(text).value_or(0) <= LONGEST_REMOTE_DURATION;
}

bool HasFixedKeyword(std::string_view clickTemplate) {
    std::string name(clickTemplate.substr(0, clickTemplate.find('=')));
    const std::size_t star = name.rfind('*');
    for (std::size_t place = name.find("%n");
         place != std::string::npos && star != std::string::npos && place < star;
         place = name.find("%n", place + 1))
        name[place] = ' ';
    return name.find('%') == std::string::npos;
}

} // namespace logic
