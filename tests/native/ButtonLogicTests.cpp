#include "logic/ButtonLogic.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

#include <doctest/doctest.h>

using namespace logic;

namespace {

constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t highest = std::numeric_limits<std::int32_t>::max();

} // namespace

TEST_CASE("a held button steps by the number of periods times the acceleration") {
    struct Row {
        std::uint32_t held;
        std::int32_t period;
        float acceleration;
        std::int32_t steps;
    };
    const Row rows[] = {
        {99, 100, 1.0F, 0},          {100, 100, 1.0F, 1}, {299, 100, 1.0F, 2},
        {350, 100, 1.0F, 3},         {100, 100, 0.5F, 1}, // 0.5 + 0.5
        {300, 100, 0.5F, 2},         {500, 100, 0.7F, 4}, {1000, 100, 10.0F, 100},
        {1000, 0, 1.0F, 0},          {1000, -5, 1.0F, 0}, {0xFFFFFFFF, 1, 10.0F, highest},
        {1000, 1, std::nanf(""), 0}, {1000, 1, -1.0F, 0},
    };
    for (const Row& row : rows) {
        CAPTURE(row.held);
        CAPTURE(row.acceleration);
        CHECK(RepeatSteps(row.held, row.period, row.acceleration) == row.steps);
    }
}

TEST_CASE("steps stop at the ends of 32 bits") {
    CHECK(StepValue(5, PressMode::Increment, 3) == 8);
    CHECK(StepValue(5, PressMode::Decrement, 30) == -25);
    CHECK(StepValue(5, PressMode::Absolute, 3) == 5);
    CHECK(StepValue(highest - 1, PressMode::Increment, 3) == highest);
    CHECK(StepValue(lowest, PressMode::Decrement, highest) == lowest);
    CHECK(StepValue(0, PressMode::Decrement, lowest) == highest);
}

TEST_CASE("the mode goes by its first letter") {
    for (const PressMode mode : {PressMode::Absolute, PressMode::Increment, PressMode::Decrement})
        CHECK(ParsePressMode(PressModeText(mode)) == mode);
    CHECK(ParsePressMode("i") == PressMode::Increment);
    CHECK(ParsePressMode("down") == PressMode::Decrement);
    for (const char* text : {"", "Increment", " increment", "toggle"})
        CHECK(ParsePressMode(text) == PressMode::Absolute);
}

TEST_CASE("questions have line feeds and tabs") {
    CHECK(QuestionText("Really?\\nAll\\tof it?") == "Really?\nAll\tof it?");
    CHECK(QuestionText("\\n\\n") == "\n\n");
    CHECK(QuestionText("C:\\temp\\new") == "C:\temp\new");
    CHECK(QuestionText("\\\\n") == "\\\n"); // every pair, whatever stands in front of it
    CHECK(QuestionText("\\N \\x \\") == "\\N \\x \\");
    CHECK(QuestionText("") == "");
}

TEST_CASE("placeholders are replaced once") {
    const Placeholder placeholders[] = {{'l', "50%n"}, {'c', "A;B"}, {'n', "Strip1*Mute"}};
    CHECK(ExpandTemplate("%n*caption=%l", placeholders) == "Strip1*Mute*caption=50%n");
    CHECK(ExpandTemplate("template=X \"%n - \" %c", placeholders) == "template=X \"Strip1*Mute - \" A;B");
    CHECK(ExpandTemplate("%%n 100% %d %", placeholders) == "%Strip1*Mute 100% %d %");
    CHECK(ExpandTemplate("%n", {}) == "%n");
    CHECK(ExpandTemplate("", placeholders) == "");
}

TEST_CASE("any text survives") {
    std::mt19937 random(7);
    const std::string letters = "\\nt%lcnX=*";
    const Placeholder placeholders[] = {{'l', "%l%c"}, {'c', ""}};
    for (int round = 0; round < 2000; ++round) {
        std::string text;
        for (unsigned length = random() % 40; length > 0; --length)
            text += letters[random() % letters.size()];
        CHECK(QuestionText(text).size() <= text.size());
        CHECK(ExpandTemplate(text, placeholders).size() <= 2 * text.size());
        CHECK(ExpandTemplate(text, {}) == text);
    }
}
