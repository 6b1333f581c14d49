#pragma once

#include <windows.h>

#include <optional>
#include <string>

// Asks for the size and the ground of a new panel. The lines of its file, or nothing when it was cancelled.
std::optional<std::string> AskForNewPanel(HWND owner);
