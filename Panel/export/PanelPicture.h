#pragma once

#include "base/Gdi.h"

#include <windows.h>

#include <string>

// A window as it looks now, whole, with all that is in it, whatever covers it or hides what it is in.
Bitmap PaintWindow(HWND window, SIZE size);
// Writes a panel as a PNG file, whole, with all controls on it, whatever covers it. Its window has to be
// shown, if only beyond the screen. False when it cannot be written.
bool SavePanelPicture(HWND panel, SIZE size, const std::string& file);
// The same, made smaller to fit into that size; a smaller one stays as it is.
bool SavePanelThumbnail(HWND panel, SIZE size, SIZE room, const std::string& file);
