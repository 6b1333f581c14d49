#pragma once

#include "Controls/drawing/FontProperty.h"
#include "Controls/families/FacedControl.h"

#include <optional>

// How the children that a strip makes look on a panel of the style "dark": the colours of panels stand in the
// place of those that the strip gives them. What somebody has given them since is shown as it is.

bool IsDarkPart(const CONTROLPROPERTIES& control);
// The ground of a text or a bar.
std::optional<COLORREF> ShownGround(const CONTROLPROPERTIES& control, std::optional<COLORREF> own);
// The colour of a text or of lines.
std::optional<COLORREF> ShownInk(const CONTROLPROPERTIES& control, std::optional<COLORREF> own,
                                 COLORREF inPlaceOfBlack);
// What a button or a lamp is lit in that is drawn in the place of its picture.
std::optional<COLORREF> ShownLight(const FACEDPROPERTIES& control);
// Whether a font is one that strips give their children, too wide for them on many systems.
bool IsStripFont(const CONTROLPROPERTIES& control, const FontProperty& font);
