#pragma once

#include <string>

// Writes a file in place of whatever is there. 0, or the system's reason; then there is no file of that name
// that this has begun.
unsigned long WriteTextFile(const std::string& file, const std::string& text);
