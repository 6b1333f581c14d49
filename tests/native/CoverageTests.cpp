// Smooth shapes: the area that they cover is the one that geometry says.
#include "logic/drawing/Coverage.h"
#include "logic/drawing/Graph.h"

#include <cmath>

#include "tests/native/Tables.h"

using namespace logic;

namespace {

constexpr int WIDTH = 40;
constexpr int HEIGHT = 30;

// Pixels that the shape covers, partly covered ones as the part.
struct Painted {
    std::vector<std::uint32_t> pixels;
    double area = 0;
};

template <class Add>
Painted Paint(Add add) {
    Painted painted{std::vector<std::uint32_t>(WIDTH * HEIGHT)};
    Coverage coverage(WIDTH, HEIGHT);
    for (int round = 0; round < 2; ++round) { // nothing is left of what was blended before
        add(coverage);
        std::fill(painted.pixels.begin(), painted.pixels.end(), 0);
        coverage.Blend(painted.pixels.data(), WIDTH, 0xFFFFFF, 1);
    }
    for (const std::uint32_t pixel : painted.pixels) {
        painted.area += (pixel & 0xFF) / 255.0;
    }
    return painted;
}

double AreaOf(const std::vector<Spot>& outline) {
    return Paint([&](Coverage& coverage) { coverage.AddOutline(outline); }).area;
}

} // namespace

TEST_CASE("outlines cover their area, cut off at the borders") {
    CHECK(AreaOf({{3.25, 4.5}, {9.75, 4.5}, {9.75, 20.25}, {3.25, 20.25}}) ==
          doctest::Approx(6.5 * 15.75).epsilon(0.01));
    CHECK(AreaOf({{3.25, 20.25}, {9.75, 20.25}, {9.75, 4.5}, {3.25, 4.5}}) ==
          doctest::Approx(6.5 * 15.75).epsilon(0.01));
    CHECK(AreaOf({{5, 5}, {35, 5}, {5, 25}}) == doctest::Approx(300).epsilon(0.01));
    CHECK(AreaOf({{-1000, -1000}, {1000, -1000}, {1000, 1000}, {-1000, 1000}}) ==
          doctest::Approx(WIDTH * HEIGHT));
    CHECK(AreaOf({{-20, 0}, {20, 0}, {20, 30}, {-20, 30}}) ==
          doctest::Approx(600).epsilon(0.01)); // on the left
    CHECK(AreaOf({{20, -15}, {45, 10}, {20, 35}, {-5, 10}}) ==
          doctest::Approx(950).epsilon(0.01)); // on all sides
    CHECK(AreaOf({{50, 2}, {70, 2}, {60, 20}}) == 0);
    for (const double odd : {static_cast<double>(notANumber), static_cast<double>(infinity), 1e300}) {
        CHECK(AreaOf({{5, 5}, {odd, 5}, {5, 25}}) >= 0);
    }
    // Any triangle covers half the product of two sides and the sine between them.
    std::mt19937 random(17);
    for (int i = 0; i < 200; ++i) {
        const auto any = [&random](int most) { return Any(random, 0, most * 16) / 16.0; };
        const Spot a{any(WIDTH), any(HEIGHT)};
        const Spot b{any(WIDTH), any(HEIGHT)};
        const Spot c{any(WIDTH), any(HEIGHT)};
        const double area = std::abs((b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y)) / 2;
        CHECK(AreaOf({a, b, c}) == doctest::Approx(area).epsilon(0.02).scale(20));
    }
}

