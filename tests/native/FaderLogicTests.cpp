#include "logic/FaderLogic.h"
#include "logic/FloatFormat.h"
#include "logic/Shading.h"

#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <stdexcept>

#include <doctest/doctest.h>

using namespace logic;

namespace {

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float infinity = std::numeric_limits<float>::infinity();

std::int32_t Position(const FaderKnob& knob) {
    return knob.Shape().IsVertical() ? knob.Top() : knob.Left();
}

FaderPoint OnTravel(const FaderShape& shape, std::int32_t along) {
    return shape.IsVertical() ? FaderPoint{0, along} : FaderPoint{along, 0};
}

} // namespace

TEST_CASE("a fader value goes to the nearest step, halves away from zero, and then into the range") {
    struct Row {
        float value;
        FaderRange range;
        float limited;
        bool outside;
    };
    const Row rows[] = {
        {-3.26F, {-80, 0, 0.5F}, -3.5F, false},   {3.24F, {-80, 20, 0.5F}, 3.0F, false},
        {3.25F, {-80, 20, 0.5F}, 3.5F, false},    {10.0F, {-80, 0, 0.0F}, 0.0F, true},
        {-80.0F, {-80, 0, 0.0F}, -80.0F, false},  {-80.1F, {-80, 0, 0.0F}, -80.0F, true},
        {-80.1F, {-80, 0, 0.5F}, -80.0F, false},  {-75.0F, {-80, 0, 30.0F}, -80.0F, true},
        {1.2345F, {0, 10, 0.0F}, 1.2345F, false}, {5.0F, {10, 0, 0.0F}, 10.0F, true},
        {5.0F, {7, 7, 0.5F}, 7.0F, true},         {notANumber, {3, 9, 1.0F}, 3.0F, true},
        {infinity, {3, 9, 1.0F}, 9.0F, true},
    };
    for (const Row& row : rows) {
        CAPTURE(row.value);
        const LimitedValue limited = LimitFader(row.value, row.range);
        CHECK(limited.value == row.limited);
        CHECK(limited.outside == row.outside);
    }
    CHECK(LimitFaderInteger(3, {0, 10, 0.5F}) == 3);
    CHECK(LimitFaderInteger(3, {0, 10, 2.0F}) == 4);
    CHECK(LimitFaderInteger(4, {0, 10, 1.5F}) == 4); // 4.5, cut off
    CHECK(LimitFaderInteger(-4, {-10, 10, 1.5F}) == -4);
    CHECK(LimitFaderInteger(12, {0, 10, 0.0F}) == 10);
    CHECK(LimitFaderInteger(16777217, {0, std::numeric_limits<std::int32_t>::max(), 0.0F}) == 16777217);
}

TEST_CASE("keys step the fader") {
    const FaderRange range{-20, 80, 0.5F};
    CHECK(StepFader(10.0F, FaderKey::PageUp, range) == 15.0F);
    CHECK(StepFader(10.0F, FaderKey::PageDown, range) == 5.0F);
    CHECK(StepFader(10.0F, FaderKey::End, range) == -20.0F);
    CHECK(StepFader(10.0F, FaderKey::Home, range) == 80.0F);
    CHECK(StepFader(10.0F, FaderKey::Down, range) == 9.5F);
    CHECK(StepFader(10.0F, FaderKey::Left, range) == 9.5F);
    CHECK(StepFader(10.0F, FaderKey::Up, range) == 10.5F);
    CHECK(StepFader(10.0F, FaderKey::Right, range) == 10.5F);
    const FaderRange continuous{-20, 80, 0.0F};
    for (const FaderKey key : {FaderKey::PageUp, FaderKey::PageDown, FaderKey::Down, FaderKey::Up})
        CHECK(!StepFader(10.0F, key, continuous));
    CHECK(StepFader(10.0F, FaderKey::Home, continuous) == 80.0F);
    CHECK(StepFader(10.0F, FaderKey::End, continuous) == -20.0F);
}

