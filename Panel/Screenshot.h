#pragma once

#include <windows.h>

#include <string>

// Brings the window to the front and writes it, frame included, as a PNG file.
bool SaveScreenshot(HWND window, const std::string& file);
