#pragma once

#include <cstddef>
#include <optional>
#include <string>

// Writes a file in place of whatever is there. 0, or the system's reason; then there is no file of that name
// that this has begun.
unsigned long WriteTextFile(const std::string& file, const std::string& text);
// All that a file holds. Nothing, with the system's reason, when it cannot be read or is longer.
std::optional<std::string> ReadTextFile(const std::string& file, std::size_t longest, unsigned long* error);