TEST_CASE("the knob lies at its value, the maximum at the top or the right") {
    struct Row {
        float value;
        FaderRange range;
        FaderShape shape;
        std::int32_t position;
    };
    const FaderShape vertical{20, 200, 22};
    const FaderShape horizontal{200, 14, 9};
    const Row rows[] = {
        {-80.0F, {-80, 0, 0.0F}, vertical, 178},  {0.0F, {-80, 0, 0.0F}, vertical, 0},
        {-40.0F, {-80, 0, 0.0F}, vertical, 89},   {-80.0F, {-80, 0, 0.0F}, {22, 22, 22}, 0},
        {-50.0F, {-50, 50, 0.0F}, horizontal, 0}, {50.0F, {-50, 50, 0.0F}, horizontal, 192},
        {0.0F, {-50, 50, 0.0F}, horizontal, 96},  {60.0F, {-50, 50, 0.0F}, horizontal, 192},
        {-90.0F, {-80, 0, 0.0F}, vertical, 178},  {-40.0F, {0, -80, 0.0F}, vertical, 89},
        {5.0F, {7, 7, 0.0F}, vertical, 178},      {9.0F, {7, 7, 0.0F}, vertical, 178},
        {5.0F, {7, 7, 0.0F}, horizontal, 0},      {0.0F, {-80, 0, 0.0F}, {10, 12, 22}, 0},
        {50.0F, {-50, 50, 0.0F}, {8, 4, 22}, 0},
    };
    for (const Row& row : rows) {
        CAPTURE(row.value);
        CAPTURE(row.shape.width);
        FaderKnob knob;
        knob.Place(row.value, row.range, row.shape);
        CHECK(Position(knob) == row.position);
    }
    FaderKnob knob;
    CHECK(knob.Place(-40.0F, {-80, 0, 0.0F}, vertical));
    CHECK(!knob.Place(-40.1F, {-80, 0, 0.0F}, vertical)); // less than a pixel
    CHECK(knob.Place(0.0F, {-50, 50, 0.0F}, horizontal));
    CHECK(knob.Left() == 96);
    CHECK(knob.Top() == 89); // each layout has its own
}

TEST_CASE("only the knob itself can be held") {
    FaderKnob knob;
    knob.Place(-40.0F, {-80, 0, 0.0F}, {20, 200, 22});
    for (const FaderPoint on : {FaderPoint{0, 89}, FaderPoint{19, 110}})
        CHECK(knob.Hold(on));
    for (const FaderPoint beside :
         {FaderPoint{20, 100}, FaderPoint{-1, 100}, FaderPoint{10, 88}, FaderPoint{10, 111}})
        CHECK(!knob.Hold(beside));
    knob.Place(0.0F, {-50, 50, 0.0F}, {200, 14, 9});
    for (const FaderPoint on : {FaderPoint{96, 0}, FaderPoint{104, 13}})
        CHECK(knob.Hold(on));
    for (const FaderPoint beside :
         {FaderPoint{105, 5}, FaderPoint{95, 5}, FaderPoint{100, 14}, FaderPoint{100, -1}})
        CHECK(!knob.Hold(beside));
}

TEST_CASE("a held knob follows the pointer, stops at the ends and holds the pointer there") {
    struct Row {
        std::int32_t top; // where the knob lies and is held 10 below
        FaderPoint pointer;
        std::int32_t movedTo;
        FaderPoint kept;
    };
    const Row rows[] = {
        {100, {10, 120}, 110, {10, 120}}, {100, {10, 95}, 85, {10, 95}},    {170, {10, 189}, 179, {10, 189}},
        {170, {10, 200}, 179, {10, 189}}, {5, {10, 5}, 0, {10, 10}},        {5, {10, -30}, 0, {10, 10}},
        {100, {-7, 111}, 101, {0, 111}},  {100, {50, 111}, 101, {20, 111}},
    };
    const FaderRange range{0, 178, 0.0F}; // one pixel a unit
    for (const Row& row : rows) {
        CAPTURE(row.pointer.y);
        FaderKnob knob;
        knob.Place(static_cast<float>(178 - row.top), range, {20, 200, 22});
        REQUIRE(knob.Hold({10, row.top + 10}));
        CHECK(!knob.Drag({11, row.top + 10})); // across the travel it does not move
        const auto kept = knob.Drag(row.pointer);
        REQUIRE(kept.has_value());
        CHECK(knob.Top() == row.movedTo);
        CHECK(kept->x == row.kept.x);
        CHECK(kept->y == row.kept.y);
        CHECK(!knob.Drag(*kept));
    }
    for (const FaderShape& tooShort : {FaderShape{5, 10, 22}, FaderShape{5, 21, 22}}) {
        FaderKnob knob;
        knob.Place(0.0F, range, tooShort);
        REQUIRE(knob.Hold({2, 5}));
        CHECK(!knob.Drag({2, 9}));
        CHECK(knob.Value(range) == 0.0F);
    }
}

