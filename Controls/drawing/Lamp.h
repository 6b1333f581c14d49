#pragma once

#include <windows.h>

// Lamps, drawn where a control has no image.

struct LampColours {
    COLORREF lit = RGB(70, 240, 96);
    COLORREF dark = RGB(20, 70, 28);
};

// A round lamp in a rim in the middle of the area, in one of so many steps of brightness, of which 0 is the
// dark one.
void DrawLamp(HDC dc, const RECT& area, int step, int steps, const LampColours& colours = {});
// Of a value that is not known: neither lit nor dark, a grey plate that is crossed out. A lamp that has room
// for the not-equal sign shows that, too.
void DrawUnknownLamp(HDC dc, const RECT& client);
bool HasRoomForSign(const RECT& client);
