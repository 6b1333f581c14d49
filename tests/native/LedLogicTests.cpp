#include "logic/LedLogic.h"

#include <limits>

#include <doctest/doctest.h>

using namespace logic;

TEST_CASE("a lamp goes on at one threshold and off below another") {
    const struct {
        float value;
        bool lit;
    } steps[] = {{-60, false},    {-10, false}, {-6, true}, {-6.1F, true}, {-12, true},
                 {-12.1F, false}, {-7, false},  {0, true},  {-90, false}};
    bool lit = false;
    for (const auto& step : steps) {
        CAPTURE(step.value);
        lit = IsLit(step.value, -6, -12, lit);
        CHECK(lit == step.lit);
    }
    // A reversed pair is one threshold.
    CHECK(IsLit(1, 1, 5, true));
    CHECK_FALSE(IsLit(0.9F, 1, 5, true));
    CHECK_FALSE(IsLit(std::numeric_limits<float>::quiet_NaN(), 0, 0, true));
}

TEST_CASE("a value picks a frame") {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    const struct {
        float value;
        std::int32_t frames, frame;
    } rows[] = {{0, 4, 0},  {1.9F, 4, 1},     {3, 4, 3},         {4, 4, 3}, {-0.5F, 4, 0},
                {-7, 4, 0}, {infinity, 4, 3}, {-infinity, 4, 0}, {5, 0, 0}};
    for (const auto& row : rows) {
        CAPTURE(row.value);
        CHECK(FrameOfValue(row.value, row.frames) == row.frame);
    }
}
