#pragma once

#include "Panelhost/Bitmap.h"

#include <cstdint>
#include <functional>
#include <memory>

// A picture of what stays the same for many paintings: one copy draws it.
class KeptPicture {
public:
    // Draws it, on black unless all of it is painted; the pixels, 0xaarrggbb from the top down, may be
    // changed afterwards.
    using Render = std::function<void(HDC dc, std::uint32_t* pixels)>;

    // A transparent one is blended over its ground.
    explicit KeptPicture(bool isTransparent, bool isAllPainted = false)
        : isTransparent_(isTransparent), isAllPainted_(isAllPainted) {}

    // It looks different from now on.
    void Change() { isDrawn_ = false; }
    // The picture, drawn when it has changed or has another size. Null for a size without pixels, one that
    // would take too much memory, and without memory: then it is drawn each time.
    const OSMIRBitmap* Get(int width, int height, const Render& render);
    // Has a part of a picture that is there, in that size, drawn anew; nothing of one that would be drawn by
    // the next Get as a whole.
    void Update(int width, int height, const Render& render);

private:
    bool isTransparent_;
    bool isAllPainted_;
    bool isDrawn_ = false;
    std::unique_ptr<OSMIRBitmap> picture_;
    std::uint32_t* pixels_ = nullptr;
};
