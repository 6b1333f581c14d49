#include "Controls/drawing/Disc.h"

#include "Controls/drawing/Canvas.h"
#include "Controls/drawing/KeptPicture.h"
#include "logic/drawing/Coverage.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

constexpr double HALO = 2;
constexpr double RING = 1.5;
constexpr std::size_t MOST = 64; // looks

} // namespace

const Stamp& Discs::Get(const Look& look, HFONT font) {
    if (drawn_.size() >= MOST) {
        drawn_.clear();
    }
    const Key key{look.radius, look.colour, look.inside, look.halo, look.label, look.labelColour};
    const auto known = drawn_.find(key);
    return known != drawn_.end() ? known->second : drawn_.emplace(key, Draw(look, font)).first->second;
}

Stamp Discs::Draw(const Look& look, HFONT font) {
    const double outer = look.radius + (look.halo ? HALO : 0);
    const int size = 2 * static_cast<int>(std::ceil(outer)) + 1;
    const RECT whole{0, 0, size, size};
    const logic::Spot centre{size / 2.0, size / 2.0};
    Stamp stamp{size,
                std::vector<std::uint32_t>(static_cast<std::size_t>(size) * static_cast<std::size_t>(size))};
    logic::Coverage covered(size, size);
    covered.AddCircle(centre, outer);
    covered.Blend(stamp.pixels.data(), size, 0xFFFFFF, 1);

    KeptPicture picture(false);
    picture.Get(size, size, [&](HDC dc, std::uint32_t* pixels) {
        Canvas canvas(dc, pixels, size, 0, whole);
        canvas.Box(whole, look.halo.value_or(look.colour));
        canvas.Circle(centre, look.radius + (look.halo ? 0 : HALO), look.colour);
        if (look.inside) {
            canvas.Circle(centre, look.radius - RING, *look.inside);
        }
        if (!look.label.empty()) {
            canvas.Text(look.label, {-size, 0, 2 * size, size}, font, look.labelColour,
                        DT_CENTER | DT_VCENTER);
        }
        GdiFlush();
        std::transform(
            stamp.pixels.begin(), stamp.pixels.end(), pixels, stamp.pixels.begin(),
            [](std::uint32_t mask, std::uint32_t pixel) { return mask << 24 | (pixel & 0xFFFFFF); });
    });
    return stamp;
}
