#pragma once

#include "Panelhost/Api.h"

#include <windows.h>

#include <string>

// Font descriptions: face name, comma, point size, optionally ",bold": "ms sans serif,8".

// The font of a description, made once however often it is asked for. Each call adds a reference, to be given
// back with a_ReleaseFont. Null when the description is unreadable (no face, or a size outside 1 to 200
// points).
PANELHOST_API HFONT a_GetFont(const char* description);
PANELHOST_API void a_ReleaseFont(HFONT font);
// The description of a font, from its face, height (96 pixels an inch) and weight; empty for null.
PANELHOST_API std::string a_GetFontString(HFONT font);
// The height of a line of such a font in pixels, measured once; 0 for null.
PANELHOST_API int a_FontHeight(HFONT font);
// Number of fonts in the cache.
PANELHOST_API int a_FontCount();
