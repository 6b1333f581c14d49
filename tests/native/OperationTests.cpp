// Knobs and buttons under the mouse and the keys.
#include "logic/controls/ButtonLogic.h"
#include "logic/controls/KnobLogic.h"
#include "tests/native/Tables.h"

using namespace logic;

TEST_CASE("dragging moves one unit a pixel, stops unrounded at the ends and rounds in between") {
    const Row<float, float, std::int16_t, KnobRange> rows[] = {
        {{9.3F, 1, {0, 100, 0.5F}}, 10.5F},     {{-9.3F, -1, {-100, 100, 0.5F}}, -10.5F},
        {{10.3F, 0, {0, 100, 0.5F}}, 10.3F},    {{95.0F, 10, {0, 100, 7.0F}}, 100.0F},
        {{5.0F, -10, {1, 100, 7.0F}}, 1.0F},    {{1.25F, 3, {0, 100, 0.0F}}, 4.25F},
        {{50.0F, 1, {100, 0, 0.5F}}, 100.0F},   {{50.0F, 1, {7, 7, 0.5F}}, 7.0F},
        {{notANumber, 1, {0, 100, 0.5F}}, 0.0F}};
    CheckRows(DragKnob, rows);
    // The mouse travels in signed 16-bit distances.
    const Row<int, int, int> rows2[] = {{{5, 8}, -3}, {{-32768, 32767}, 1}, {{40000, 0}, -25536}};
    CheckRows(DragDistance, rows2);
}

TEST_CASE("the dot goes from lower left at the minimum over the top to lower right at the maximum") {
    using Box = std::tuple<std::int32_t, std::int32_t, std::int32_t, std::int32_t>;
    const auto dotOf = [](float value, const KnobRange& range) {
        const DotRectangle dot = KnobDot(value, range);
        return Box(dot.left, dot.top, dot.right, dot.bottom);
    };
    const Box lowerLeft(11, 31, 16, 36);
    const Box top(21, 7, 26, 12);
    const Box lowerRight(31, 31, 36, 36);
    // A negative minimum is not where 0 is.
    const Row<Box, float, KnobRange> rows[] = {{{-5.0F, {-5, 5, 0.5F}}, lowerLeft},
                                               {{0.0F, {-5, 5, 0.5F}}, top},
                                               {{5.0F, {-5, 5, 0.5F}}, lowerRight},
                                               {{7.0F, {7, 7, 0.5F}}, lowerRight},
                                               {{0.0F, {100, 0, 0.5F}}, lowerRight}};
    CheckRows(dotOf, rows);
    for (const float value : {-1e38F, 1e38F, infinity, notANumber}) {
        const DotRectangle dot = KnobDot(value, {lowest, highest, 0.5F});
        CHECK(dot.left >= 7);
        CHECK(dot.bottom <= 40);
    }
}

TEST_CASE("a held button steps by the number of periods times the acceleration") {
    const Row<std::int32_t, std::uint32_t, std::int32_t, float> rows[] = {
        {{99U, 100, 1.0F}, 0},       {{100U, 100, 1.0F}, 1}, {{299U, 100, 1.0F}, 2},
        {{350U, 100, 1.0F}, 3},      {{100U, 100, 0.5F}, 1}, // 0.5 + 0.5
        {{300U, 100, 0.5F}, 2},      {{500U, 100, 0.7F}, 4}, {{1000U, 100, 10.0F}, 100},
        {{1000U, 0, 1.0F}, 0},       {{1000U, -5, 1.0F}, 0}, {{0xFFFFFFFFU, 1, 10.0F}, highest},
        {{1000U, 1, notANumber}, 0}, {{1000U, 1, -1.0F}, 0}};
    CheckRows(RepeatSteps, rows);
}

TEST_CASE("steps stop at the ends of 32 bits") {
    using enum PressMode;
    const Row<std::int32_t, std::int32_t, PressMode, std::int32_t> rows[] = {
        {{5, Increment, 3}, 8},
        {{5, Decrement, 30}, -25},
        {{5, Absolute, 3}, 5},
        {{highest - 1, Increment, 3}, highest},
        {{lowest, Decrement, highest}, lowest},
        {{0, Decrement, lowest}, highest}};
    CheckRows(StepValue, rows);
}

TEST_CASE("questions have line feeds and tabs") {
    const Row<std::string, const char*> rows[] = {
        {"Really?\\nAll\\tof it?", "Really?\nAll\tof it?"},
        {"C:\\temp\\new", "C:\temp\new"},
        {"\\\\n", "\\\n"}, // every pair, whatever stands in front of it
        {"\\N \\x \\", "\\N \\x \\"},
    };
    CheckRows(QuestionText, rows);
}
