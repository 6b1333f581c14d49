#include "logic/Numbers.h"

#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>

#include <doctest/doctest.h>

#include "logic/FloatFormat.h"

using namespace logic;

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float largest = std::numeric_limits<float>::max();

} // namespace

TEST_CASE("floats are read from the front of a text") {
    struct Row {
        const char* text;
        std::optional<float> value;
        bool isWhole = true;
    };
    const Row rows[] = {
        {" \t-3.5", -3.5F},
        {"+.5", 0.5F},
        {"7.", 7.0F},
        {"1e3 ", 1000.0F},
        {"12 ms", 12.0F, false},
        {"1e+", 1.0F, false},
        {"0x10", 0.0F, false},
        {"3.4028235e38", largest},
        {"1e39", std::nullopt},
        {"-1000000000000000000000000000000000000000", std::nullopt},
        {"1e99999999999999999999", std::nullopt},
        {"1e-60", 0.0F},
        {"-0.00000000000000000000000000000000000000000000000000000000001e2", 0.0F},
        {"1e-99999999999999999999", 0.0F},
        {"0e99999999999999999999", 0.0F},
        {".", std::nullopt},
        {"+-1", std::nullopt},
        {"nan", std::nullopt},
        {"-inf", std::nullopt},
    };
    for (const Row& row : rows) {
        CAPTURE(row.text);
        CHECK(ParseFloat(row.text) == row.value);
        CHECK(ParseWholeFloat(row.text) == (row.isWhole ? row.value : std::nullopt));
    }
    CHECK(ParseFloats("1,,2,,3,") == std::vector{1.0F, 2.0F, 3.0F});
    CHECK(ParseFloats(" 1 , -2.5, ") == std::vector{1.0F, -2.5F});
    CHECK(ParseFloats("") == std::vector<float>());
    for (const char* text : {"x", "1,2.5 dB", "1,bad,4"})
        CHECK(!ParseFloats(text));
    for (const char* text : {"80", " 80 hz ", "80Hz"})
        CHECK(ParseFloatIn("Hz", text) == 80.0F);
    for (const char* text : {"80 kHz", "80 Hz x", "Hz", ""})
        CHECK(!ParseFloatIn("Hz", text));
}

TEST_CASE("integers are read from the front of a text and must fit") {
    CHECK(ParseInteger(" -12,5") == -12);
    CHECK(ParseInteger("+7") == 7);
    CHECK(ParseInteger("-2147483648") == std::numeric_limits<std::int32_t>::min());
    CHECK(ParseWholeHex(" 0x00ff80 ") == 0xFF80U);
    CHECK(ParseWholeHex("FFFFFFFF") == 0xFFFFFFFFU);
    for (const char* text : {"", "x", "+", "2147483648", "-2147483649"})
        CHECK(!ParseInteger(text));
    for (const char* text : {"", "0x", "0xg", "-1", "100000000", "0x0 0", "0x0x1"})
        CHECK(!ParseWholeHex(text));
    CHECK(!ParseWholeInteger("1.0"));
    std::string_view text = "-80,18,0.5";
    CHECK(TakeInteger(text) == -80);
    CHECK(text == ",18,0.5");
    CHECK(!TakeInteger(text));
    CHECK(text == ",18,0.5");
}

