#include "logic/ShownValue.h"
#include "tests/native/Tables.h"

using namespace logic;

TEST_CASE("a number is shown in its format and read with what the format adds") {
    const auto shown = [](ValueType type, const char* format, const char* typed) {
        ShownValue value;
        value.SetType(type);
        value.SetFormat(format);
        value.SetCaption("old");
        const bool isTaken = value.TakeTyped(typed, Limits{-100, 100});
        CHECK((isTaken || value.Text() == "old"));
        return isTaken ? value.Text() : "refused";
    };
    using enum ValueType;
    const Row<std::string, ValueType, const char*, const char*> rows[] = {
        {{Float, "", "2.50"}, "2.5"},
        {{Float, "%.1f", " -12.34 "}, "-12.3"},
        {{Float, "%.1f dB", "6 dB"}, "6.0 dB"},
        {{Float, "%.1f dB", "6dB"}, "6.0 dB"},
        {{Float, "Gain: %+.0f%%", "Gain: 7%"}, "Gain: +7%"},
        {{Float, "%.1f", "1e3"}, "100.0"}, // the limit
        {{Float, "%.1f", "12 apples"}, "refused"},
        {{Float, "%.1f", ""}, "refused"},
        {{Float, "%.1f dB", "dB"}, "refused"},
        {{Float, "%.1f", "nan"}, "refused"},
        {{Float, "%.1f", "1e99"}, "refused"},
        {{Float, "%.1f", "1,5"}, "refused"},
        {{Integer, "", "2.5"}, "3"},
        {{Integer, "", "-2.5"}, "-3"},
        {{Integer, "%.1f ms", "7.6 ms"}, "8.0 ms"},
        {{Integer, "", "1e3"}, "100"},
        {{Integer, "", "x"}, "refused"},
        {{Text, "%.1f", "a\r\nb\tc"}, "a b c"},
    };
    CheckRows(shown, rows);
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
    CheckRefused(ParseValueType, "", "F", "float", "centre");
    CheckRefused(ParseAlignment, "", "F", "float", "centre");
    CHECK(LimitsText(ParseLimits("-80,18.5").value()) == "-80,18.5");
    CheckRefused(ParseLimits, "", "1", "2,1", "1,2,3", "a,b", "1,nan");
    using enum Alignment;
    const Row<int, Alignment, int, int> starts[] = {
        {{Center, 10, 31}, 10},
        {{Right, 10, 31}, 21},
        {{Left, 10, 31}, 0},
        {{Right, 40, 31}, 0},
    };
    CheckRows(AlignedStart, starts);
    for (const float odd : {notANumber, 2147483648.0F})
        CHECK_FALSE(RoundToInteger(odd));
}

TEST_CASE("long texts are wrapped between words where there are any") {
    const Row<std::string, const char*, int> rows[] = {
        {{"one two three", 7}, "one two\nthree"},
        {{"abcdefgh", 3}, "abc\ndef\ngh"},
        {{"short", 80}, "short"},
        {{" ab", 1}, " \na\nb"},
    };
    CheckRows(WrapText, rows);
}
