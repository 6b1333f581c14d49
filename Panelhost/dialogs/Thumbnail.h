#pragma once

#include "Panelhost/Bitmap.h"
#include "base/Gdi.h"

// A square picture of that side (pixels) in a format of the screen: the image in its middle, reduced as far
// as it does not fit, on the given ground. Null on failure.
Bitmap MakeThumbnail(const OSMIRBitmap& image, int side, COLORREF ground);