TEST_CASE("a drag from end to end gives the whole range in both layouts") {
    const FaderShape vertical{20, 200, 22};
    const FaderShape horizontal{200, 14, 9};
    const auto dragged = [](const FaderShape& shape, const FaderRange& range, std::int32_t distance) {
        FaderKnob knob;
        knob.Place(static_cast<float>(shape.IsVertical() ? range.maximum : range.minimum), range, shape);
        const std::int32_t start = Position(knob);
        REQUIRE(knob.Hold(OnTravel(shape, start)));
        knob.Drag(OnTravel(shape, start + distance));
        return knob.Value(range);
    };
    CHECK(dragged(vertical, {-80, 0, 0.0F}, 179) == -80.0F);
    CHECK(dragged(vertical, {-80, 0, 0.0F}, 0) == 0.0F);
    CHECK(dragged(vertical, {-80, 0, 1.0F}, 45) == -20.0F); // from -20.11
    CHECK(dragged(vertical, {-80, 0, 30.0F}, 300) == -90.0F);
    CHECK(dragged(vertical, {7, 7, 0.0F}, -50) == 7.0F);
    CHECK(dragged(horizontal, {-50, 50, 0.0F}, 0) == -50.0F);
    CHECK(dragged(horizontal, {-50, 50, 0.0F}, 96) == 0.0F);
    CHECK(dragged(horizontal, {-50, 50, 0.0F}, 192) == 50.0F);

    std::mt19937 random(7);
    for (int round = 0; round < 500; ++round) {
        const auto pick = [&random](int count) {
            return static_cast<std::int32_t>(random() % static_cast<unsigned>(count));
        };
        const FaderShape shape{1 + pick(300), 1 + pick(300), 1 + pick(60)};
        const std::int32_t minimum = pick(200) - 100;
        const FaderRange range{minimum, minimum + pick(150), 0.0F};
        FaderKnob knob;
        knob.Place(static_cast<float>(range.maximum), range, shape);
        REQUIRE(knob.Hold(OnTravel(shape, Position(knob))));
        for (int move = 0; move < 20; ++move) {
            knob.Drag({pick(1000) - 500, pick(1000) - 500});
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

TEST_CASE("offsets are written with a double comma in between, as many as a value has room for") {
    const std::vector<OffsetRecord> records{{1, 4, 0}, {2, 5, 0}, {-3.5F, 6, 0}};
    CHECK(OffsetsText(records, &OffsetRecord::offset) == "1,,2,,-3.5,");
    CHECK(OffsetsText(records, &OffsetRecord::remote) == "4,,5,,6,");
    CHECK(OffsetsText({}, &OffsetRecord::offset) == "");
    std::vector<OffsetRecord> many;
    for (std::size_t i = 0; i < maximumOffsets; ++i)
        AppendOffset(many, {-std::numeric_limits<float>::min(), 0, 0});
    const std::string longest = OffsetsText(many, &OffsetRecord::offset);
    CHECK(longest.size() <= maximumValue);
    CHECK(longest.size() + longestFloatText + 2 > maximumValue);
    CHECK_THROWS_WITH_AS(AppendOffset(many, {}), "list<T> too long", std::length_error);
}

TEST_CASE("a format for the value has one conversion for a floating-point number and nothing else") {
    CHECK(FormatFloatAs("%.1f dB", -3.25F) == "-3.2 dB");
    CHECK(FormatFloatAs("%+06.2lf", 1.5F) == "+01.50");
    CHECK(FormatFloatAs("%g%%", 12.0F) == "12%");
    CHECK(FormatFloatAs("%%%%%E", 0.5F) == "%%5.000000E-01");
    CHECK(FormatFloatAs("%999.2f", 1.0F).size() == 999);
    for (const char* format : {"", "dB", "%", "%%", "%d", "%s", "%f %f", "%f%n", "%*f", "%.*f", "%Lf", "%hf",
                               "%llf", "%1000f", "%.1000f", "100%", "%f%", "%2$f"}) {
        CAPTURE(format);
        CHECK(!IsFloatFormat(format));
        CHECK(FormatFloatAs(format, 1.0F).empty());
    }
    // Whatever is accepted must be safe to print; the sanitizers watch.
    std::mt19937 random(3);
    const std::string alphabet = "%%%%.0159 +-#lLhfgeEdsn*$x";
    int accepted = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string format;
        for (unsigned length = random() % 12; length > 0; --length)
            format += alphabet[random() % alphabet.size()];
        if (IsFloatFormat(format)) {
            ++accepted;
            CHECK(!FormatFloatAs(format, -1.5F).empty());
        }
    }
    CHECK(accepted > 100);
}

TEST_CASE("a shaded bar is brightest in the middle") {
    const int greens[] = {144, 150, 157, 162, 167, 172, 175, 178, 181, 182, 183};
    CHECK(ShadedGreen(144, 22, 0) == 144);
    CHECK(ShadedGreen(144, 22, 11) == 184);
    CHECK(ShadedGreen(184, 22, 11) == 224);
    for (int line = 1; line < 11; ++line) {
        CHECK(ShadedGreen(144, 22, line) == greens[line]);
        CHECK(ShadedGreen(144, 22, 22 - line) == greens[line]); // mirrored around line 11
    }
    CHECK(ShadedGreen(144, 23, 22) == 144);
    CHECK(ShadedGreen(144, 1, 0) == 184);
    CHECK(ShadedGreen(250, 22, 11) == 34); // wraps around
}
