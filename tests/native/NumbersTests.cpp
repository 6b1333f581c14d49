// Numbers, and the values that controls show of them.
#include "logic/controls/ShownValue.h"
#include "logic/text/FloatFormat.h"
#include "logic/text/Numbers.h"
#include "logic/text/Ranges.h"
#include "tests/native/Tables.h"

#include <clocale>

using namespace logic;

TEST_CASE("floats are read from the front of a text") {
    const Row<std::optional<float>, const char*> whole[] = {
        {" \t-3.5", -3.5F},
        {"+.5", 0.5F},
        {"7.", 7.0F},
        {"1e3 ", 1000.0F},
        {"3.4028235e38", largest},
        {"1e-60", 0.0F},
        {"-0.00000000000000000000000000000000000000000000000000000000001e2", 0.0F},
        {"1e-99999999999999999999", 0.0F},
        {"0e99999999999999999999", 0.0F}};
    CheckRows(ParseFloat, whole);
    CheckRows(ParseWholeFloat, whole);
    CheckRefused(ParseFloat, "1e39", "-1000000000000000000000000000000000000000", "1e99999999999999999999",
                 ".", "+-1", "nan", "-inf");
    const Row<std::optional<float>, const char*> fronts[] = {{"12 ms", 12.0F}, {"1e+", 1.0F}, {"0x10", 0.0F}};
    CheckRows(ParseFloat, fronts);
    CheckRefused(ParseWholeFloat, "12 ms", "1e+", "0x10");
    const Row<std::optional<std::vector<float>>, const char*> lists[] = {
        {"1,,2,,3,", {{1.0F, 2.0F, 3.0F}}}, {" 1 , -2.5, ", {{1.0F, -2.5F}}}, {"", std::vector<float>()}};
    CheckRows(ParseFloats, lists);
    CheckRefused(ParseFloats, "x", "1,2.5 dB", "1,bad,4");
    const auto hertz = [](const std::string& text) { return ParseFloatIn("Hz", text) == 80.0F; };
    CheckTaken(hertz, "80", " 80 hz ", "80Hz");
    CheckRefused(hertz, "80 kHz", "80 Hz x", "Hz", "");
}

TEST_CASE("integers are read from the front of a text and must fit") {
    const Row<std::optional<std::int32_t>, const char*> integers[] = {
        {" -12,5", -12}, {"+7", 7}, {"-2147483648", lowest}, {"", {}},
        {"x", {}},       {"+", {}}, {"2147483648", {}},      {"-2147483649", {}}};
    CheckRows(ParseInteger, integers);
    const Row<std::optional<std::uint32_t>, const char*> hexadecimal[] = {
        {" 0x00ff80 ", 0xFF80U}, {"FFFFFFFF", 0xFFFFFFFFU}, {"0Xa90", 0xA90U}};
    CheckRows(ParseWholeHex, hexadecimal);
    CheckRefused(ParseWholeHex, "", "0x", "0xg", "-1", "100000000", "0x0 0", "0x0x1");
    CHECK(!ParseWholeInteger("1.0"));
    std::string_view text = "-80,18,0.5";
    CHECK(TakeInteger(text) == -80);
    CHECK(!TakeInteger(text));
    CHECK(text == ",18,0.5");
}

TEST_CASE("a range and a value are whole fields, from the front") {
    using Read = std::tuple<std::int32_t, std::optional<std::int32_t>, std::optional<float>>;
    const auto read = [](const char* text) {
        const auto range = ParseRangeAndValue(text).value();
        return Read(range.minimum, range.maximum, range.value);
    };
    const Row<Read, const char*> rows[] = {{"-60", {-60, {}, {}}},
                                           {"-60,6", {-60, 6, {}}},
                                           {"-60,6,3", {-60, 6, 3.0F}},
                                           {" 1 , 2 , -2.5 ", {1, 2, -2.5F}}};
    CheckRows(read, rows);
    CheckRefused(ParseRangeAndValue, "", ",6,3", "loud", "99999999999", "-60,", "-60,x,3", "-60,6,loud",
                 "-60,6,3 dB", "0,100,2,5", "1.5,2");
    CHECK(RangeAndValueText(-80, 18, 2.5F) == "-80,18,2.5");
    CHECK(ParseRange("-60,6").value().maximum == 6);
    CHECK(!ParseRange("-60").value().maximum);
    CheckRefused(ParseRange, "", "5,", "5 x", "5,6,7");
    std::int32_t numbers[] = {7, 8};
    CHECK((ParseIntegers(" -1 ", numbers) && numbers[0] == -1 && numbers[1] == 8));
    CHECK((ParseIntegers("3,4", numbers) && numbers[0] == 3 && numbers[1] == 4));
    CheckRefused([&](const auto& text) { return ParseIntegers(text, numbers); }, "", "5,", "5,x", "5 x",
                 "5,6,7");
    CHECK((numbers[0] == 3 && numbers[1] == 4));
}

