// Where the marks of a scale lie, and which of them have numbers.
#include "logic/controls/FaderLogic.h"
#include "logic/controls/MeterLogic.h"
#include "logic/controls/RangeLogic.h"
#include "logic/controls/ReverseMeterLogic.h"
#include "logic/controls/ScaleLogic.h"
#include "tests/native/Tables.h"

#include <cstdlib>
#include <set>

using namespace logic;

namespace {

// The values with numbers, highest first, and the small marks as dots between them.
std::string Numbers(TravelRange range, std::int32_t length, const ScaleGrid& grid, std::int32_t size = 12) {
    const NumberRoom room{length, 1, [size](float) { return size; }};
    const auto marks = ScaleMarks(OwnTravel(range, length, 8, false), 0, grid, room);
    std::string text;
    for (auto mark = marks.rbegin(); mark != marks.rend(); ++mark) {
        text += mark->hasNumber ? FormatFloat(mark->value) + " " : (mark->isMain ? "- " : ". ");
    }
    return text;
}

} // namespace

TEST_CASE("the steps of a scale are nice ones") {
    constexpr Law log = Law::Logarithmic;
    const ScaleGrid plain;
    const Row<std::string, TravelRange, std::int32_t, ScaleGrid, std::int32_t> rows[] = {
        {{{-80, 0}, 200, plain, 12}, "0 -10 -20 -30 -40 -50 -60 -70 -80 "},
        {{{0, -80}, 200, plain, 12}, "0 -10 -20 -30 -40 -50 -60 -70 -80 "},
        {{{-80, 18}, 100, plain, 12}, "0 -20 -40 -60 -80 "},
        {{{-83, 18}, 100, {0, 1, {}}, 12}, ". 0 . -20 . -40 . -60 . -80 "},
        {{{0, 100}, 40, plain, 12}, "100 0 "},
        {{{0, 100}, 24, plain, 12}, "0 "},
        {{{0, 1}, 200, plain, 12}, "1 0.9 0.8 0.7 0.6 0.5 0.4 0.3 0.2 0.1 0 "},
        {{{20, 20000, log}, 300, plain, 12}, "20000 10000 5000 2000 1000 500 200 100 50 20 "},
        {{{20, 20000, log}, 60, plain, 12}, "10000 1000 100 "},
        {{{1, 1000000000, log}, 60, plain, 12}, "1e+09 1e+06 1000 1 "},
        {{{100, 200, log}, 200, plain, 12}, "200 190 180 170 160 150 140 130 120 110 100 "},
        {{{100, 1000, log}, 200, {0, 8, {}}, 90}, "1000 . . . . . . . . 100 "},
        {{{-80, 0}, 200, {25, 0, {}}, 12}, "0 -25 -50 -75 "},
        {{{-80, 0}, 200, {5, 0, {}}, 12}, "0 - -10 - -20 - -30 - -40 - -50 - -60 - -70 - -80 "},
        {{{-80, 0}, 200, {1e-30F, 0, {}}, 12}, "0 -10 -20 -30 -40 -50 -60 -70 -80 "},
        {{{-80, 0}, 200, {0, 9, {}}, 80}, "0 . . . . . . . . . -50 . . . . . . "},
        {{{-80, 0}, 200, {0, 0, {9, -40, 0, -5, -40}}, 12}, "0 - -40 "},
        {{{-80, 0}, 200, {0, 1, {0, -40, -60}}, 12}, "0 . -40 . -60 "},
        {{{-80, 0}, 200, {0, 1, {-90}}, 12}, ""},
        {{{7, 7}, 200, plain, 12}, "7 "},
        {{{102, 104}, 1, plain, 12}, "104 "}};
    CheckRows(Numbers, rows);
}

