#pragma once

#include <windows.h>

// Whether windows of that class are this program's own, those that stand above a panel aside.
bool IsOwnWindow(const char* className);
// Draws a window and all in it, the panel aside, in the dark theme's colours, or as the system does.
void ThemeWindows(HWND window, bool isDark);
