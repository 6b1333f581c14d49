#include "logic/PitchBend.h"

#include <doctest/doctest.h>

#include <limits>

TEST_SUITE_BEGIN("PitchBend");

using namespace logic;

TEST_CASE("values become messages") {
    CHECK(PitchBendMessage(0, 0) == 0x0000E0);
    CHECK(PitchBendMessage(2, 2039) == 0x7F70E2);
    CHECK(PitchBendMessage(7, 1000) == 0x3E80E7); // 62 * 16 + 8: the first data byte has its top bit set
    CHECK(PitchBendMessage(1, 15) == 0x00F0E1);
}

TEST_CASE("every value on every channel is read back from its message") {
    for (unsigned channel = 0; channel < PITCH_BEND_CHANNELS; ++channel) {
        for (std::uint16_t value = 0; value <= HIGHEST_PITCH_BEND; ++value) {
            const auto read = ReadPitchBend(PitchBendMessage(channel, value));
            REQUIRE(read);
            REQUIRE(read->channel == channel);
            REQUIRE(read->value == value);
        }
    }
}

TEST_CASE("received messages: full bytes, other kinds, faulty ones") {
    CHECK(ReadPitchBend(0x7F7FE0)->value == 2039);
    CHECK(ReadPitchBend(0x400FE0)->value == 1024); // the lower half of the first data byte carries nothing
    CHECK(ReadPitchBend(0xAB0012E7)->value == 1);  // nor does the highest byte of the word
    for (const std::uint32_t message : {0x7F40DFU, 0x7F40E8U, 0x7F40EFU, 0x7F4090U, 0x7F4000U, 0x7F40F8U}) {
        CAPTURE(message);
        CHECK_FALSE(ReadPitchBend(message));
    }
    for (std::uint32_t bytes = 0; bytes < 0x10000; ++bytes) {
        REQUIRE(ReadPitchBend(bytes << 8 | 0xE3)->value <= HIGHEST_PITCH_BEND);
    }
    CHECK(ReadPitchBend(0xFFFFE0)->value == 2039);
}

TEST_CASE("numbers are rounded by adding a half") {
    const struct {
        float value;
        std::int32_t rounded;
    } rows[] = {{0.0F, 0},
                {0.49F, 0},
                {0.5F, 1},
                {2038.5F, 2039},
                {-0.7F, 0},
                {-2.7F, -2},
                {1e30F, 2147483647},
                {-1e30F, -2147483647 - 1},
                {std::numeric_limits<float>::quiet_NaN(), 0}};
    for (const auto& row : rows) {
        CAPTURE(row.value);
        CHECK(RoundPitchBend(row.value) == row.rounded);
    }
}
