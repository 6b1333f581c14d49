// Controls that stand in each other's way.
#include "logic/editing/Overlaps.h"
#include "tests/native/Tables.h"

using namespace logic;

TEST_CASE(
    "controls cover each other by more than a rim, on shared layers, unless the lower one is the ground") {
    using Pairs = std::vector<std::pair<std::size_t, std::size_t>>;
    struct Case {
        std::vector<PlacedControl> controls; // from front to back
        Pairs covers;
    };
    const Case cases[] = {{{}, {}},
                          {{{{0, 0, 10, 10}}, {{10, 0, 20, 10}}, {{0, 10, 20, 20}}}, {}},
                          {{{{0, 0, 10, 10}}, {{8, 0, 20, 10}}}, {}},             // a rim
                          {{{{0, 0, 10, 10}}, {{7, 0, 20, 10}}}, {{0, 1}}},       // more
                          {{{{7, 0, 20, 10}}, {{0, 0, 10, 10}}}, {{0, 1}}},       // whichever is to the left
                          {{{{2, 2, 8, 8}}, {{0, 0, 10, 10}}}, {}},               // lies on it
                          {{{{0, 0, 10, 10}}, {{2, 2, 8, 8}}}, {{0, 1}}},         // hides it
                          {{{{0, 0, 10, 10}}, {{0, 0, 10, 10}}}, {{0, 1}}},       // the same place
                          {{{{0, 0, 10, 10}, 1}, {{0, 0, 10, 10}, 2}}, {}},       // never together
                          {{{{0, 0, 10, 10}, 1}, {{0, 0, 10, 10}, 3}}, {{0, 1}}}, // on u1
                          {{{{0, 0, 10, 10}, 1}, {{0, 0, 10, 10}, 0}}, {{0, 1}}}, // on all
                          {{{{0, 0, 9, 9}}, {{3, 3, 12, 12}}, {{6, 0, 15, 9}}}, {{0, 1}, {0, 2}, {1, 2}}},
                          {{{{10, 0, 0, 10}}, {{0, 0, 10, 10}}}, {}}}; // reversed: nothing of it is seen
    for (const Case& given : cases) {
        INFO("case ", &given - cases);
        CHECK(FindCovers(given.controls, 100) == given.covers);
    }
    const std::vector<PlacedControl> heap(50, PlacedControl{{0, 0, 9, 9}, 0});
    CHECK(FindCovers(heap, 100).size() == 100);
    const Row<bool, Rectangle, std::int32_t, std::int32_t> rows[] = {{{{0, 0, 9, 9}, 9, 9}, false},
                                                                     {{{-1, 0, 9, 9}, 9, 9}, true},
                                                                     {{{0, -1, 9, 9}, 9, 9}, true},
                                                                     {{{0, 0, 10, 9}, 9, 9}, true},
                                                                     {{{0, 0, 9, 10}, 9, 9}, true}};
    CheckRows(ReachesBeyond, rows);
}
