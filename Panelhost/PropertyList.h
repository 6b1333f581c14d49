#pragma once

#include "Panelhost/Api.h"
#include "Panelhost/ValueRecord.h"

#include <cstddef>
#include <windows.h>

class HOSTINFO;

// Appends the keywords of a table whose rows have a handler and are listed, with their values, to a report
// list view of two columns; with allRows the other rows as well. Returns 0.
PANELHOST_API LRESULT a_ListProperties(HOSTINFO* object, const KEYWORDROW* table, HWND listView,
                                       bool allRows = false);

// Writes text at the current position of an open file. 1, or 0 when it could not be written whole; then
// GetLastError tells the system's reason, never 0. Whoever writes the lines of an object answers CWM_SAVE
// with that reason, and the panel that is being saved stays as it was on the disk.
PANELHOST_API int a_WriteText(HANDLE file, const char* text, std::size_t length);
