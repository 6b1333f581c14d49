#include "logic/controls/FaderLogic.h"
#include "logic/text/FloatFormat.h"
#include "tests/native/Tables.h"

using namespace logic;

namespace {

const FaderShape vertical{20, 200, 22};
const FaderShape horizontal{200, 14, 9};

std::int32_t Position(const FaderKnob& knob) {
    return knob.Shape().IsVertical() ? knob.Top() : knob.Left();
}

FaderPoint OnTravel(const FaderShape& shape, std::int32_t along) {
    return shape.IsVertical() ? FaderPoint{0, along} : FaderPoint{along, 0};
}

} // namespace

TEST_CASE("a fader value goes to the nearest step, halves away from zero, and then into the range") {
    using Limited = std::tuple<float, bool>; // the value, and whether it was outside
    const auto limit = [](float value, const FaderRange& range) {
        const LimitedValue limited = LimitFader(value, range);
        return Limited(limited.value, limited.outside);
    };
    const Row<Limited, float, FaderRange> rows[] = {
        {{-3.26F, {-80, 0, 0.5F}}, {-3.5F, false}},   {{3.24F, {-80, 20, 0.5F}}, {3.0F, false}},
        {{3.25F, {-80, 20, 0.5F}}, {3.5F, false}},    {{10.0F, {-80, 0, 0.0F}}, {0.0F, true}},
        {{-80.0F, {-80, 0, 0.0F}}, {-80.0F, false}},  {{-80.1F, {-80, 0, 0.0F}}, {-80.0F, true}},
        {{-80.1F, {-80, 0, 0.5F}}, {-80.0F, false}},  {{-75.0F, {-80, 0, 30.0F}}, {-80.0F, true}},
        {{1.2345F, {0, 10, 0.0F}}, {1.2345F, false}}, {{5.0F, {10, 0, 0.0F}}, {10.0F, true}},
        {{5.0F, {7, 7, 0.5F}}, {7.0F, true}},         {{notANumber, {3, 9, 1.0F}}, {3.0F, true}},
        {{infinity, {3, 9, 1.0F}}, {9.0F, true}}};
    CheckRows(limit, rows);
    const Row<std::int32_t, std::int32_t, FaderRange> rows2[] = {
        {{3, {0, 10, 0.5F}}, 3},     {{3, {0, 10, 2.0F}}, 4},   {{4, {0, 10, 1.5F}}, 4}, // 4.5, cut off
        {{-4, {-10, 10, 1.5F}}, -4}, {{12, {0, 10, 0.0F}}, 10}, {{16777217, {0, highest, 0.0F}}, 16777217}};
    CheckRows(LimitFaderInteger, rows2);
}

TEST_CASE("the knob lies at its value, the maximum at the top or the right") {
    const auto place = [](float value, const FaderRange& range, const FaderShape& shape) {
        FaderKnob knob;
        knob.Place(value, range, shape);
        return Position(knob);
    };
    const Row<std::int32_t, float, FaderRange, FaderShape> rows[] = {
        {{-80.0F, {-80, 0, 0}, vertical}, 178},   {{0.0F, {-80, 0, 0}, vertical}, 0},
        {{-40.0F, {-80, 0, 0}, vertical}, 89},    {{-90.0F, {-80, 0, 0}, vertical}, 178},
        {{-40.0F, {0, -80, 0}, vertical}, 89},    {{5.0F, {7, 7, 0}, vertical}, 178},
        {{9.0F, {7, 7, 0}, vertical}, 178},       {{-50.0F, {-50, 50, 0}, horizontal}, 0},
        {{50.0F, {-50, 50, 0}, horizontal}, 192}, {{0.0F, {-50, 50, 0}, horizontal}, 96},
        {{60.0F, {-50, 50, 0}, horizontal}, 192}, {{5.0F, {7, 7, 0}, horizontal}, 0},
        {{-80.0F, {-80, 0, 0}, {22, 22, 22}}, 0}, {{0.0F, {-80, 0, 0}, {10, 12, 22}}, 0},
        {{50.0F, {-50, 50, 0}, {8, 4, 22}}, 0}};
    CheckRows(place, rows);
    FaderKnob knob;
    CHECK(knob.Place(-40.0F, {-80, 0, 0.0F}, vertical));
    CHECK(!knob.Place(-40.1F, {-80, 0, 0.0F}, vertical)); // less than a pixel
    CHECK(knob.Place(0.0F, {-50, 50, 0.0F}, horizontal));
    CHECK(knob.Left() == 96);
    CHECK(knob.Top() == 89); // each layout has its own
}

TEST_CASE("only the knob itself can be held") {
    const auto isHeld = [](const FaderShape& shape, std::int32_t x, std::int32_t y) {
        FaderKnob knob;
        knob.Place(0.0F, {-50, 50, 0.0F}, shape); // at (0, 89) or (96, 0)
        return knob.Hold({x, y});
    };
    const Row<bool, FaderShape, std::int32_t, std::int32_t> rows[] = {
        {{vertical, 0, 89}, true},    {{vertical, 19, 110}, true},    {{vertical, 20, 100}, false},
        {{vertical, -1, 100}, false}, {{vertical, 10, 88}, false},    {{vertical, 10, 111}, false},
        {{horizontal, 96, 0}, true},  {{horizontal, 104, 13}, true},  {{horizontal, 105, 5}, false},
        {{horizontal, 95, 5}, false}, {{horizontal, 100, 14}, false}, {{horizontal, 100, -1}, false}};
    CheckRows(isHeld, rows);
}

