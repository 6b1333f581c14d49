#include "Panelhost/dialogs/Thumbnail.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

// A 32-bit pixel is blue, green, red and alpha from the low byte on.
struct Pixels {
    const std::uint32_t* bits;
    int width, height;

    std::uint32_t At(int x, int y) const { return bits[static_cast<std::ptrdiff_t>(y) * width + x]; }
};

bool PixelsOf(const OSMIRBitmap& image, Pixels& pixels) {
    DIBSECTION section{};
    const HGDIOBJ bitmap = GetCurrentObject(image.Dc(), OBJ_BITMAP);
    if (GetObjectA(bitmap, sizeof section, &section) != sizeof section || section.dsBm.bmBits == nullptr ||
        section.dsBm.bmBitsPixel != 32) {
        return false;
    }
    GdiFlush();
    // The first row is the upper one, although the system tells a positive height of such a bitmap, too.
    pixels = {static_cast<const std::uint32_t*>(section.dsBm.bmBits), image.Width(), image.Height()};
    return true;
}

// The mean colour of a part of the image, over the ground.
std::uint32_t Mean(const Pixels& image, bool hasAlpha, const RECT& part, COLORREF ground) {
    std::uint64_t sums[4] = {};
    for (int y = part.top; y < part.bottom; ++y) {
        for (int x = part.left; x < part.right; ++x) {
            const std::uint32_t pixel = image.At(x, y);
            for (unsigned channel = 0; channel < 4; ++channel) {
                sums[channel] += (pixel >> (8 * channel)) & 255;
            }
        }
    }
    const auto count = static_cast<std::uint64_t>(part.right - part.left) *
                       static_cast<std::uint64_t>(part.bottom - part.top);
    const std::uint64_t alpha = hasAlpha ? sums[3] / count : 255;
    const std::uint64_t grounds[3] = {GetBValue(ground), GetGValue(ground), GetRValue(ground)};
    std::uint32_t mean = 0;
    for (unsigned channel = 0; channel < 3; ++channel) { // the colours are premultiplied
        const std::uint64_t value = sums[channel] / count + grounds[channel] * (255 - alpha) / 255;
        mean |= static_cast<std::uint32_t>(std::min<std::uint64_t>(value, 255)) << (8 * channel);
    }
    return mean;
}

LONG Scaled(int place, int whole, int size) {
    return static_cast<LONG>(static_cast<std::int64_t>(place) * whole / size);
}

void Draw(const Pixels& image, bool hasAlpha, int side, COLORREF ground, std::uint32_t* target) {
    const std::uint32_t plain = RGB(GetBValue(ground), GetGValue(ground), GetRValue(ground));
    std::fill(target, target + static_cast<std::ptrdiff_t>(side) * side, plain);
    const int longest = std::max({image.width, image.height, side});
    const int width = std::max(1, static_cast<int>(Scaled(side, image.width, longest)));
    const int height = std::max(1, static_cast<int>(Scaled(side, image.height, longest)));
    std::uint32_t* first = target + (side - height) / 2 * side + (side - width) / 2;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            RECT part{Scaled(x, image.width, width), Scaled(y, image.height, height),
                      Scaled(x + 1, image.width, width), Scaled(y + 1, image.height, height)};
            part.right = std::max(part.right, part.left + 1);
            part.bottom = std::max(part.bottom, part.top + 1);
            first[static_cast<std::ptrdiff_t>(y) * side + x] = Mean(image, hasAlpha, part, ground);
        }
    }
}

} // namespace

Bitmap MakeThumbnail(const OSMIRBitmap& image, int side, COLORREF ground) {
    Pixels source{};
    std::uint32_t* bits = nullptr;
    Bitmap thumbnail(CreatePixels(side, side, &bits));
    if (thumbnail == nullptr || !PixelsOf(image, source)) {
        return nullptr;
    }
    Draw(source, image.HasAlpha(), side, ground, bits);
    return thumbnail;
}
