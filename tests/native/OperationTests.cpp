// Knobs and buttons under the mouse and the keys.
#include "logic/controls/ButtonLogic.h"
#include "logic/controls/ContactTimes.h"
#include "logic/controls/KnobLogic.h"
#include "logic/controls/RockerPositions.h"
#include "logic/drawing/BesidePlace.h"
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
    // On larger faces it has the same way about the middle, and as much more room.
    for (const auto& [percent, face, size] : {std::tuple(150, 71, 7), {200, 94, 10}}) {
        const auto [left, above, right, below] = KnobDot(0.0F, {-5, 5, 0.5F}, percent);
        CHECK(left + right == face);
        CHECK(right - left == size);
        CHECK(above + below == face - 28 * percent / 100);
    }
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

TEST_CASE("a contact opens after its minimum when it is let go, else after its maximum") {
    using Due = std::optional<std::uint32_t>;
    constexpr std::uint32_t start = 0xFFFFFFF0U; // the ticks wrap
    const auto dueIn = [](std::int32_t minimum, std::int32_t maximum, bool isLetGo, std::uint32_t passed) {
        ContactTimes times;
        times.minimum = minimum;
        times.maximum = maximum;
        times.AskToOpen(); // before it is closed
        CHECK_FALSE(times.DueIn(start).has_value());
        times.Close(start);
        if (isLetGo) {
            times.AskToOpen();
        }
        CHECK(times.IsDue(start + passed) == (times.DueIn(start + passed) == Due(0)));
        return times.DueIn(start + passed);
    };
    const Row<Due, std::int32_t, std::int32_t, bool, std::uint32_t> rows[] = {
        {{0, 0, false, 5}, {}},
        {{0, 0, true, 0}, 0},
        {{50, 0, true, 20}, 30},
        {{50, 0, true, 50}, 0},
        {{50, 0, false, 90}, {}},
        {{0, 70, false, 20}, 50},
        {{0, 70, true, 20}, 0},
        {{50, 70, true, 20}, 30},
        {{90, 70, false, 20}, 70},
        {{90, 70, false, 100}, 0},
        {{0, highest, false, 1}, highest - 1},
        {{-5, -7, true, 0}, 0}};
    CheckRows(dueIn, rows);
}

TEST_CASE("the positions of a rocker") {
    CheckRefused(RockerPositions::Parse, "", "1", "1,1", "0,1,0", "1,2,3,4", "a,b", "0,", "0,1.5");
    CheckTaken(RockerPositions::Parse, "5,-5", " 1 , 2 ", "-2147483648,0,2147483647");
    CHECK(RockerPositions::Parse("-1, 0,1")->Text() == "-1,0,1");
    // From a number: one up, one down, the next one.
    const Row<std::vector<int>, const char*, std::int32_t> rows[] = {
        {{"0,1", 0}, {1, 0, 1}},     {{"0,1", 1}, {1, 0, 0}},    {{"0,1", 7}, {1, 0, 1}},
        {{"-1,0,1", -1}, {1, 0, 1}}, {{"-1,0,1", 0}, {2, 0, 2}}, {{"-1,0,1", 1}, {2, 1, 0}},
        {{"-1,0,1", 7}, {2, 0, 2}}};
    const auto moves = [](const char* text, std::int32_t number) {
        const auto positions = RockerPositions::Parse(text);
        return std::vector<int>{positions->Step(number, 1), positions->Step(number, -1),
                                positions->Next(number)};
    };
    CheckRows(moves, rows);
    CHECK(RockerPositions().Rest() == 0);
    CHECK(RockerPositions::Parse("4,5,6")->Rest() == 1);
}

TEST_CASE("a window stands beside another one where the screen has room") {
    constexpr ScreenArea screen{0, 0, 800, 600};
    const Row<ScreenPlace, ScreenArea, int, int, ScreenArea> rows[] = {
        {{{100, 100, 150, 120}, 300, 100, screen}, {158, 100}},
        {{{100, 560, 150, 580}, 300, 100, screen}, {158, 500}}, // not over the lower edge
        {{{600, 100, 650, 120}, 300, 100, screen}, {292, 100}}, // on the left
        {{{300, 100, 600, 120}, 300, 100, screen}, {300, 128}}, // below
        {{{300, 500, 600, 560}, 300, 100, screen}, {300, 392}}, // above
        {{{0, 0, 800, 600}, 300, 100, screen}, {0, 0}},         // over it
        {{{900, -50, 950, -20}, 300, 100, screen}, {500, 0}},
        {{{-90, 700, -50, 720}, 900, 700, {-100, 10, 700, 500}}, {-100, 10}}, // larger than the screen
    };
    CheckRows(PlaceBeside, rows);
}