TEST_CASE("a held knob follows the pointer, stops at the ends and holds the pointer there") {
    const FaderRange range{0, 178, 0.0F};                                 // one pixel a unit
    using Dragged = std::tuple<std::int32_t, std::int32_t, std::int32_t>; // top, where the pointer is kept
    const auto drag = [&range](std::int32_t top, FaderPoint pointer) {
        FaderKnob knob;
        knob.Place(static_cast<float>(178 - top), range, vertical);
        REQUIRE(knob.Hold({10, top + 10}));
        CHECK(!knob.Drag({11, top + 10})); // across the travel it does not move
        const FaderPoint kept = knob.Drag(pointer).value();
        CHECK(!knob.Drag(kept));
        return Dragged(knob.Top(), kept.x, kept.y);
    };
    const Row<Dragged, std::int32_t, FaderPoint> rows[] = {
        {{100, {10, 120}}, {110, 10, 120}}, {{100, {10, 95}}, {85, 10, 95}},
        {{170, {10, 189}}, {179, 10, 189}}, {{170, {10, 200}}, {179, 10, 189}},
        {{5, {10, 5}}, {0, 10, 10}},        {{5, {10, -30}}, {0, 10, 10}},
        {{100, {-7, 111}}, {101, 0, 111}},  {{100, {50, 111}}, {101, 20, 111}}};
    CheckRows(drag, rows);
    for (const FaderShape& tooShort : {FaderShape{5, 10, 22}, FaderShape{5, 21, 22}}) {
        FaderKnob knob;
        knob.Place(0.0F, range, tooShort);
        REQUIRE(knob.Hold({2, 5}));
        CHECK(!knob.Drag({2, 9}));
        CHECK(knob.Value(range) == 0.0F);
    }
}

TEST_CASE("a drag from end to end gives the whole range in both layouts") {
    const auto dragged = [](const FaderShape& shape, const FaderRange& range, std::int32_t distance) {
        FaderKnob knob;
        knob.Place(static_cast<float>(shape.IsVertical() ? range.maximum : range.minimum), range, shape);
        const std::int32_t start = Position(knob);
        REQUIRE(knob.Hold(OnTravel(shape, start)));
        knob.Drag(OnTravel(shape, start + distance));
        return knob.Value(range);
    };
    const Row<float, FaderShape, FaderRange, std::int32_t> rows[] = {
        {{vertical, {-80, 0, 0.0F}, 179}, -80.0F},  {{vertical, {-80, 0, 0.0F}, 0}, 0.0F},
        {{vertical, {-80, 0, 1.0F}, 45}, -20.0F}, // from -20.11
        {{vertical, {-80, 0, 30.0F}, 300}, -90.0F}, {{vertical, {7, 7, 0.0F}, -50}, 7.0F},
        {{horizontal, {-50, 50, 0.0F}, 0}, -50.0F}, {{horizontal, {-50, 50, 0.0F}, 96}, 0.0F},
        {{horizontal, {-50, 50, 0.0F}, 192}, 50.0F}};
    CheckRows(dragged, rows);
    std::mt19937 random(7);
    for (int round = 0; round < 500; ++round) {
        const FaderShape shape{Any(random, 1, 300), Any(random, 1, 300), Any(random, 1, 60)};
        const std::int32_t minimum = Any(random, -100, 99);
        const FaderRange range{minimum, minimum + Any(random, 0, 149), 0.0F};
        FaderKnob knob;
        knob.Place(static_cast<float>(range.maximum), range, shape);
        REQUIRE(knob.Hold(OnTravel(shape, Position(knob))));
        for (int move = 0; move < 20; ++move) {
            knob.Drag({Any(random, -500, 499), Any(random, -500, 499)});
            const float value = knob.Value(range);
            CHECK(value >= static_cast<float>(range.minimum));
            CHECK(value <= static_cast<float>(range.maximum));
            // Where the knob lies when it is let go, but for the pixel that the vertical drag goes further.
            FaderKnob letGo;
            letGo.Place(value, range, shape);
            CHECK((range.minimum == range.maximum || std::abs(Position(letGo) - Position(knob)) <= 1));
        }
    }
}

TEST_CASE("a format for the value has one conversion for a floating-point number and nothing else") {
    const Row<std::string, const char*, float> rows[] = {{{"%.1f dB", -3.25F}, "-3.2 dB"},
                                                         {{"%+06.2lf", 1.5F}, "+01.50"},
                                                         {{"%g%%", 12.0F}, "12%"},
                                                         {{"%%%%%E", 0.5F}, "%%5.000000E-01"}};
    CheckRows(FormatFloatAs, rows);
    CHECK(FormatFloatAs("%999.2f", 1.0F).size() == 999);
    const auto isTaken = [](const std::string& format) {
        return IsFloatFormat(format) || !FormatFloatAs(format, 1.0F).empty();
    };
    CheckRefused(isTaken, "", "dB", "%", "%%", "%d", "%s", "%f %f", "%f%n", "%*f", "%.*f", "%Lf", "%hf",
                 "%llf", "%1000f", "%.1000f", "100%", "%f%", "%2$f");
}
