// A smooth graph in a picture, column by column.
#pragma once

#include <cstdint>
#include <span>

namespace logic {

// A part of a picture: its first pixel (0x00rrggbb), and how many pixels of the picture are in a row.
struct PixelArea {
    std::uint32_t* pixels;
    int rowLength;
    int width;
    int height;
};

struct GraphStyle {
    std::uint32_t colour;
    double width = 2; // of the line, in pixels
    double dash = 0;  // pixels along the line that are drawn, and that are left out; 0: all are drawn
    double gap = 0;
};

// A line through the middles of as many columns as there are heights, counted in pixels from the top. What is
// no number interrupts it.
void BlendGraph(const PixelArea& area, std::span<const double> heights, const GraphStyle& style);

// What lies between the graph and a height of its own.
void BlendUnderGraph(const PixelArea& area, std::span<const double> heights, double base,
                     std::uint32_t colour, double opacity);

// A pixel that a colour covers by that many 256ths.
constexpr std::uint32_t MixedPixel(std::uint32_t ground, std::uint32_t colour, std::uint32_t share) {
    constexpr std::uint32_t RED_AND_BLUE = 0xFF00FF;
    constexpr std::uint32_t GREEN = 0x00FF00;
    const std::uint32_t rest = 256 - share;
    return (((ground & RED_AND_BLUE) * rest + (colour & RED_AND_BLUE) * share) >> 8 & RED_AND_BLUE) |
           (((ground & GREEN) * rest + (colour & GREEN) * share) >> 8 & GREEN);
}

} // namespace logic
