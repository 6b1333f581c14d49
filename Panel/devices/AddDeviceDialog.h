#pragma once

#include <windows.h>

#include <optional>
#include <string>

class HOSTINFO;

// Asks for a device, and gives the lines that declare it; nothing when cancelled. They are right behind the
// text, which is that of the device file.
std::optional<std::string> AskForDevice(HWND owner, HOSTINFO* root, const std::string& file,
                                        const std::string& text);
