#include "logic/editing/EditGeometry.h"
#include "logic/editing/ReadingOrder.h"
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
        {{10, 20}, TopLeft}, {{69, 59}, BottomRight}, {{25, 20}, None}, {{9, 20}, None}, {{70, 59}, None}};
    CheckRows(handleAt, rows);
    for (int size = 3; size <= 40; ++size) { // even a small control can be grasped in its middle to be moved
        CAPTURE(size);
        CHECK(HandleAt({0, 0, size, size}, {size / 2, size / 2}) == None);
    }
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
    // Centre to centre.
    CHECK(SnapMove({142, 20, 162, 40}, others, SNAPPING).by.x == -2);
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
        for (const Rectangle& each : group) {
            CHECK(Touches({0, 0, 300, 200}, Moved(each, ReachableMove(wanted, group, 300, 200))));
        }
    }
}

TEST_CASE("two are not distributed, and overlapping ones share the lack of room") {
    std::array two{Rectangle{0, 0, 1, 1}, Rectangle{0, 50, 1, 51}};
    DistributeDown(two);
    CHECK(two[1] == Rectangle{0, 50, 1, 51});
    std::array crowded{Rectangle{0, 0, 9, 40}, Rectangle{0, 5, 9, 45}, Rectangle{0, 20, 9, 60}};
    DistributeDown(crowded);
    CHECK(crowded[1] == Rectangle{0, 10, 9, 50});
}

TEST_CASE("the order of reading goes line by line, and covers nothing that was not covered") {
    using Order = std::vector<std::size_t>;
    const Row<Order, std::vector<Rectangle>> rows[] = {
        {{{}}, {}},
        {{{{50, 0, 60, 10}, {0, 0, 10, 10}}}, {1, 0}},
        {{{{0, 50, 10, 60}, {50, 3, 60, 13}, {0, 0, 10, 10}}},
         {2, 1, 0}},                                   // beside each other, though not quite
        {{{{0, 8, 10, 18}, {50, 0, 60, 10}}}, {1, 0}}, // the middle is below
        {{{{0, 12, 5, 20}, {10, 0, 20, 40}, {30, 15, 40, 20}}}, {0, 1, 2}}, // tall ones make tall lines
        // What lies around others stays behind them, and what lies on top in front.
        {{{{20, 20, 30, 30}, {10, 20, 20, 30}, {0, 0, 90, 90}}}, {1, 0, 2}},
        {{{{60, 60, 90, 90}, {0, 0, 70, 70}, {0, 80, 10, 90}}}, {0, 1, 2}},
    };
    CheckRows([](const std::vector<Rectangle>& places) { return ReadingOrder(places); }, rows);
}
