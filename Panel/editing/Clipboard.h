#pragma once

#include <windows.h>

#include <string>

// Components on the clipboard: property text, in a format of their own and as plain text.
bool CopyComponents(HWND owner, const std::string& text);
std::string ComponentsOnClipboard(HWND owner);
bool AreComponentsOnClipboard();
