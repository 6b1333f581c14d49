#pragma once

#include "Panelhost/Api.h"

#include <windows.h>

// Makes a file name absolute: relative names are relative to the application folder, the folder of this
// library. The buffer holds MAX_PATH bytes. 1, or 0 with an empty buffer when the result is too long.
PANELHOST_API int a_MakeFullPathName(const char* name, char* fullPath);

// The same, relative to the folder of a library or program.
PANELHOST_API int a_MakeFullPathName2(HMODULE module, const char* name, char* fullPath);