TEST_CASE("lines and circles") {
    const auto line = [](const std::vector<Spot>& spots, double width) {
        return Paint([&](Coverage& coverage) { coverage.AddLine(spots, width); }).area;
    };
    CHECK(line({{5, 10.25}, {35, 10.25}}, 2) == doctest::Approx(60).epsilon(0.01));
    CHECK(line({{5, 5}, {29, 23}}, 2) == doctest::Approx(60).epsilon(0.01));
    CHECK(line({{5, 5}, {20, 5}, {20, 20}}, 2) == doctest::Approx(59.5).epsilon(0.01)); // bevelled, and once
    CHECK(line({{20, 20}, {20, 5}, {5, 5}}, 2) == doctest::Approx(59.5).epsilon(0.01));
    CHECK(line({{5, 5}, {5, 5}, {notANumber, 4}, {5, 15}, {15, 15}}, 2) == doctest::Approx(20).epsilon(0.01));
    const Painted circle = Paint([](Coverage& coverage) { coverage.AddCircle({20, 15}, 6); });
    CHECK(circle.area == doctest::Approx(3.1416 * 36).epsilon(0.02));
    CHECK(circle.pixels[15 * WIDTH + 20] == 0xFFFFFF);
    CHECK(circle.pixels[15 * WIDTH + 27] == 0);
}

TEST_CASE("a line in dashes") {
    std::vector<Spot> spots;
    for (int i = 0; i <= 90; ++i) {
        spots.push_back({i / 3.0, 7});
    }
    const auto dashes = Dashes(spots, 6, 4);
    REQUIRE(dashes.size() == 3);
    for (std::size_t i = 0; i < dashes.size(); ++i) {
        CHECK(dashes[i].front().x == doctest::Approx(10.0 * static_cast<double>(i)));
        CHECK(dashes[i].back().x == doctest::Approx(10.0 * static_cast<double>(i) + 6));
    }
    CHECK(Dashes(std::vector<Spot>{{1, 1}}, 6, 4).size() <= 1);
    CHECK(Dashes({}, 6, 4).empty());
}

TEST_CASE("a graph covers what a line through its columns covers") {
    const auto graph = [](const std::vector<double>& heights, const GraphStyle& style) {
        std::vector<std::uint32_t> pixels(WIDTH * HEIGHT);
        BlendGraph({pixels.data(), WIDTH, WIDTH, HEIGHT}, heights, style);
        double area = 0;
        for (const std::uint32_t pixel : pixels) {
            area += (pixel & 0xFF) / 255.0;
        }
        return area;
    };
    const auto straight = [](double from, double slope) {
        std::vector<double> heights;
        for (int x = 0; x < WIDTH; ++x) {
            heights.push_back(from + slope * x);
        }
        return heights;
    };
    for (const double slope : {0.0, 0.1, -0.3, 0.5}) {
        const double length = std::hypot(1.0, slope) * WIDTH;
        CHECK(graph(straight(slope < 0 ? 22.3 : 5.2, slope), {0xFFFFFF, 2}) ==
              doctest::Approx(2 * length).epsilon(0.02));
        CHECK(graph(straight(slope < 0 ? 22.3 : 5.2, slope), {0xFFFFFF, 2, 6, 4}) ==
              doctest::Approx(2 * 0.6 * length).epsilon(0.15));
    }
    CHECK(graph(straight(-40, 4), {0xFFFFFF, 1}) ==
          doctest::Approx(std::hypot(7.5, 30)).epsilon(0.05)); // cut off
    for (const double odd : {static_cast<double>(notANumber), 1e300, -1e300}) {
        std::vector<double> heights = straight(10, 0);
        heights[20] = odd;
        CHECK(graph(heights, {0xFFFFFF, 2}) >= 70);
        CHECK(std::isfinite(graph(std::vector<double>(3 * WIDTH, odd), {0xFFFFFF, 2})));
    }
    std::vector<std::uint32_t> pixels(WIDTH * HEIGHT);
    BlendUnderGraph({pixels.data(), WIDTH, WIDTH, HEIGHT}, straight(10.5, 0), 20.25, 0xFFFFFF, 0.5);
    const Row<std::uint32_t, int> rows[] = {{{9}, 0},    {{10}, 63}, {{11}, 127},
                                            {{19}, 127}, {{20}, 31}, {{21}, 0}};
    CheckRows([&](int row) { return pixels[static_cast<std::size_t>(row * WIDTH + 7)] & 0xFF; }, rows);
}