TEST_CASE("a range and a value are whole fields, from the front") {
    const struct {
        const char* text;
        std::int32_t minimum;
        std::optional<std::int32_t> maximum;
        std::optional<float> value;
    } rows[] = {{"-60", -60, {}, {}},
                {"-60,6", -60, 6, {}},
                {"-60,6,3", -60, 6, 3.0F},
                {" 1 , 2 , -2.5 ", 1, 2, -2.5F}};
    for (const auto& row : rows) {
        CAPTURE(row.text);
        const auto read = ParseRangeAndValue(row.text);
        REQUIRE(read.has_value());
        CHECK(read->minimum == row.minimum);
        CHECK(read->maximum == row.maximum);
        CHECK(read->value == row.value);
    }
    for (const char* text : {"", ",6,3", "loud", "99999999999", "-60,", "-60,x,3", "-60,6,loud", "-60,6,3 dB",
                             "0,100,2,5", "1.5,2"})
        CHECK(!ParseRangeAndValue(text));
    CHECK(RangeAndValueText(-80, 18, 2.5F) == "-80,18,2.5");
    std::int32_t numbers[] = {7, 8};
    CHECK((ParseIntegers(" -1 ", numbers) && numbers[0] == -1 && numbers[1] == 8));
    CHECK((ParseIntegers("3,4", numbers) && numbers[0] == 3 && numbers[1] == 4));
    for (const char* text : {"", "5,", "5,x", "5 x", "5,6,7"})
        CHECK(!ParseIntegers(text, numbers));
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

TEST_CASE("floats are written as by printf") {
    CHECK(FormatFloat(-std::numeric_limits<float>::min()).size() == longestFloatText);
    std::mt19937 random(3);
    for (int round = 0; round < 2000; ++round) {
        const auto bits = static_cast<std::uint32_t>(random());
        float value = 0.0F;
        std::memcpy(&value, &bits, sizeof value);
        if (round % 2 == 0 || std::isnan(value)) // the sign of a NaN is written differently everywhere
            value = static_cast<float>(static_cast<int>(bits % 20001) - 10000) / 16.0F;
        char expected[64];
        std::snprintf(expected, sizeof expected, "%g", static_cast<double>(value));
        CHECK(FormatFloat(value) == expected);
    }
}

TEST_CASE("values are rounded half away from zero to a multiple of the step") {
    struct Row {
        float value, step, expected;
    };
    const Row rows[] = {
        {10.3F, 0.5F, 10.5F},       {-10.3F, 0.5F, -10.5F},      {10.25F, 0.5F, 10.5F},
        {-10.25F, 0.5F, -10.5F},    {10.2F, 0.5F, 10.0F},        {10.3F, -0.5F, 10.5F},
        {-0.25F, 0.1F, -0.3F},      {2.5F, 1.0F, 3.0F},          {-0.2F, 0.5F, 0.0F},
        {1.234F, 0.0F, 1.234F},     {1.234F, infinity, 1.234F},  {1.234F, notANumber, 1.234F},
        {infinity, 1.0F, infinity}, {largest, 3.0e38F, 3.0e38F}, {largest, 2.2e38F, largest},
        {largest, 1e-45F, largest},
    };
    for (const Row& row : rows) {
        CAPTURE(row.value);
        CAPTURE(row.step);
        CHECK(RoundToStep(row.value, row.step) == row.expected);
    }
    CHECK(!std::signbit(RoundToStep(-0.2F, 0.5F)));
    CHECK(std::isnan(RoundToStep(notANumber, 0.5F)));
    std::mt19937 random(4);
    for (int round = 0; round < 2000; ++round) {
        const float value = static_cast<float>(random() % 200'001) / 1000.0F - 100.0F;
        const float step = static_cast<float>(1 + random() % 5000) / 1000.0F;
        const float rounded = RoundToStep(value, step);
        CHECK(std::fabs(rounded - value) <= step / 2 + 1e-4F);
        CHECK(RoundToStep(rounded, step) == rounded);
    }
}

TEST_CASE("clamping and truncation keep within bounds") {
    CHECK(Clamp(5.0F, 0.0F, 10.0F) == 5.0F);
    CHECK(Clamp(-infinity, 0.0F, 10.0F) == 0.0F);
    CHECK(Clamp(infinity, 0.0F, 10.0F) == 10.0F);
    CHECK(Clamp(notANumber, 0.0F, 10.0F) == 0.0F);
    CHECK(Clamp(5.0F, 10.0F, 0.0F) == 10.0F);
    CHECK(Clamp(10.0F, 10.0F, 0.0F) == 0.0F);
    CHECK(Clamp(5.0F, notANumber, notANumber) == 5.0F);
    CHECK(TruncateToInteger(-3.99) == -3);
    CHECK(TruncateToInteger(1e300) == std::numeric_limits<std::int32_t>::max());
    CHECK(TruncateToInteger(-infinity) == std::numeric_limits<std::int32_t>::min());
    CHECK(TruncateToInteger(notANumber) == 0);
}
