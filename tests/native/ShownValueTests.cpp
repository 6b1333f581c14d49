#include "logic/ShownValue.h"

#include <limits>

#include <doctest/doctest.h>

using namespace logic;

TEST_CASE("a number is shown in its format and read with what the format adds") {
    const struct {
        ValueType type;
        const char* format;
        const char* typed;
        const char* shown; // null: refused
    } rows[] = {
        {ValueType::Float, "", "2.50", "2.5"},
        {ValueType::Float, "%.1f", " -12.34 ", "-12.3"},
        {ValueType::Float, "%.1f dB", "6 dB", "6.0 dB"},
        {ValueType::Float, "%.1f dB", "6dB", "6.0 dB"},
        {ValueType::Float, "Gain: %+.0f%%", "Gain: 7%", "Gain: +7%"},
        {ValueType::Float, "%.1f", "1e3", "100.0"}, // the limit
        {ValueType::Float, "%.1f", "12 apples", nullptr},
        {ValueType::Float, "%.1f", "", nullptr},
        {ValueType::Float, "%.1f dB", "dB", nullptr},
        {ValueType::Float, "%.1f", "nan", nullptr},
        {ValueType::Float, "%.1f", "1e99", nullptr},
        {ValueType::Float, "%.1f", "1,5", nullptr},
        {ValueType::Integer, "", "2.5", "3"},
        {ValueType::Integer, "", "-2.5", "-3"},
        {ValueType::Integer, "%.1f ms", "7.6 ms", "8.0 ms"},
        {ValueType::Integer, "", "1e3", "100"},
        {ValueType::Integer, "", "x", nullptr},
        {ValueType::Text, "%.1f", "a\r\nb\tc", "a b c"},
    };
    for (const auto& row : rows) {
        CAPTURE(row.format);
        CAPTURE(row.typed);
        ShownValue value;
        value.SetType(row.type);
        value.SetFormat(row.format);
        value.SetCaption("old");
        CHECK(value.TakeTyped(row.typed, Limits{-100, 100}) == (row.shown != nullptr));
        CHECK(value.Text() == (row.shown != nullptr ? row.shown : "old"));
    }
    ShownValue exact;
    exact.SetType(ValueType::Integer);
    CHECK(exact.TakeTyped("2147483647", std::nullopt));
    CHECK(exact.Integer() == 2147483647);
    CHECK_FALSE(exact.TakeTyped("2147483648", std::nullopt));
    CHECK(exact.TakeTyped("16777217", std::nullopt)); // no float
    CHECK(exact.Text() == "16777217");
    CHECK_FALSE(exact.Take(16777217));
}

TEST_CASE("caption, type and format may come in any order") {
    ShownValue value;
    value.SetCaption("12.54 dB");
    CHECK(value.Text() == "12.54 dB");
    value.SetType(ValueType::Float);
    CHECK(value.Float() == 12.54F);
    value.SetFormat("%.1f dB");
    CHECK(value.Text() == "12.5 dB");
    value.SetType(ValueType::Integer);
    CHECK(value.Integer() == 13);
    value.SetType(ValueType::Text);
    CHECK(value.Text() == "13.0 dB");

    value.SetCaption("Value");
    value.SetType(ValueType::Float);
    CHECK(value.Text() == "Value");
    CHECK_FALSE(value.HasNumber());
    CHECK(value.Take(0.0F)); // 0 is new, although the number was 0
    CHECK(value.Text() == "0.0 dB");
    CHECK_FALSE(value.Take(0.0F));

    ShownValue restored; // a panel file has the caption first and the format last
    restored.SetCaption("L 3.5");
    restored.SetType(ValueType::Float);
    CHECK_FALSE(restored.HasNumber());
    restored.SetFormat("L %.1f");
    CHECK(restored.Float() == 3.5F);
    CHECK(restored.Text() == "L 3.5");
}

TEST_CASE("names, limits and places") {
    for (const char* name : {"string", "f", "d"})
        CHECK(ValueTypeName(ParseValueType(name).value()) == std::string(name));
    for (const char* name : {"left", "center", "right"})
        CHECK(AlignmentName(ParseAlignment(name).value()) == std::string(name));
    for (const char* bad : {"", "F", "float", "centre"}) {
        CHECK_FALSE(ParseValueType(bad));
        CHECK_FALSE(ParseAlignment(bad));
    }
    CHECK(LimitsText(ParseLimits("-80,18.5").value()) == "-80,18.5");
    for (const char* bad : {"", "1", "2,1", "1,2,3", "a,b", "1,nan"})
        CHECK_FALSE(ParseLimits(bad));
    CHECK(AlignedStart(Alignment::Center, 10, 31) == 10);
    CHECK(AlignedStart(Alignment::Right, 10, 31) == 21);
    CHECK(AlignedStart(Alignment::Left, 10, 31) == 0);
    CHECK(AlignedStart(Alignment::Right, 40, 31) == 0);
    CHECK_FALSE(RoundToInteger(std::numeric_limits<float>::quiet_NaN()));
    CHECK_FALSE(RoundToInteger(2147483648.0F));
}

TEST_CASE("long texts are wrapped between words where there are any") {
    CHECK(WrapText("one two three", 7) == "one two\nthree");
    CHECK(WrapText("abcdefgh", 3) == "abc\ndef\ngh");
    CHECK(WrapText("short", 80) == "short");
    CHECK(WrapText(" ab", 1) == " \na\nb");
}
