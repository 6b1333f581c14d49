#pragma once

#include <string>

// What the program keeps of its user's choices from one run to the next, in the user's registry. Names are
// made of letters; a value that was never written is empty.

std::string ReadSetting(const char* name);
// False when the system refuses; the choice then lasts as long as the program.
bool WriteSetting(const char* name, const std::string& value);
