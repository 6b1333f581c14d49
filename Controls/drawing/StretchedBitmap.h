#pragma once

#include "Controls/drawing/BitmapParts.h"

// Draws a part of an image stretched to an area, with what is transparent in it.
void DrawStretched(HDC dc, const BitmapParts& parts, int part, const RECT& area);
