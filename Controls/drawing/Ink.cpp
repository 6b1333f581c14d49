#include "Controls/drawing/Ink.h"

#include "Controls/drawing/TextColours.h"
#include "base/Gdi.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace {

// A pixel of that colour (0x00bbggrr) as AlphaBlend wants it, of which so much covers the ground.
std::uint32_t Covering(COLORREF colour, std::uint32_t cover) {
    const auto share = [cover](std::uint32_t channel) { return (channel * cover + 127) / 255; };
    return cover << 24 | share(GetRValue(colour)) << 16 | share(GetGValue(colour)) << 8 |
           share(GetBValue(colour));
}

} // namespace

void Ink::Set(std::vector<RECT> lines, std::vector<Text> texts) {
    lines_ = std::move(lines);
    texts_ = std::move(texts);
    picture_.Change();
}

void Ink::DrawTexts(HDC dc, const Look& look, COLORREF colour) const {
    const Selected selected(dc, look.font);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, colour);
    for (const Text& text : texts_) {
        TextOutA(dc, text.place.x, text.place.y, text.text.c_str(), static_cast<int>(text.text.size()));
    }
}

void Ink::Render(const Look& look, HDC dc, std::uint32_t* pixels) const {
    DrawTexts(dc, look, RGB(255, 255, 255));
    GdiFlush();
    // How white the smoothed edge of a glyph is on black says how much it covers.
    const int count = look.size.cx * look.size.cy;
    std::transform(pixels, pixels + count, pixels,
                   [&](std::uint32_t pixel) { return Covering(look.textColour, pixel >> 8 & 0xFF); });
    const RECT whole{0, 0, look.size.cx, look.size.cy};
    for (const RECT& line : lines_) {
        RECT area{};
        IntersectRect(&area, &line, &whole);
        for (int y = area.top; y < area.bottom; ++y) {
            std::fill(pixels + y * look.size.cx + area.left, pixels + y * look.size.cx + area.right,
                      Covering(look.lineColour, 255));
        }
    }
}

void Ink::Draw(HDC dc, const Look& look) {
    if (lineColour_ != look.lineColour || textColour_ != look.textColour) {
        lineColour_ = look.lineColour;
        textColour_ = look.textColour;
        picture_.Change();
    }
    const auto render = [&](HDC kept, std::uint32_t* pixels) { Render(look, kept, pixels); };
    if (const OSMIRBitmap* picture = picture_.Get(look.size.cx, look.size.cy, render)) {
        picture->Draw(dc, 0, 0);
        return;
    }
    for (const RECT& line : lines_) {
        FillGround(dc, look.lineColour, line);
    }
    DrawTexts(dc, look, look.textColour);
}
