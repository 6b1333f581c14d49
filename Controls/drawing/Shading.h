#pragma once

#include <windows.h>

// Shaded bars, drawn where a control has no image.

constexpr COLORREF BAR_COLOUR = RGB(234, 144, 3);
constexpr COLORREF BRIGHT_BAR_COLOUR = RGB(234, 184, 3);

// Fills the area row by row (column by column) with the colour, brightest in the middle row (column).
void DrawShadedRows(HDC dc, const RECT& area, COLORREF colour);
void DrawShadedColumns(HDC dc, const RECT& area, COLORREF colour);
