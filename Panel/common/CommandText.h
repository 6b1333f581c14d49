#pragma once

#include <windows.h>

#include <string>

// What a command (CMD_...) is said to do in the status bar; empty for other numbers.
std::string CommandStatus(int command);
// Its name, with its key where the menu names one: "Undo (Ctrl+Z)"; empty for other numbers.
std::string CommandTooltip(int command, HMENU menu);
