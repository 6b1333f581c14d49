#include "logic/KnobLogic.h"

#include <cmath>
#include <limits>
#include <random>

#include <doctest/doctest.h>

using namespace logic;

TEST_CASE("dragging moves one unit a pixel, stops unrounded at the ends and rounds in between") {
    const KnobRange whole{0, 100, 0.5F};
    const KnobRange both{-100, 100, 0.5F};
    CHECK(DragKnob(9.3F, 1, whole) == 10.5F);
    CHECK(DragKnob(-9.3F, -1, both) == -10.5F);
    CHECK(DragKnob(10.3F, 0, whole) == 10.3F);
    CHECK(DragKnob(95.0F, 10, whole) == 100.0F);
    CHECK(DragKnob(95.0F, 10, {0, 100, 7.0F}) == 100.0F);
    CHECK(DragKnob(5.0F, -10, {1, 100, 7.0F}) == 1.0F);
    CHECK(DragKnob(1.25F, 3, {0, 100, 0.0F}) == 4.25F);
    CHECK(DragKnob(50.0F, 1, {100, 0, 0.5F}) == 100.0F);
    CHECK(DragKnob(50.0F, 1, {7, 7, 0.5F}) == 7.0F);
    CHECK(DragKnob(std::numeric_limits<float>::quiet_NaN(), 1, whole) == 0.0F);
    std::mt19937 random(5);
    for (int round = 0; round < 2000; ++round) {
        const auto minimum = static_cast<std::int32_t>(random() % 400) - 200;
        const KnobRange range{minimum, minimum + static_cast<std::int32_t>(random() % 300),
                              static_cast<float>(random() % 9) * 0.25F};
        float value = static_cast<float>(range.minimum);
        for (int move = 0; move < 10; ++move) {
            const auto dx = static_cast<std::int16_t>(static_cast<int>(random() % 101) - 50);
            const float moved = value + static_cast<float>(dx);
            value = DragKnob(value, dx, range);
            if (dx == 0)
                continue;
            if (moved < static_cast<float>(range.minimum))
                CHECK(value == static_cast<float>(range.minimum));
            else if (moved > static_cast<float>(range.maximum))
                CHECK(value == static_cast<float>(range.maximum));
            else if (range.resolution == 0.0F)
                CHECK(value == moved);
            else {
                CHECK(std::fmod(value, range.resolution) == 0.0F);
                CHECK(std::fabs(value - moved) <= range.resolution / 2);
            }
        }
    }
}

TEST_CASE("the mouse travels in signed 16-bit distances") {
    CHECK(DragDistance(5, 8) == -3);
    CHECK(DragDistance(-32768, 32767) == 1);
    CHECK(DragDistance(40000, 0) == -25536);
}

TEST_CASE("keys step the knob") {
    const KnobRange range{-20, 80, 0.5F};
    CHECK(StepKnob(10.0F, KnobKey::PageUp, range) == 15.0F);
    CHECK(StepKnob(10.0F, KnobKey::PageDown, range) == 5.0F);
    CHECK(StepKnob(10.0F, KnobKey::End, range) == -20.0F);
    CHECK(StepKnob(10.0F, KnobKey::Home, range) == 80.0F);
    CHECK(StepKnob(10.0F, KnobKey::Left, range) == 10.5F);
    CHECK(StepKnob(10.0F, KnobKey::Right, range) == 9.5F);
    const KnobRange continuous{-20, 80, 0.0F};
    for (const KnobKey key : {KnobKey::PageUp, KnobKey::PageDown, KnobKey::Left, KnobKey::Right})
        CHECK(!StepKnob(10.0F, key, continuous));
    CHECK(StepKnob(10.0F, KnobKey::Home, continuous) == 80.0F);
    CHECK(StepKnob(10.0F, KnobKey::End, continuous) == -20.0F);
}

TEST_CASE("the dot goes from lower left at the minimum over the top to lower right at the maximum") {
    struct Row {
        float value;
        KnobRange range;
        DotRectangle dot;
    };
    const Row rows[] = {
        {100.0F, {0, 100, 0.5F}, {31, 31, 36, 36}},
        {0.0F, {0, 100, 0.5F}, {11, 31, 16, 36}},
        {50.0F, {0, 100, 0.5F}, {21, 7, 26, 12}},
        {49.5F, {0, 100, 0.5F}, {21, 7, 26, 12}},
        // Of a negative minimum, which is not where 0 is.
        {-5.0F, {-5, 5, 0.5F}, {11, 31, 16, 36}},
        {0.0F, {-5, 5, 0.5F}, {21, 7, 26, 12}},
        {-0.5F, {-5, 5, 0.5F}, {21, 7, 26, 12}},
        {5.0F, {-5, 5, 0.5F}, {31, 31, 36, 36}},
        {7.0F, {7, 7, 0.5F}, {31, 31, 36, 36}},
        {0.0F, {100, 0, 0.5F}, {31, 31, 36, 36}},
    };
    for (const Row& row : rows) {
        CAPTURE(row.value);
        const DotRectangle dot = KnobDot(row.value, row.range);
        CHECK(dot.left == row.dot.left);
        CHECK(dot.top == row.dot.top);
        CHECK(dot.right == row.dot.right);
        CHECK(dot.bottom == row.dot.bottom);
    }
    constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();
    for (const float value : {-1e38F, 1e38F, std::numeric_limits<float>::infinity(), std::nanf("")}) {
        const DotRectangle dot = KnobDot(value, {lowest, highest, 0.5F});
        CHECK(dot.left >= 7);
        CHECK(dot.bottom <= 40);
    }
}
