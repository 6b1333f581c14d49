// What the controls show that take no input: meter, lamp, clock, pictures, and the frames they are drawn
// with.
#include "logic/controls/ClockText.h"
#include "logic/controls/ImageChoice.h"
#include "logic/controls/LedLogic.h"
#include "logic/controls/MeterLogic.h"
#include "logic/controls/ReverseMeterLogic.h"
#include "logic/drawing/ImageFrames.h"
#include "tests/native/Tables.h"

using namespace logic;

namespace {

// No answer is nothing.
std::int32_t Combine(MeterCombination combination, std::int32_t minimum, std::int32_t maximum,
                     const std::vector<std::optional<std::int32_t>>& answers) {
    MeterAnswers round(combination, minimum, maximum);
    for (const auto& answer : answers) {
        if (answer) {
            round.Cell() = *answer;
        }
        round.Take();
    }
    return round.Result();
}

} // namespace

TEST_CASE("answers combine by maximum or average, and a silent target repeats the one before") {
    constexpr auto maximum = MeterCombination::Maximum;
    constexpr auto average = MeterCombination::Average;
    using Answers = std::vector<std::optional<std::int32_t>>;
    const Row<std::int32_t, MeterCombination, std::int32_t, std::int32_t, Answers> rows[] = {
        {{average, 0, 100, {10, 20, {}}}, 16},
        {{average, 0, 100, {{}, 20}}, 10},
        {{average, -80, 0, {-3, -4}}, -3}, // towards zero
        {{average, 0, 100, {highest, highest, highest}}, highest},
        {{average, 0, 100, {lowest, lowest}}, lowest},
        {{maximum, 0, 100, {10, 30, {}, 20}}, 30},
        {{maximum, -20, -80, {-90}}, -80}};
    CheckRows(Combine, rows);
    for (const MeterCombination combination : {maximum, average}) {
        CHECK(Combine(combination, -80, 0, {}) == -80);
        CHECK(Combine(combination, 0, -80, {}) == -80);
        CHECK(Combine(combination, -80, 0, {std::nullopt}) == -80);
    }
}

TEST_CASE("the bar is filled in proportion") {
    const Row<int, int, int, int, int> rows[] = {{{50, 0, 100, 100}, 50}, {{50, 100, 0, 100}, 50},
                                                 {{-1, 0, 100, 100}, 0},  {{101, 0, 100, 80}, 80},
                                                 {{1, 0, 3, 100}, 33},    {{0, 0, 0, 100}, 0},
                                                 {{1, 0, 0, 100}, 100},   {{0, lowest, highest, 100}, 50}};
    CheckRows(FillHeight, rows);
}

TEST_CASE("the bar of a reverse meter hangs from the greater end") {
    const Row<int, float, int, int, int> rows[] = {
        {{-10.0F, -40, 0, 100}, 25},        {{-10.0F, 0, -40, 100}, 25},
        {{-0.3F, -40, 0, 100}, 1}, // to the nearest pixel
        {{6.0F, -40, 0, 100}, 0},           {{-infinity, -40, 0, 100}, 100},
        {{notANumber, -40, 0, 100}, 0},     {{-1.0F, 0, 0, 100}, 0},
        {{0.0F, lowest, highest, 100}, 50}, {{-40.0F, -40, 0, -5}, 0}};
    CheckRows(HangingHeight, rows);
    for (const auto& [combination, result] :
         {std::pair(MeterCombination::Maximum, -1.5F), {MeterCombination::Average, -3.0F}}) {
        LevelAnswers answers(combination);
        answers.Take(notANumber);
        CHECK_FALSE(answers.Result());
        answers.Take(-4.5F);
        answers.Take(infinity);
        answers.Take(-1.5F);
        CHECK(answers.Result() == result);
    }
}

TEST_CASE("reversed thresholds of a lamp are one, and no number leaves it dark") {
    CHECK(IsLit(1, 1, 5, true));
    CHECK_FALSE(IsLit(0.9F, 1, 5, true));
    CHECK_FALSE(IsLit(notANumber, 0, 0, true));
}

TEST_CASE("a value picks a frame") {
    const Row<std::int32_t, float, std::int32_t> rows[] = {
        {{0.0F, 4}, 0},  {{1.9F, 4}, 1},     {{3.0F, 4}, 3},      {{4.0F, 4}, 3}, {{-0.5F, 4}, 0},
        {{-7.0F, 4}, 0}, {{infinity, 4}, 3}, {{-infinity, 4}, 0}, {{5.0F, 0}, 0}};
    CheckRows(FrameOfValue, rows);
}

