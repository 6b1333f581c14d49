#include "logic/controls/TestTone.h"
#include "tests/native/Tables.h"

using namespace logic;

TEST_CASE("a duration is minutes and seconds") {
    const Row<std::optional<std::int32_t>, const char*> seconds[] = {
        {"2:00", 120},  {"2", 120},    {"0:75", 60}, {" 1: 5 min", 65},       {"1 : 30min", 90},
        {"3 min", 180}, {"2:-5", 115}, {"-1:30", 0}, {"35791394:7", highest}, {"35791394:8", highest}};
    CheckRows(ParseDuration, seconds);
    const Row<std::string, std::int32_t> shown[] = {
        {0, "0:00 min"}, {59, "0:59 min"}, {65, "1:05 min"}, {120, "2:00 min"}, {highest, "35791394:07 min"}};
    CheckRows(FormatDuration, shown);
    CheckRefused(ParseDuration, "", " ", ":30", "x", "min", "2147483648:00", "1:", "1:x", "1:30 s",
                 "1 min:30", "1:30:00", "1.5");
}

TEST_CASE("a signal is a frequency and perhaps an amplitude") {
    const auto read = [](const std::string& text) { return ParseSignal(text, 123); };
    const Row<std::optional<ToneSignal>, const char*> rows[] = {{"1000 Hz,24575", {{1000.0F, 24575}}},
                                                                {"440", {{440.0F, 123}}},
                                                                {"440 Hz", {{440.0F, 123}}},
                                                                {"440 Hz,40000", {{440.0F, 32767}}},
                                                                {"440 Hz,-1", {{440.0F, 0}}},
                                                                {"62.5hz, 7", {{62.5F, 7}}},
                                                                {"-5 Hz,1", {{-5.0F, 1}}},
                                                                {"440 Hz ,1", {{440.0F, 1}}}};
    CheckRows(read, rows);
    CHECK(FormatSignal({62.5F, 7}) == "62.5 Hz,7");
    CheckRefused(read, "", "Hz,5", "inf Hz,5", "nan", "1e99 Hz,5", "440 Hz,7x", "440,", "440 kHz",
                 "440 Hz,99999999999", "440,5,6");
}

TEST_CASE("the samples of a sine are truncated towards zero") {
    const struct {
        float rate;
        std::int16_t amplitude;
        std::vector<std::int16_t> samples;
    } rows[] = {{4.0F, 1000, {0, 1000, 0, -1000, 0, 1000, 0, -1000}},
                {8.0F, 10, {0, 7, 10, 7, 0, -7, -10, -7}}, // 7.07
                {4.0F, MAXIMUM_AMPLITUDE, {0, 32767, 0, -32767}}};
    for (const auto& row : rows) {
        SineOscillator sine(1.0F, row.rate, 0.0);
        for (const std::int16_t expected : row.samples) {
            CHECK(sine.Next(row.amplitude) == expected);
        }
    }
}

TEST_CASE("frequencies that no wave file can hold make sound samples all the same") {
    constexpr float RATE = 44100.0F;
    const std::tuple<float, float, double> rows[] = {
        {largest, RATE, 0.0},  {largest, -1e-30F, 0.0},    {1000.0F, 0.0F, 0.0},  {notANumber, RATE, 1.0},
        {infinity, RATE, 1.0}, {1000.0F, notANumber, 1.0}, {1000.0F, RATE, 1e300}};
    for (const auto& row : rows) {
        INFO("row ", &row - rows + 1);
        auto sine = std::make_from_tuple<SineOscillator>(row);
        for (int i = 0; i < 1000; ++i) {
            CHECK(std::abs(sine.Next(MAXIMUM_AMPLITUDE)) <= MAXIMUM_AMPLITUDE);
            CHECK(std::abs(sine.Phase()) <= 6.2831853072);
        }
    }
}

TEST_CASE("the number of samples has a limit") {
    constexpr std::int64_t LIMIT = 500000000;
    const auto count = [](float rate, std::int32_t seconds) { return SampleCount(rate, seconds, LIMIT); };
    const Row<std::int64_t, float, std::int32_t> rows[] = {
        {{44100.0F, 120}, 5292000}, {{44100.9F, 1}, 44100}, {{44100.0F, highest}, LIMIT},
        {{3e38F, highest}, LIMIT},  {{0.0F, 10}, 0},        {{-1.0F, 10}, 0},
        {{notANumber, 10}, 0},      {{44100.0F, 0}, 0},     {{44100.0F, -1}, 0}};
    CheckRows(count, rows);
}
