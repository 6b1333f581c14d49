#include "logic/editing/EditGeometry.h"
#include "tests/native/Tables.h"

#include <array>

using namespace logic;

namespace {

constexpr SnapSettings SNAPPING{8, 4};

} // namespace

TEST_CASE("the handles of a frame are grasped at its corners and the middles of its edges") {
    using enum Handle;
    const auto handleAt = [](int x, int y) { return HandleAt({10, 20, 70, 60}, {x, y}); };
    const Row<Handle, int, int> rows[] = {
        {{10, 20}, TopLeft},     {{40, 20}, Top},    {{69, 20}, TopRight},   {{69, 40}, Right},
        {{69, 59}, BottomRight}, {{40, 59}, Bottom}, {{10, 59}, BottomLeft}, {{10, 40}, Left},
        {{40, 40}, None},        {{25, 20}, None},   {{9, 20}, None},        {{70, 59}, None}};
    CheckRows(handleAt, rows);
    for (int size = 3; size <= 40; ++size) { // even a small control can be grasped in its middle to be moved
        CAPTURE(size);
        CHECK(HandleAt({0, 0, size, size}, {size / 2, size / 2}) == None);
    }
}

TEST_CASE("sizing moves the edges of the handle and keeps the minimum") {
    const Rectangle start{10, 10, 50, 40};
    CHECK(Sized(start, Handle::BottomRight, {5, -3}, 4) == Rectangle{10, 10, 55, 37});
    CHECK(Sized(start, Handle::TopLeft, {5, -3}, 4) == Rectangle{15, 7, 50, 40});
    CHECK(Sized(start, Handle::Left, {100, 100}, 4) == Rectangle{46, 10, 50, 40});
    CHECK(Sized(start, Handle::Top, {0, 100}, 4) == Rectangle{10, 36, 50, 40});
    CHECK(Sized(start, Handle::Right, {-100, 9}, 4) == Rectangle{10, 10, 14, 40});
    CHECK(Sized({0, 0, 2, 2}, Handle::Bottom, {0, -9}, 4) == Rectangle{0, 0, 2, 2});
    CHECK(Sized(start, Handle::None, {7, 7}, 4) == start);
}

TEST_CASE("a rubber band selects what it touches, whichever way it was drawn") {
    const auto touches = [](Offset from, Offset to) { return Touches(Spanned(from, to), {10, 10, 20, 20}); };
    const Row<bool, Offset, Offset> rows[] = {
        {{{19, 19}, {40, 40}}, true}, {{{40, 40}, {0, 0}}, true},    {{{20, 10}, {40, 40}}, false},
        {{{0, 0}, {10, 40}}, false},  {{{25, 25}, {25, 25}}, false},
    };
    CheckRows(touches, rows);
}

TEST_CASE("what is moved snaps to near edges and centres, else to the grid") {
    const std::array others{Rectangle{100, 100, 200, 130}};
    // Left edge to left edge; down there is nothing near, so the top goes to the grid.
    Snap snap = SnapMove({103, 49, 123, 69}, others, SNAPPING);
    CHECK(snap.by == Offset{-3, -1});
    REQUIRE(snap.guides.size() == 1);
    CHECK(snap.guides[0].vertical);
    CHECK(snap.guides[0].position == 100);
    CHECK(snap.guides[0].from == 48);
    CHECK(snap.guides[0].to == 130);
    // Centre to centre.
    snap = SnapMove({142, 20, 162, 40}, others, SNAPPING);
    CHECK(snap.by.x == -2);
    // The nearest of several wins.
    CHECK(SnapMove({101, 20, 190, 40}, others, SNAPPING).by.x == -1);
    // Neither others nor a grid.
    CHECK(SnapMove({103, 49, 123, 69}, others, {0, 0}).by == Offset{});
    CHECK(SnapMove({-3, -5, 9, 9}, {}, SNAPPING).by == Offset{3, -3});
}

