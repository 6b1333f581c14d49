#pragma once

#include <windows.h>

#include <string>
#include <vector>

class HOSTINFO;

// How controls look that come from the palette.

// What a panel shows behind its controls at a place in its client area, on the average.
COLORREF GroundOf(HWND panel, const RECT& place);
bool IsDarkGround(COLORREF ground);
// The property lines, keyword=value, that give a new control of the class art for a ground of that colour;
// none when it suits any. The pictures stand in the application's folder Controls.
std::vector<std::string> ArtFor(const std::string& className, COLORREF ground);
// Sets the lines of a new control.
void GiveArt(const HOSTINFO& control, const std::vector<std::string>& lines);
