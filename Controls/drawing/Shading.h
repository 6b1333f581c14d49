#pragma once

#include "logic/drawing/PanelColours.h"

#include <windows.h>

#include <cstdint>
#include <vector>

// Shaded bars, drawn where a control has no image, and the dot of a knob.

constexpr COLORREF BAR_COLOUR = RGB(234, 144, 3);
constexpr COLORREF BRIGHT_BAR_COLOUR = RGB(234, 184, 3);
// Of the groove that a bar or a marker lies in: its ground and its lit rim.
constexpr COLORREF GROOVE_COLOUR = logic::PANEL_WELL;
constexpr COLORREF RIM_COLOUR = logic::PANEL_EDGE;

// Fills the area with one line of pixels (0x00rrggbb), as many as it is high (wide), the first at the top
// (left).
void DrawRows(HDC dc, const RECT& area, const std::vector<std::uint32_t>& pixels);
void DrawColumns(HDC dc, const RECT& area, const std::vector<std::uint32_t>& pixels);
// The same of a colour.
std::uint32_t PixelOf(COLORREF colour);
// Fills the area row by row (column by column) with the colour, brightest in the middle row (column).
void DrawShadedRows(HDC dc, const RECT& area, COLORREF colour);
void DrawShadedColumns(HDC dc, const RECT& area, COLORREF colour);
// Fills the area with two gradients, one in each half: from the first colour at the upper (left) edge to the
// second, and from the third to the last.
using HalfGradients = COLORREF[4];
void DrawGradientRows(HDC dc, const RECT& area, const HalfGradients& colours);
void DrawGradientColumns(HDC dc, const RECT& area, const HalfGradients& colours);
// A round dot of 5 x 5 pixels with a highlight at its bottom and right.
void DrawDot(HDC dc, int left, int top, COLORREF colour, int size = 5);
