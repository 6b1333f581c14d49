#include "logic/Numbers.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>

#include <doctest/doctest.h>

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
    CHECK(ParseFloats(" 1 , -2.5x,bad,4") == std::vector{1.0F, -2.5F});
    CHECK(ParseFloats("").empty());
}

TEST_CASE("integers are read from the front of a text and must fit") {
    CHECK(ParseInteger(" -12,5") == -12);
    CHECK(ParseInteger("+7") == 7);
    CHECK(ParseInteger("-2147483648") == std::numeric_limits<std::int32_t>::min());
    CHECK(ParseHex("0x00ff80 rest") == 0xFF80U);
    CHECK(ParseHex(" FFFFFFFF") == 0xFFFFFFFFU);
    for (const char* text : {"", "x", "+", "2147483648", "-2147483649"})
        CHECK(!ParseInteger(text));
    for (const char* text : {"", "0x", "0xg", "-1", "100000000"})
        CHECK(!ParseHex(text));
    CHECK(!ParseWholeInteger("1.0"));
    std::string_view text = "-80,18,0.5";
    CHECK(TakeInteger(text) == -80);
    CHECK(text == ",18,0.5");
    CHECK(!TakeInteger(text));
    CHECK(text == ",18,0.5");
}

TEST_CASE("floats are written as by printf") {
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
