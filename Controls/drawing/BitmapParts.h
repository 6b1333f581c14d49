#pragma once

#include "Panelhost/Bitmap.h"

#include <algorithm>

// An image that holds several parts of the same size, side by side or one below the other, the first part on
// the left or at the top.
class BitmapParts {
public:
    enum Arrangement { SideBySide, Stacked };

    BitmapParts(const OSMIRBitmap& bitmap, int count, Arrangement arrangement = SideBySide)
        : bitmap_(bitmap),
          columns_(arrangement == SideBySide ? count : 1),
          rows_(arrangement == SideBySide ? 1 : count) {}

    // Of one part, in pixels; at least 1, whatever the image.
    int Width() const { return std::max(bitmap_.Width() / columns_, 1); }
    int Height() const { return std::max(bitmap_.Height() / rows_, 1); }

    const OSMIRBitmap& Image() const { return bitmap_; }
    // Where a part lies in the image.
    RECT Area(int part) const {
        const int left = columns_ > 1 ? part * Width() : 0;
        const int top = rows_ > 1 ? part * Height() : 0;
        return {left, top, left + Width(), top + Height()};
    }

    // Draws the area of a part, in the part's coordinates, with its top left corner at (x, y).
    void Draw(HDC target, int part, int x, int y, const RECT& area) const {
        const RECT whole = Area(part);
        const int width = std::min<int>(area.right, Width()) - area.left;
        const int height = std::min<int>(area.bottom, Height()) - area.top;
        bitmap_.Draw(target, x, y, width, height, whole.left + area.left, whole.top + area.top);
    }
    // The same at the same place.
    void Draw(HDC target, int part, const RECT& area) const { Draw(target, part, area.left, area.top, area); }

private:
    const OSMIRBitmap& bitmap_;
    int columns_;
    int rows_;
};
