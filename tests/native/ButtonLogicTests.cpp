#include "logic/ButtonLogic.h"
#include "tests/native/Tables.h"

using namespace logic;

TEST_CASE("a held button steps by the number of periods times the acceleration") {
    const Row<std::int32_t, std::uint32_t, std::int32_t, float> rows[] = {
        {{99U, 100, 1.0F}, 0},       {{100U, 100, 1.0F}, 1}, {{299U, 100, 1.0F}, 2},
        {{350U, 100, 1.0F}, 3},      {{100U, 100, 0.5F}, 1}, // 0.5 + 0.5
        {{300U, 100, 0.5F}, 2},      {{500U, 100, 0.7F}, 4}, {{1000U, 100, 10.0F}, 100},
        {{1000U, 0, 1.0F}, 0},       {{1000U, -5, 1.0F}, 0}, {{0xFFFFFFFFU, 1, 10.0F}, highest},
        {{1000U, 1, notANumber}, 0}, {{1000U, 1, -1.0F}, 0},
    };
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
        {{0, Decrement, lowest}, highest},
    };
    CheckRows(StepValue, rows);
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
    const Row<std::string, const char*> rows[] = {
        {"Really?\\nAll\\tof it?", "Really?\nAll\tof it?"},
        {"\\n\\n", "\n\n"},
        {"C:\\temp\\new", "C:\temp\new"},
        {"\\\\n", "\\\n"}, // every pair, whatever stands in front of it
        {"\\N \\x \\", "\\N \\x \\"},
        {"", ""},
    };
    CheckRows(QuestionText, rows);
}

TEST_CASE("placeholders are replaced once") {
    const Placeholder placeholders[] = {{'l', "50%n"}, {'c', "A;B"}, {'n', "Strip1*Mute"}};
    const auto expand = [&](const char* text) { return ExpandTemplate(text, placeholders); };
    const Row<std::string, const char*> rows[] = {
        {"%n*caption=%l", "Strip1*Mute*caption=50%n"},
        {"template=X \"%n - \" %c", "template=X \"Strip1*Mute - \" A;B"},
        {"%%n 100% %d %", "%Strip1*Mute 100% %d %"},
        {"", ""},
    };
    CheckRows(expand, rows);
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
