#include "logic/FaderLogic.h"
#include "logic/FloatFormat.h"
#include "logic/Shading.h"

#include <cmath>
#include <limits>
#include <random>
#include <stdexcept>

#include <doctest/doctest.h>

using namespace logic;

namespace {

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float infinity = std::numeric_limits<float>::infinity();

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
    CHECK(StepFader(10.0F, FaderKey::Up, range) == 10.5F);
    const FaderRange continuous{-20, 80, 0.0F};
    for (const FaderKey key : {FaderKey::PageUp, FaderKey::PageDown, FaderKey::Down, FaderKey::Up})
        CHECK(!StepFader(10.0F, key, continuous));
    CHECK(StepFader(10.0F, FaderKey::Home, continuous) == 80.0F);
    CHECK(StepFader(10.0F, FaderKey::End, continuous) == -20.0F);
}

TEST_CASE("any beginning of minimum, maximum and value is read") {
    struct Row {
        const char* text;
        std::int32_t minimum;
        std::optional<std::int32_t> maximum;
        std::optional<float> value;
    };
    const Row rows[] = {
        {"-60", -60, {}, {}},       {"-60,6,3", -60, 6, 3.0F},
        {"-60,6", -60, 6, {}},      {"-60,6,-2.5 dB", -60, 6, -2.5F},
        {"-60,x,3", -60, {}, {}},   {" 1, 2, 3", 1, 2, 3.0F},
        {"-60,6,loud", -60, 6, {}}, {"-60 ,6", -60, {}, {}},
    };
    for (const Row& row : rows) {
        CAPTURE(row.text);
        const auto properties = ParseFaderProperties(row.text);
        REQUIRE(properties.has_value());
        CHECK(properties->minimum == row.minimum);
        CHECK(properties->maximum == row.maximum);
        CHECK(properties->value == row.value);
    }
    for (const char* text : {"", ",6,3", "loud", "99999999999"})
        CHECK(!ParseFaderProperties(text));
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
        {5.0F, {7, 7, 0.0F}, vertical, 178},      {5.0F, {7, 7, 0.0F}, horizontal, 0},
        {0.0F, {-80, 0, 0.0F}, {10, 12, 22}, 0},  {50.0F, {-50, 50, 0.0F}, {8, 4, 22}, 0},
    };
    for (const Row& row : rows) {
        CAPTURE(row.value);
        CAPTURE(row.shape.width);
        CHECK(KnobPosition(row.value, row.range, row.shape) == row.position);
    }
    CHECK(IsOnKnob(0, 89, 89, vertical));
    CHECK(IsOnKnob(19, 110, 89, vertical));
    CHECK(!IsOnKnob(20, 100, 89, vertical));
    CHECK(!IsOnKnob(10, 88, 89, vertical));
    CHECK(!IsOnKnob(10, 111, 89, vertical));
    CHECK(IsOnKnob(96, 0, 96, horizontal));
    CHECK(IsOnKnob(104, 13, 96, horizontal));
    CHECK(!IsOnKnob(105, 5, 96, horizontal));
    CHECK(!IsOnKnob(100, 14, 96, horizontal));
}

TEST_CASE("a held knob follows the pointer and stops at the ends") {
    const FaderShape shape{20, 200, 22}; // can be dragged by 179
    CHECK(!MoveKnob({100, 110}, 110, shape));
    struct Row {
        HeldKnob from;
        std::int32_t pointer;
        HeldKnob to;
    };
    const Row rows[] = {
        {{100, 110}, 120, {110, 120}}, {{100, 110}, 95, {85, 95}}, {{170, 180}, 189, {179, 189}},
        {{170, 180}, 200, {179, 189}}, {{10, 15}, 5, {0, 5}},      {{10, 15}, -30, {0, 5}},
        {{179, 189}, 200, {179, 189}}, {{0, 5}, 6, {1, 6}},
    };
    for (const Row& row : rows) {
        CAPTURE(row.pointer);
        const auto moved = MoveKnob(row.from, row.pointer, shape);
        REQUIRE(moved.has_value());
        CHECK(moved->position == row.to.position);
        CHECK(moved->anchor == row.to.anchor);
    }
    CHECK(!MoveKnob({0, 5}, 9, {20, 10, 22}));
    CHECK(!MoveKnob({0, 5}, 9, {20, 21, 22}));
}

TEST_CASE("a drag from end to end gives the whole range in both layouts") {
    const FaderShape vertical{20, 200, 22};
    const FaderShape horizontal{200, 14, 9};
    CHECK(DraggedValue(179, {-80, 0, 0.0F}, vertical) == -80.0F);
    CHECK(DraggedValue(0, {-80, 0, 0.0F}, vertical) == 0.0F);
    CHECK(DraggedValue(0, {-50, 50, 0.0F}, horizontal) == -50.0F);
    CHECK(DraggedValue(192, {-50, 50, 0.0F}, horizontal) == 50.0F);
    CHECK(DraggedValue(96, {-50, 50, 0.0F}, horizontal) == 0.0F);
    CHECK(DraggedValue(45, {-80, 0, 1.0F}, vertical) == -20.0F); // from -20.11
    CHECK(DraggedValue(179, {-80, 0, 30.0F}, vertical) == -90.0F);
    CHECK(DraggedValue(50, {7, 7, 0.0F}, vertical) == 7.0F);
    CHECK(DraggedValue(0, {-80, 0, 0.0F}, {20, 10, 22}) == -80.0F);

    std::mt19937 random(7);
    for (int round = 0; round < 500; ++round) {
        const auto pick = [&random](int count) {
            return static_cast<std::int32_t>(random() % static_cast<unsigned>(count));
        };
        const FaderShape shape{1 + pick(300), 1 + pick(300), 1 + pick(60)};
        const std::int32_t minimum = pick(200) - 100;
        const FaderRange range{minimum, minimum + pick(150), 0.0F};
        HeldKnob knob{KnobPosition(static_cast<float>(range.maximum), range, shape), 0};
        for (int move = 0; move < 20; ++move) {
            knob = MoveKnob(knob, pick(1000) - 500, shape).value_or(knob);
            const float value = DraggedValue(knob.position, range, shape);
            CHECK(value >= static_cast<float>(range.minimum));
            CHECK(value <= static_cast<float>(range.maximum));
            // Where the knob lies when it is let go, but for the pixel that the vertical drag goes further.
            const std::int32_t distance = std::abs(KnobPosition(value, range, shape) - knob.position);
            CHECK((range.minimum == range.maximum || distance <= 1));
        }
    }
}

TEST_CASE("offsets are written with a double comma in between and read whatever the commas") {
    const std::vector<OffsetRecord> records{{1, 4, 0}, {2, 5, 0}, {-3.5F, 6, 0}};
    CHECK(OffsetsText(records, &OffsetRecord::offset) == "1,,2,,-3.5,");
    CHECK(OffsetsText(records, &OffsetRecord::remote) == "4,,5,,6,");
    CHECK(OffsetsText({}, &OffsetRecord::offset) == "");
    CHECK(ParseOffsets("1,,2,,3,") == std::vector<float>{1, 2, 3});
    CHECK(ParseOffsets("1,2.5 dB,loud,-4") == std::vector<float>{1, 2.5F, 0, -4});
    CHECK(ParseOffsets(",,").empty());
    std::vector<OffsetRecord> many;
    for (int i = 0; i < 65536; ++i)
        AppendOffset(many, {});
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
