#pragma once

#include <windows.h>

#include <string>

// Ask for a panel file; empty when cancelled. The proposed name may be empty.
std::string AskFileToOpen(HWND owner);
std::string AskFileToSave(HWND owner, const std::string& proposed);
// Asks for a file that a list is exported to, of values with commas between them (.csv) or of text.
std::string AskFileToExport(HWND owner, const std::string& proposed);
