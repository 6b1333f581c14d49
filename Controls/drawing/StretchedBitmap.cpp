#include "Controls/drawing/StretchedBitmap.h"

void DrawStretched(HDC dc, const BitmapParts& parts, int part, const RECT& area) {
    const OSMIRBitmap& bitmap = parts.Image();
    const RECT from = parts.Area(part);
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    if (width <= 0 || height <= 0 || from.right > bitmap.Width() || from.bottom > bitmap.Height()) {
        return;
    }
    if (bitmap.HasAlpha()) {
        const BLENDFUNCTION blend{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
        GdiAlphaBlend(dc, area.left, area.top, width, height, bitmap.Dc(), from.left, from.top,
                      from.right - from.left, from.bottom - from.top, blend);
        return;
    }
    const int before = SetStretchBltMode(dc, HALFTONE);
    StretchBlt(dc, area.left, area.top, width, height, bitmap.Dc(), from.left, from.top,
               from.right - from.left, from.bottom - from.top, SRCCOPY);
    SetStretchBltMode(dc, before);
}
