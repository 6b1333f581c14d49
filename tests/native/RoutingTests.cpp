#include "logic/controls/DelayView.h"
#include "logic/controls/RoutingGrid.h"
#include "tests/native/Tables.h"

using namespace logic;

namespace {

using Places = std::vector<Crosspoint>;

bool Lies(const RoutingLayout::Box& inner, int width, int height) {
    return inner.left >= 0 && inner.top >= 0 && inner.right <= width && inner.bottom <= height &&
           inner.left < inner.right && inner.top < inner.bottom;
}

} // namespace

TEST_CASE("a matrix knows what is on, and its text brings it back") {
    RoutingMatrix matrix(3, 2);
    CHECK(matrix.Size() == 6);
    CHECK(matrix.PlaceOf(matrix.NumberOf({2, 1})) == Crosspoint{2, 1});
    CHECK(matrix[{0, 0}] == CrosspointState::Missing);
    CHECK(matrix.Set({0, 1}, CrosspointState::On));
    CHECK_FALSE(matrix.Set({0, 1}, CrosspointState::On));
    matrix.Set({2, 1}, CrosspointState::On);
    matrix.Set({2, 0}, CrosspointState::Off);
    CHECK(matrix.OthersOn({0, 1}) == Places{{2, 1}});
    CHECK(matrix.OthersOn({1, 0}).empty());
    CHECK(matrix.Text() == "1_2;3_2");
    CHECK(matrix.Read(matrix.Text()).value() == std::vector<bool>{false, true, false, false, false, true});
    const auto read = [&](const std::string& text) { return matrix.Read(text); };
    CheckTaken(read, "", " 1_1 ; 1_1;", "3_2");
    CheckRefused(read, "4_1", "1_3", "0_1", "1_0", "1", "1_", "_1", "1_1_1", "x", "1.0_1");
    CHECK(RoutingMatrix(0, 1000).Size() == 64);
}

TEST_CASE("a drag passes all crosspoints on its way") {
    const Row<Places, Crosspoint, Crosspoint> rows[] = {
        {{Crosspoint{1, 1}, Crosspoint{1, 1}}, {}},
        {{Crosspoint{1, 1}, Crosspoint{1, 3}}, {{1, 2}, {1, 3}}},
        {{Crosspoint{3, 3}, Crosspoint{1, 1}}, {{2, 2}, {1, 1}}},
        {{Crosspoint{0, 0}, Crosspoint{1, 4}}, {{0, 1}, {1, 2}, {1, 3}, {1, 4}}}};
    CheckRows(CrosspointsTo, rows);
}

TEST_CASE("keys go through a matrix and end at its edges") {
    const RoutingMatrix matrix(8, 4);
    using enum RoutingKey;
    const Row<Crosspoint, RoutingKey, Crosspoint> rows[] = {
        {{Left, {2, 0}}, {2, 0}},     {{Right, {2, 0}}, {2, 1}},    {{Up, {2, 0}}, {1, 0}},
        {{Down, {7, 0}}, {7, 0}},     {{Home, {2, 3}}, {2, 0}},     {{End, {2, 0}}, {2, 3}},
        {{FirstRow, {5, 2}}, {0, 2}}, {{LastRow, {5, 2}}, {7, 2}},  {{PageUp, {5, 2}}, {2, 2}},
        {{PageDown, {3, 2}}, {6, 2}}, {{PageDown, {6, 2}}, {7, 2}}, {{PageUp, {1, 2}}, {0, 2}}};
    CheckRows([&](RoutingKey key, Crosspoint from) { return MoveBy(key, from, matrix, 3); }, rows);
}