TEST_CASE("numbers are written with a point, whatever the locale") {
    const auto check = [] {
        CHECK(FormatFloat(-2.5F) == "-2.5");
        CHECK(FormatFixed(1234.5, 2) == "1234.50");
        CHECK(FormatFixed(-1e300, 7).size() == 310);
        CHECK(FormatScientific(-0.0015, 1) == "-1.5e-03");
        CHECK(ParseWholeFloat("2.5") == 2.5F);
        CHECK_FALSE(ParseWholeFloat("2,5"));
        CHECK(FormatFloatAs("%.1f, dB", 2.5F) == "2.5, dB");
        CHECK(FormatFloatAs("%%; %+09.3e:", -2.5F) == "%; -2.500e+00:");
        CHECK(FormatFloatAs("% 7.1f", 2.5F) == "    2.5");
        CHECK(FormatFloatAs("%-7.1f|", 2.5F) == "2.5    |");
        CHECK(FormatFloatAs("%#g", 2.0F) == "2.00000");
    };
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"C", "de_DE.UTF-8", "fr_FR.UTF-8", "de_DE", "ps_AF.UTF-8"}) {
        if (std::setlocale(LC_ALL, name) == nullptr) {
            MESSAGE("there is no locale ", std::string(name), " here");
        } else {
            check();
        }
    }
    std::setlocale(LC_ALL, before.c_str());
}

TEST_CASE("floats are written in as few digits as six need, large and small ones with an exponent") {
    const Row<std::string, float> rows[] = {
        {0.0F, "0"},          {-0.5F, "-0.5"},          {100000.0F, "100000"},    {1234567.0F, "1.23457e+06"},
        {0.0001F, "0.0001"},  {0.00001F, "1e-05"},      {largest, "3.40282e+38"}, {-infinity, "-inf"},
        {999999.5F, "1e+06"}, {1.0F / 3.0F, "0.333333"}};
    CheckRows(FormatFloat, rows);
    CHECK(FormatFloat(-std::numeric_limits<float>::min()).size() == LONGEST_FLOAT_TEXT);
}

TEST_CASE("values are rounded half away from zero to a multiple of the step") {
    const Row<float, float, float> rows[] = {
        {{10.3F, 0.5F}, 10.5F},       {{-10.3F, 0.5F}, -10.5F},      {{10.25F, 0.5F}, 10.5F},
        {{-10.25F, 0.5F}, -10.5F},    {{10.2F, 0.5F}, 10.0F},        {{10.3F, -0.5F}, 10.5F},
        {{-0.25F, 0.1F}, -0.3F},      {{2.5F, 1.0F}, 3.0F},          {{-0.2F, 0.5F}, 0.0F},
        {{1.234F, 0.0F}, 1.234F},     {{1.234F, infinity}, 1.234F},  {{1.234F, notANumber}, 1.234F},
        {{infinity, 1.0F}, infinity}, {{largest, 3.0e38F}, 3.0e38F}, {{largest, 2.2e38F}, largest},
        {{largest, 1e-45F}, largest}};
    CheckRows(RoundToStep, rows);
    CHECK(!std::signbit(RoundToStep(-0.2F, 0.5F)));
    CHECK(std::isnan(RoundToStep(notANumber, 0.5F)));
}

TEST_CASE("clamping and truncation keep within bounds") {
    const Row<float, float, float, float> rows[] = {
        {{5.0F, 0.0F, 10.0F}, 5.0F},           {{-infinity, 0.0F, 10.0F}, 0.0F},
        {{infinity, 0.0F, 10.0F}, 10.0F},      {{notANumber, 0.0F, 10.0F}, 0.0F},
        {{5.0F, 10.0F, 0.0F}, 10.0F},          {{10.0F, 10.0F, 0.0F}, 0.0F},
        {{5.0F, notANumber, notANumber}, 5.0F}};
    CheckRows(Clamp, rows);
    const Row<std::int32_t, double> whole[] = {
        {-3.99, -3}, {1e300, highest}, {-infinity, lowest}, {notANumber, 0}};
    CheckRows(TruncateToInteger, whole);
}

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
        {{Float, "Gain: %+.0f%%", "Gain: 7%"}, "Gain: +7%"},
        {{Float, "%.1f", "1e3"}, "100.0"}, // the limit
        {{Float, "%.1f", "12 apples"}, "refused"},
        {{Float, "%.1f dB", "dB"}, "refused"},
        {{Float, "%.1f", "nan"}, "refused"},
        {{Float, "%.1f", "1e99"}, "refused"},
        {{Integer, "", "2.5"}, "3"},
        {{Integer, "%.1f ms", "7.6 ms"}, "8.0 ms"},
        {{Integer, "", "1e3"}, "100"},
        {{Text, "%.1f", "a\r\nb\tc"}, "a b c"}};
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

TEST_CASE("a caption is no number until there is one, and format and caption may come in any order") {
    ShownValue value;
    value.SetFormat("%.1f dB");
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

TEST_CASE("limits and places") {
    CHECK(LimitsText(ParseLimits("-80,18.5").value()) == "-80,18.5");
    CheckTaken(ParseLimits, "5,5");
    CheckRefused(ParseLimits, "", "1", "2,1", "1,2,3", "a,b", "1,nan");
    using enum Alignment;
    const Row<int, Alignment, int, int> starts[] = {
        {{Center, 10, 31}, 10}, {{Right, 10, 31}, 21}, {{Left, 10, 31}, 0}, {{Right, 40, 31}, 0}};
    CheckRows(AlignedStart, starts);
    for (const float odd : {notANumber, 2147483648.0F}) {
        CHECK_FALSE(RoundToInteger(odd));
    }
}

TEST_CASE("long texts are wrapped between words where there are any") {
    const Row<std::string, const char*, int> rows[] = {{{"one two three", 7}, "one two\nthree"},
                                                       {{"abcdefgh", 3}, "abc\ndef\ngh"},
                                                       {{"short", 80}, "short"},
                                                       {{" ab", 1}, " \na\nb"}};
    CheckRows(WrapText, rows);
}
