#pragma once

#include "base/Gdi.h"

#include <optional>

// Colours of a text and its ground, of which either may be none: the text then gets the one that can be read,
// and the ground is what the control makes of it.

// Black or white, what can be read better on a ground of that colour.
COLORREF ReadableOn(COLORREF ground);
// The ground of a field with a text that was refused.
constexpr COLORREF REFUSED_COLOUR = RGB(255, 188, 176);
// The text colour of a device context, for a text in the middle of an area that its ground is drawn in
// already.
void SelectTextColour(HDC dc, const std::optional<COLORREF>& colour, const RECT& area);
// Fills the area, or leaves it when there is no colour.
void FillGround(HDC dc, const std::optional<COLORREF>& colour, const RECT& area);

// The answer of a control to the question of a system control for its colours. The brush stays its own until
// the next answer.
class FieldColours {
public:
    HBRUSH Answer(HDC dc, COLORREF text, COLORREF ground);

private:
    Brush brush_; // made when it is first asked for
    COLORREF colour_ = 0;
};