TEST_CASE("a matrix is laid out in any space, and every crosspoint can be reached") {
    CHECK(RoutingLayout({200, 150, 8, 8, 40, 30}).cell == 15); // as wide as high
    CHECK(RoutingLayout({800, 800, 4, 4, 40, 30}).cell == RoutingLayout::LARGEST_CELL);
    CHECK(RoutingLayout({300, 300, 8, 8, 900, 20}).left == 100); // a third at most
    CHECK(RoutingLayout({60, 300, 8, 8, 30, 20}).left == 0);
    const RoutingLayout both({150, 150, 64, 64, 0, 0});
    CHECK((both.HasHorizontalBar() && both.HasVerticalBar()));
    CHECK((both.columns == 10 && both.rows == 10));
    // The bar below leaves room for 9 rows of 10.
    const RoutingLayout low({140, 146, 10, 64, 0, 0});
    CHECK((low.columns == 9 && low.rows == 9));

    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        const RoutingSpace space{Any(random, 0, 700), Any(random, 0, 700), Any(random, 1, 64),
                                 Any(random, 1, 64),  Any(random, 0, 900), Any(random, 0, 900)};
        const RoutingLayout layout(space);
        CAPTURE(space.width);
        CAPTURE(space.height);
        const Crosspoint place{Any(random, 0, space.inputs - 1), Any(random, 0, space.outputs - 1)};
        const Crosspoint first = layout.Showing({Any(random, -9, 99), Any(random, -9, 99)}, place);
        REQUIRE(layout.Limited(first) == first);
        REQUIRE(layout.IsSeen(place, first));
        const auto [left, top, right, bottom] = layout.CellBox(place, first);
        REQUIRE(layout.CellAt(left, top, first) == place);
        REQUIRE(layout.CellAt(right - 1, bottom - 1, first) == place);
        REQUIRE(layout.NearestCell(left, top, first) == place);
        REQUIRE(layout.Showing(first, layout.NearestCell(-9, -9, first)).input ==
                std::max(first.input - 1, 0));
        if (space.width < 40 || space.height < 40) {
            continue;
        }
        if (layout.HasHorizontalBar()) {
            REQUIRE(Lies(layout.HorizontalThumb(first), space.width, space.height));
            REQUIRE(layout.CellBox({first.input + layout.rows - 1, 0}, first).bottom <=
                    layout.HorizontalTrack().top);
            const Crosspoint last = layout.Limited({999, 999});
            REQUIRE(layout.FirstColumnAt(layout.HorizontalThumb(last).left) == last.output);
            REQUIRE(layout.HorizontalThumb(last).right == layout.HorizontalTrack().right);
        }
        if (layout.HasVerticalBar()) {
            REQUIRE(Lies(layout.VerticalThumb(first), space.width, space.height));
            REQUIRE(layout.FirstRowAt(layout.VerticalTrack().top) == 0);
        }
    }
}

TEST_CASE("a delay is shown and stepped in any unit, and keeps its own") {
    using enum ShownUnit;
    const DelaySetting foot{0, 10, 2};
    CHECK(DelayIn(Feet, foot, 48000) == 10);
    CHECK(DelayIn(Metres, foot, 48000) == doctest::Approx(3.048));
    CHECK(DelayIn(Milliseconds, foot, 48000) == doctest::Approx(3.048 / 0.3432));
    CHECK(DelayIn(Samples, {1, 2.5F, 0}, 96000) == doctest::Approx(240)); // bypassed or not
    const Row<std::string, ShownUnit> texts[] = {
        {{Milliseconds}, "8.88 ms"}, {{Metres}, "3.05 m"}, {{Feet}, "10.0 ft"}, {{Samples}, "426 samples"}};
    CheckRows([&](ShownUnit unit) { return DelayTextIn(unit, foot, 48000); }, texts);
    const auto stepped = [](ShownUnit unit, const DelaySetting& delay, int steps, bool isSmall) {
        return DelayTextIn(unit, StepDelayIn(unit, delay, steps, isSmall, 48000), 48000);
    };
    const Row<std::string, ShownUnit, DelaySetting, int, bool> steps[] = {
        {{Milliseconds, foot, 1, false}, "10.00 ms"},   {{Milliseconds, foot, -1, true}, "8.80 ms"},
        {{Metres, foot, -4, false}, "0.00 m"},          {{Samples, foot, 1, true}, "427 samples"},
        {{Samples, {0, 3, 1}, -1, false}, "2 samples"}, {{Milliseconds, {0, 3, 99}, 1, false}, "0.00 ms"}};
    CheckRows(stepped, steps);
    CHECK(StepDelayIn(Metres, foot, 1, false, 48000).unit == 2);
    CHECK(StepDelayIn(Metres, {0, largest, 7}, 1, false, 48000) == DelaySetting{0, largest, 7});
    const Row<double, DelaySetting, double> shares[] = {{{{0, 250, 0}, 500.0}, 0.5},
                                                        {{{0, 1, 7}, 500.0}, 1.0},
                                                        {{{0, -1, 0}, 500.0}, 0.0},
                                                        {{{0, notANumber, 0}, 500.0}, 0.0}};
    CheckRows([](const DelaySetting& delay, double maximum) { return DelayShare(delay, maximum, 48000); },
              shares);
}
