#include "logic/drawing/Graph.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace logic {

namespace {

// Where the graph enters and leaves a column.
struct Column {
    double from;
    double to;
};

Column ColumnAt(std::span<const double> heights, std::size_t x) {
    constexpr double FAR = 1e6; // outside of any picture
    const double here = std::clamp(heights[x], -FAR, FAR);
    const auto between = [&](std::size_t other) {
        return std::isfinite(heights[other]) ? (here + std::clamp(heights[other], -FAR, FAR)) / 2 : here;
    };
    return {x > 0 ? between(x - 1) : here, x + 1 < heights.size() ? between(x + 1) : here};
}

// The integral of a number that is limited to 0 to 1.
double Ramp(double number) {
    return number <= 0 ? 0 : number < 1 ? number * number / 2 : number - 0.5;
}

// How much of a row lies above an edge that goes evenly from the one height to the other, on average.
double Above(double from, double to, int row) {
    constexpr double FLAT = 1e-3;
    const double way = to - from;
    return std::abs(way) < FLAT ? std::clamp((from + to) / 2 - row, 0.0, 1.0)
                                : (Ramp(to - row) - Ramp(from - row)) / way;
}

std::uint32_t Share(double part) {
    return static_cast<std::uint32_t>(std::clamp(part, 0.0, 1.0) * 256 + 0.5);
}

int RowOf(double height, const PixelArea& area) {
    return static_cast<int>(std::clamp(std::floor(height), -1.0, static_cast<double>(area.height)));
}

} // namespace

void BlendGraph(const PixelArea& area, std::span<const double> heights, const GraphStyle& style) {
    double way = 0; // along the line
    const std::size_t count = std::min(heights.size(), static_cast<std::size_t>(std::max(area.width, 0)));
    for (std::size_t x = 0; x < count; ++x) {
        if (!std::isfinite(heights[x])) {
            continue;
        }
        const auto [from, to] = ColumnAt(heights, x);
        const double slope = std::sqrt(1 + (to - from) * (to - from));
        way += slope;
        if (style.dash > 0 && std::fmod(way, style.dash + style.gap) > style.dash) {
            continue;
        }
        const double reach = style.width / 2 * slope;
        const auto [upper, lower] = std::minmax({from, to});
        const int last = std::min(RowOf(lower + reach, area), area.height - 1);
        for (int row = std::max(RowOf(upper - reach, area), 0); row <= last; ++row) {
            const double covered =
                Above(from + reach, to + reach, row) - Above(from - reach, to - reach, row);
            std::uint32_t& pixel = area.pixels[static_cast<std::ptrdiff_t>(row) * area.rowLength +
                                               static_cast<std::ptrdiff_t>(x)];
            pixel = MixedPixel(pixel, style.colour, Share(covered));
        }
    }
}

void BlendUnderGraph(const PixelArea& area, std::span<const double> heights, double base,
                     std::uint32_t colour, double opacity) {
    const std::uint32_t inside = Share(opacity);
    const std::size_t count = std::min(heights.size(), static_cast<std::size_t>(std::max(area.width, 0)));
    for (std::size_t x = 0; x < count; ++x) {
        if (!std::isfinite(heights[x])) {
            continue;
        }
        const auto [upper, lower] = std::minmax({heights[x], base});
        const int first = RowOf(upper, area);
        const int last = RowOf(lower, area);
        for (int row = std::max(first, 0); row <= std::min(last, area.height - 1); ++row) {
            std::uint32_t share = inside;
            if (row == first || row == last) {
                share = Share((std::min(lower - row, 1.0) - std::max(upper - row, 0.0)) * opacity);
            }
            std::uint32_t& pixel = area.pixels[static_cast<std::ptrdiff_t>(row) * area.rowLength +
                                               static_cast<std::ptrdiff_t>(x)];
            pixel = MixedPixel(pixel, colour, share);
        }
    }
}

} // namespace logic
