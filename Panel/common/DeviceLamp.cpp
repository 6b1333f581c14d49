#include "Panel/common/DeviceLamp.h"

#include "base/Gdi.h"

#include <cmath>

namespace {

constexpr int SIZE_OF_LAMP = 16; // pixels
constexpr float RADIUS = 6.5F;
constexpr float RIM = 1.4F; // its width

struct Light {
    float red, green, blue;
};
constexpr Light RIM_LIGHT{52, 58, 66};
constexpr Light LIVE{56, 190, 84};
constexpr Light NOT_LIVE{224, 52, 44};

// How much of a pixel at that distance from the middle lies within the radius.
float Covered(float distance, float radius) {
    return std::clamp(radius - distance + 0.5F, 0.0F, 1.0F);
}

Light Mixed(const Light& from, const Light& to, float part) {
    return {from.red + (to.red - from.red) * part, from.green + (to.green - from.green) * part,
            from.blue + (to.blue - from.blue) * part};
}

std::uint32_t PixelAt(float x, float y, const Light& light) {
    const float distance = std::hypot(x, y);
    const float spot = Covered(std::hypot(x + 2, y + 2), 1.2F) * 0.8F;
    const Light face = Mixed(light, {255, 255, 255}, spot);
    const Light colour = Mixed(RIM_LIGHT, face, Covered(distance, RADIUS - RIM));
    const auto byte = [](float part) { return static_cast<std::uint32_t>(std::lround(part)); };
    return byte(Covered(distance, RADIUS) * 255) << 24 | byte(colour.red) << 16 | byte(colour.green) << 8 |
           byte(colour.blue);
}

} // namespace

OwnedIcon MakeDeviceLamp(bool areLive) {
    std::uint32_t* pixels = nullptr;
    const Bitmap face(CreatePixels(SIZE_OF_LAMP, SIZE_OF_LAMP, &pixels));
    constexpr BYTE OPAQUE_MASK[SIZE_OF_LAMP * 2]{};
    const Bitmap mask(CreateBitmap(SIZE_OF_LAMP, SIZE_OF_LAMP, 1, 1, OPAQUE_MASK));
    if (!face || !mask) {
        return nullptr;
    }
    constexpr float MIDDLE = (SIZE_OF_LAMP - 1) / 2.0F;
    for (int y = 0; y < SIZE_OF_LAMP; ++y) {
        for (int x = 0; x < SIZE_OF_LAMP; ++x) {
            pixels[y * SIZE_OF_LAMP + x] = PixelAt(static_cast<float>(x) - MIDDLE,
                                                   static_cast<float>(y) - MIDDLE, areLive ? LIVE : NOT_LIVE);
        }
    }
    ICONINFO icon{TRUE, 0, 0, mask.get(), face.get()};
    return OwnedIcon(CreateIconIndirect(&icon));
}