TEST_CASE("an image has three frames when its name and its size say so") {
    const Row<int, const char*, int, int> rows[] = {{{".\\Controls\\SWITCH_26x16.bmp", 78, 16}, 3},
                                                    {{"SWITCH_26x16.bmp", 52, 16}, 2},
                                                    {{"SWITCH_26x16.bmp", 78, 17}, 2},
                                                    {{"SWITCH_126x16.bmp", 78, 16}, 2},
                                                    {{"SWITCH.bmp", 78, 16}, 2},
                                                    {{"", 0, 0}, 2}};
    CheckRows(ButtonFrameCount, rows);
}

TEST_CASE("a clock names the time in English and German") {
    const CalendarTime time{2025, 3, 3, 1, 9, 5, 7};
    CHECK(ClockText(time, ClockLanguage::English) == "9:05:07\nMonday\n3. March 2025");
    CHECK(ClockText(time, ClockLanguage::German) == "9:05:07\nMontag\n3. M\xE4rz 2025");
    for (const auto& [language, month, text] :
         {std::tuple(ClockLanguage::English, 1, "\nWednesday\n31. January 2024"),
          {ClockLanguage::English, 12, "\nWednesday\n31. December 2024"},
          {ClockLanguage::German, 1, "\nMittwoch\n31. Januar 2024"},
          {ClockLanguage::German, 12, "\nMittwoch\n31. Dezember 2024"}}) {
        CHECK(ClockText({2024, month, 31, 3, 23, 0, 59}, language) == "23:00:59" + std::string(text));
    }
    // What does not exist has no name.
    CHECK(ClockText({2024, 13, 31, 7, 23, 0, 59}, ClockLanguage::English) == "23:00:59\n\n31.  2024");
    CHECK(ClockText({1, lowest, 2, -1, 0, 0, 0}, ClockLanguage::German) == "0:00:00\n\n2.  1");
}

TEST_CASE("German is spoken in every German-speaking country") {
    for (const std::uint16_t german : {0x0407, 0x0807, 0x0C07, 0x1007, 0x1407, 0x0007}) {
        CHECK(ClockLanguageOf(german) == ClockLanguage::German);
    }
    for (const std::uint16_t other : {0x0409, 0x040C, 0x0000, 0x0417, 0x0413}) {
        CHECK(ClockLanguageOf(other) == ClockLanguage::English);
    }
}

TEST_CASE("a number picks a picture, and a click leads to the next one that there is") {
    using Place = std::optional<std::int32_t>;
    constexpr auto place = [](std::int32_t first, std::int32_t count, std::int32_t number, Place substitute) {
        return NumberedImages{first, count}.PlaceOf(number, substitute);
    };
    const Row<Place, std::int32_t, std::int32_t, std::int32_t, Place> places[] = {
        {{0, 3, 2, {}}, 2},
        {{0, 3, 3, {}}, {}},
        {{0, 3, 3, 1}, 1},
        {{0, 3, -1, 3}, {}},
        {{-5, 3, -3, {}}, 2},
        {{0, 0, 0, 0}, {}},
        {{lowest, 3, highest, lowest}, 0},
        {{highest, 3, highest, {}}, 0}};
    CheckRows(place, places);
    constexpr auto next = [](std::int32_t first, std::int32_t count, std::int32_t number, bool isBack,
                             bool wrap) {
        return NumberedImages{first, count}.Next(number, isBack, wrap);
    };
    const Row<Place, std::int32_t, std::int32_t, std::int32_t, bool, bool> steps[] = {
        {{1, 3, 1, false, true}, 2},
        {{1, 3, 3, false, true}, 1},
        {{1, 3, 1, true, true}, 3},
        {{1, 3, 3, false, false}, {}},
        {{1, 3, 2, true, false}, 1},
        {{1, 3, 9, false, true}, 3},
        {{1, 3, lowest, true, true}, 1},
        {{1, 1, 1, false, true}, {}},
        {{1, 0, 0, false, true}, {}},
        {{highest, 3, highest, false, true}, {}},
        {{highest - 1, 3, highest, false, true}, highest - 1},
        {{lowest, 2, lowest, true, true}, lowest + 1}};
    CheckRows(next, steps);
}
