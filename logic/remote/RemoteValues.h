// What values may be that come from another machine, whoever it is that sends them.
#pragma once

#include <cstdint>
#include <string_view>

namespace logic {

// Whether a file name is relative and stays below the folder that it is relative to, whatever the system
// makes of it: no drive, no share, no stream, no way up, no device such as NUL or COM1. An empty one does.
bool IsPathBelow(std::string_view path);
// The same of each of several file names, joined by ";".
bool ArePathsBelow(std::string_view paths);

// Seconds of the longest recording that may be asked for.
constexpr std::int32_t LONGEST_REMOTE_DURATION = 3600;

// Whether a duration is not longer than that. A text that is none is left to whoever reads it.
bool IsRemoteDuration(std::string_view text);

// Whether the object and the keyword of a click template are known before it is expanded: no "%" stands in
// front of the value but that of the own name, "%n", in the object.
bool HasFixedKeyword(std::string_view clickTemplate);

} // namespace logic
