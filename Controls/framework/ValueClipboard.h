#pragma once

#include <cstddef>
#include <windows.h>

// Records on the clipboard, in registered formats.

// Puts the bytes there, in a block of at least that size, the rest of which is zero. False when another
// program holds the clipboard.
bool CopyValue(HWND owner, UINT format, const void* value, std::size_t size, std::size_t blockSize);
// False, and the value untouched, when there is none, when it is too short, and when another program holds
// the clipboard.
bool PasteValue(HWND owner, UINT format, void* value, std::size_t size);
bool HasValueToPaste(UINT format);
