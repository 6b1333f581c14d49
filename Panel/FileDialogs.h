#pragma once

#include <windows.h>

#include <string>

// Ask for a panel file; empty when cancelled. The proposed name may be empty.
std::string AskFileToOpen(HWND owner);
std::string AskFileToSave(HWND owner, const std::string& proposed);
