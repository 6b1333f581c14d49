#pragma once

#include <windows.h>

#include <string>

// Writes a panel as a PNG file, whole, with all controls on it, whatever covers it. Its window has to be
// shown, if only beyond the screen. False when it cannot be written.
bool SavePanelPicture(HWND panel, SIZE size, const std::string& file);
// The same, made smaller to fit into that size; a smaller one stays as it is.
bool SavePanelThumbnail(HWND panel, SIZE size, SIZE room, const std::string& file);