TEST_CASE("the numbers of a chosen step never touch nor leave the window, and marks are in order") {
    std::mt19937 random(15);
    for (int round = 0; round < 3000; ++round) {
        const auto anyEnd = [&] {
            return static_cast<float>(Any(random, 1, 9) * std::pow(10, Any(random, 0, 8)));
        };
        const float sign = Any(random, 0, 1) == 0 ? -1.0F : 1.0F;
        const TravelRange range{anyEnd(), sign * anyEnd(), static_cast<Law>(Any(random, 0, 1))};
        const std::int32_t length = Any(random, 0, 600);
        const std::int32_t size = Any(random, 0, 60);
        const NumberRoom room{length, 2, [&](float value) { return size + (value < 10 ? 0 : 7); }};
        const ScaleGrid grid{0, Any(random, 0, 9), {}};
        const auto marks = ScaleMarks(OwnTravel(range, length, Any(random, 0, 20), false), 0, grid, room);
        CAPTURE(range.minimum);
        CAPTURE(range.maximum);
        CAPTURE(length);
        std::int32_t next = length + room.gap; // from the bottom up
        bool isInOrder = !marks.empty();
        bool touches = false;
        for (std::size_t i = 0; i < marks.size(); ++i) {
            isInOrder = isInOrder && (i == 0 || marks[i - 1].value < marks[i].value);
            CHECK(marks[i].isMain == marks[i].hasNumber);
            if (marks[i].hasNumber && range.minimum < range.maximum) {
                const auto place = room.PlaceOf(marks[i]);
                touches = touches || place.last + room.gap > next;
                next = place.first;
            }
        }
        CHECK(isInOrder);
        CHECK_FALSE((touches && size + 7 <= length));
    }
}

TEST_CASE("a travel ends on the last pixel that its control draws") {
    for (std::int32_t value = -85; value <= 25; ++value) {
        CAPTURE(value);
        const auto number = static_cast<float>(value);
        for (const FaderShape shape : {FaderShape{30, 200, 22}, {200, 30, 22}, {30, 10, 22}}) {
            FaderKnob knob;
            knob.Place(number, {-80, 18, 0}, shape);
            const std::int32_t begin = shape.IsVertical() ? shape.Way() : 0;
            const Travel travel{
                .range = {-80, 18}, .begin = begin, .length = shape.Way(), .isBackwards = begin > 0};
            CHECK(travel.PlaceOf(number) == (shape.IsVertical() ? knob.Top() : knob.Left()));
        }
        const RangeTrack track{150, 18, -80};
        CHECK(Travel{.range = {18, -80}, .begin = track.Margin(), .length = track.Way()}.PlaceOf(number) ==
              track.PlaceOf(number));
        const auto last = [](std::int32_t lit, std::int32_t length) {
            return std::clamp(lit - 1, 0, length - 1);
        };
        for (const std::int32_t length : {1, 97, 200, 1000}) {
            const Travel meter{.range = {-80, 18},
                               .begin = length,
                               .length = length,
                               .isBackwards = true,
                               .shown = Travel::Shown::CutOffBar,
                               .origin = -80};
            CHECK(meter.PlaceOf(number) == length - 1 - last(FillHeight(value, -80, 18, length), length));
            const Travel reverse{
                .range = {18, -80}, .length = length, .shown = Travel::Shown::Bar, .origin = 18};
            CHECK(reverse.PlaceOf(number) == last(HangingHeight(number, -80, 18, length), length));
        }
        for (const float origin : {-80.0F, 0.0F, 18.0F}) {
            const Travel bar{
                .range = {-80, 18}, .length = 147, .shown = Travel::Shown::Bar, .origin = origin};
            const Span lit = LitSpan(bar.range, origin, number, 147, 0);
            const std::int32_t place = bar.PlaceOf(number);
            CHECK((lit.IsEmpty() || place == (number < origin ? lit.first : lit.last - 1)));
            CHECK((!lit.IsEmpty() || std::abs(place - lit.first) <= 1));
            const Travel segments{
                .range = bar.range, .length = 147, .shown = Travel::Shown::Bar, .origin = -80, .segment = 5};
            const auto runs = DrawnRuns({{{0, 147}, 1}}, LitSpan(bar.range, -80, number, 147, 5), 5);
            CHECK(segments.PlaceOf(number) == (runs.empty() ? 0 : runs.back().span.last - 1));
        }
    }
    for (const Travel::Shown shown : {Travel::Shown::Line, Travel::Shown::Bar, Travel::Shown::CutOffBar}) {
        for (const float odd : {notANumber, infinity, -infinity, largest}) {
            const Travel travel{
                .range = {-8, 8}, .begin = 5, .length = 100, .shown = shown, .origin = odd, .segment = 7};
            const std::int32_t place = travel.PlaceOf(odd);
            CHECK((place >= 5 && place <= 105));
            CHECK(Travel{.range = {3, 3}, .begin = 5, .length = -9, .shown = shown}.PlaceOf(3) <= 5);
        }
    }
}
