#include "logic/TestTone.h"

#include <cmath>
#include <limits>

#include <doctest/doctest.h>

using namespace logic;

TEST_CASE("a duration is minutes and seconds") {
    const struct {
        const char* text;
        std::int32_t seconds;
        const char* shown;
    } rows[] = {
        {"2:00", 120, "2:00 min"},
        {"2", 120, "2:00 min"},
        {"0:75", 60, "1:00 min"},
        {"0:60", 60, "1:00 min"},
        {"0:59", 59, "0:59 min"},
        {" 1: 5 min", 65, "1:05 min"},
        {"1 : 30min", 90, "1:30 min"},
        {"3 min", 180, "3:00 min"},
        {"2:-5", 115, "1:55 min"},
        {"0:-5", 0, "0:00 min"},
        {"-1:30", 0, "0:00 min"},
        {"-2147483648:-2147483648", 0, "0:00 min"},
        {"35791394:7", 2147483647, "35791394:07 min"},
        {"35791394:8", 2147483647, "35791394:07 min"},
        {"2147483647:59", 2147483647, "35791394:07 min"},
    };
    for (const auto& row : rows) {
        CAPTURE(row.text);
        CHECK(ParseDuration(row.text) == row.seconds);
        CHECK(FormatDuration(row.seconds) == row.shown);
        CHECK(ParseDuration(row.shown) == row.seconds);
    }
    for (const char* refused :
         {"", " ", ":30", "x", "min", "2147483648:00", "1:", "1:x", "1:30 s", "1 min:30", "1:30:00", "1.5"}) {
        CAPTURE(refused);
        CHECK_FALSE(ParseDuration(refused).has_value());
    }
}

TEST_CASE("a signal is a frequency and perhaps an amplitude") {
    const struct {
        const char* text;
        ToneSignal signal;
        const char* shown;
    } rows[] = {
        {"1000 Hz,24575", {1000.0F, 24575}, "1000 Hz,24575"},
        {"440", {440.0F, 123}, "440 Hz,123"},
        {"440 Hz", {440.0F, 123}, "440 Hz,123"},
        {"440 Hz,40000", {440.0F, 32767}, "440 Hz,32767"},
        {"440 Hz,-1", {440.0F, 0}, "440 Hz,0"},
        {"62.5hz, 7", {62.5F, 7}, "62.5 Hz,7"},
        {"-5 Hz,1", {-5.0F, 1}, "-5 Hz,1"},
        {"440 Hz ,1", {440.0F, 1}, "440 Hz,1"},
    };
    for (const auto& row : rows) {
        CAPTURE(row.text);
        CHECK(ParseSignal(row.text, 123) == row.signal);
        CHECK(FormatSignal(row.signal) == row.shown);
    }
    for (const char* refused : {"", "Hz,5", "inf Hz,5", "nan", "1e99 Hz,5", "440 Hz,7x", "440,", "440 kHz",
                                "440 Hz,99999999999", "440,5,6"}) {
        CAPTURE(refused);
        CHECK_FALSE(ParseSignal(refused, 123).has_value());
    }
}

TEST_CASE("the samples of a sine are truncated towards zero") {
    SineOscillator quarter(1.0F, 4.0F, 0.0);
    for (const std::int16_t expected : {0, 1000, 0, -1000, 0, 1000, 0, -1000}) {
        CHECK(quarter.Next(1000) == expected);
    }
    SineOscillator eighth(1.0F, 8.0F, 0.0);
    for (const std::int16_t expected : {0, 7, 10, 7, 0, -7, -10, -7}) { // 7.07
        CHECK(eighth.Next(10) == expected);
    }
    SineOscillator loud(1.0F, 4.0F, 0.0);
    for (const std::int16_t expected : {0, 32767, 0, -32767}) {
        CHECK(loud.Next(MAXIMUM_AMPLITUDE) == expected);
    }
}

TEST_CASE("two parts of a tone join without a seam") {
    SineOscillator whole(440.0F, 44100.0F, 0.0);
    SineOscillator first(440.0F, 44100.0F, 0.0);
    for (int i = 0; i < 1001; ++i) {
        CHECK(first.Next(24575) == whole.Next(24575));
    }
    SineOscillator second(440.0F, 44100.0F, first.Phase());
    for (int i = 0; i < 1001; ++i) {
        CHECK(second.Next(24575) == whole.Next(24575));
    }
}

TEST_CASE("frequencies that no wave file can hold make sound samples all the same") {
    constexpr float RATE = 44100.0F;
    const float huge = std::numeric_limits<float>::max();
    const float odd = std::numeric_limits<float>::quiet_NaN();
    const float infinite = std::numeric_limits<float>::infinity();
    // A frequency and the one that has the same samples.
    const float pairs[][2] = {
        {44100.0F + 1000.0F, 1000.0F}, {-44100.0F * 3.0F - 1000.0F, -1000.0F}, {88200.0F, 0.0F}};
    for (const auto& pair : pairs) {
        CAPTURE(pair[0]);
        SineOscillator high(pair[0], RATE, 0.0);
        SineOscillator low(pair[1], RATE, 0.0);
        for (int i = 0; i < 10000; ++i) {
            CHECK(std::abs(high.Next(24575) - low.Next(24575)) <= 1);
        }
    }
    const struct {
        float frequency;
        float rate;
        double phase;
    } rows[] = {{huge, RATE, 0.0},    {-huge, RATE, 0.0},
                {huge, -1e-30F, 0.0}, {1000.0F, 0.0F, 0.0},
                {odd, RATE, 1.0},     {infinite, RATE, 1.0},
                {1000.0F, odd, 1.0},  {1000.0F, RATE, 1e300},
                {1.0F, RATE, -1e9},   {1.0F, RATE, std::numeric_limits<double>::infinity()}};
    for (const auto& row : rows) {
        CAPTURE(row.frequency);
        CAPTURE(row.rate);
        SineOscillator sine(row.frequency, row.rate, row.phase);
        for (int i = 0; i < 10000; ++i) {
            CHECK(std::abs(sine.Next(MAXIMUM_AMPLITUDE)) <= MAXIMUM_AMPLITUDE);
            CHECK(std::abs(sine.Phase()) <= 6.2831853072);
        }
    }
}

TEST_CASE("the number of samples has a limit") {
    constexpr std::int64_t LIMIT = 500000000;
    CHECK(SampleCount(44100.0F, 120, LIMIT) == 5292000);
    CHECK(SampleCount(44100.9F, 1, LIMIT) == 44100);
    CHECK(SampleCount(44100.0F, 2147483647, LIMIT) == LIMIT);
    CHECK(SampleCount(3e38F, 2147483647, LIMIT) == LIMIT);
    for (const float rate : {0.0F, -1.0F, std::numeric_limits<float>::quiet_NaN()}) {
        CHECK(SampleCount(rate, 10, LIMIT) == 0);
    }
    CHECK(SampleCount(44100.0F, 0, LIMIT) == 0);
    CHECK(SampleCount(44100.0F, -1, LIMIT) == 0);
}