TEST_CASE("sizing snaps only the edges that move") {
    const std::array others{Rectangle{100, 100, 200, 130}};
    const Snap snap = SnapSize({20, 20, 98, 61}, Handle::Right, others, SNAPPING);
    CHECK(snap.by == Offset{2, 0});
    CHECK(snap.guides.size() == 1);
    CHECK(SnapSize({20, 20, 70, 61}, Handle::Bottom, others, SNAPPING).by == Offset{0, 3});
    CHECK(SnapSize({21, 22, 70, 61}, Handle::TopLeft, others, SNAPPING).by == Offset{3, 2});
}

TEST_CASE("a control cannot be moved wholly out of the panel") {
    const std::array one{Rectangle{10, 10, 60, 40}};
    CHECK(ReachableMove({-1000, 5}, one, 300, 200) == Offset{-52, 5});
    CHECK(ReachableMove({1000, 1000}, one, 300, 200) == Offset{282, 182});
    // What is outside may come back, but goes no further.
    const std::array outside{Rectangle{400, 10, 450, 40}};
    CHECK(ReachableMove({10, 0}, outside, 300, 200) == Offset{0, 0});
    CHECK(ReachableMove({-20, 0}, outside, 300, 200) == Offset{-20, 0});
    const std::array group{Rectangle{0, 0, 10, 10}, Rectangle{250, 150, 300, 200}};
    for (const Offset wanted : {Offset{-900, -900}, {900, 900}, {-900, 900}}) {
        for (const Rectangle& each : group)
            CHECK(Touches({0, 0, 300, 200}, Moved(each, ReachableMove(wanted, group, 300, 200))));
    }
}

TEST_CASE("alignment follows the first selected") {
    const std::array start{Rectangle{40, 40, 80, 60}, Rectangle{0, 10, 20, 90},
                           Rectangle{100, 100, 150, 105}};
    const auto aligned = [&start](Alignment alignment) {
        auto places = start;
        Align(alignment, places);
        CHECK(places[0] == start[0]);
        return std::pair(places[1], places[2]);
    };
    using enum Alignment;
    const Row<std::pair<Rectangle, Rectangle>, Alignment> rows[] = {
        {Left, {{40, 10, 60, 90}, {40, 100, 90, 105}}},
        {Right, {{60, 10, 80, 90}, {30, 100, 80, 105}}},
        {Top, {{0, 40, 20, 120}, {100, 40, 150, 45}}},
        {Bottom, {{0, -20, 20, 60}, {100, 55, 150, 60}}},
        {CentreAcross, {{50, 10, 70, 90}, {35, 100, 85, 105}}},
        {CentreDown, {{0, 10, 20, 90}, {100, 48, 150, 53}}}};
    CheckRows(aligned, rows);
}

TEST_CASE("distribution makes the gaps equal and leaves the outermost where they are") {
    std::array places{Rectangle{0, 5, 10, 15}, Rectangle{90, 5, 100, 15}, Rectangle{12, 5, 22, 15},
                      Rectangle{24, 5, 34, 15}};
    DistributeAcross(places);
    CHECK(places[0] == Rectangle{0, 5, 10, 15});
    CHECK(places[1] == Rectangle{90, 5, 100, 15});
    CHECK(places[2] == Rectangle{30, 5, 40, 15});
    CHECK(places[3] == Rectangle{60, 5, 70, 15});
    std::array two{Rectangle{0, 0, 1, 1}, Rectangle{0, 50, 1, 51}};
    DistributeDown(two);
    CHECK(two[1] == Rectangle{0, 50, 1, 51});
    // Overlapping ones share the lack of room.
    std::array crowded{Rectangle{0, 0, 9, 40}, Rectangle{0, 5, 9, 45}, Rectangle{0, 20, 9, 60}};
    DistributeDown(crowded);
    CHECK(crowded[1] == Rectangle{0, 10, 9, 50});
}
