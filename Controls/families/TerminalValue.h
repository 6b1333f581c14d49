#pragma once

#include <windows.h>

#include <string>

// What a terminal shows when it asks the object of a window for a keyword: its value as text; empty when
// there is none. A keyword that a control does not know, or none, is its default value.
std::string TerminalValue(HWND window, const std::string& keyword);

// Traces that a line was not carried out because it was too long.
void TraceRefusedLine(const char* terminal);
