// Messages to and from devices: pitch bends, echo requests, and where a host is found.
#include "logic/EchoRequest.h"
#include "logic/HostPort.h"
#include "logic/PitchBend.h"
#include "tests/native/Tables.h"

using namespace logic;

TEST_CASE("values become messages") {
    const Row<std::uint32_t, unsigned, std::uint16_t> rows[] = {
        {{0U, 0}, 0x0000E0},
        {{2U, 2039}, 0x7F70E2},
        {{1U, 15}, 0x00F0E1},
        {{7U, 1000}, 0x3E80E7}, // 62 * 16 + 8: the first data byte has its top bit set
    };
    CheckRows(PitchBendMessage, rows);
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
    for (const std::uint32_t message : {0x7F40DFU, 0x7F40E8U, 0x7F40EFU, 0x7F4090U, 0x7F4000U, 0x7F40F8U})
        CHECK_FALSE(ReadPitchBend(message));
    for (std::uint32_t bytes = 0; bytes < 0x10000; ++bytes) {
        REQUIRE(ReadPitchBend(bytes << 8 | 0xE3)->value <= HIGHEST_PITCH_BEND);
    }
    CHECK(ReadPitchBend(0xFFFFE0)->value == 2039);
}

TEST_CASE("numbers are rounded by adding a half") {
    const Row<std::int32_t, float> rows[] = {
        {0.0F, 0},   {0.49F, 0},       {0.5F, 1},        {2038.5F, 2039}, {-0.7F, 0},
        {-2.7F, -2}, {1e30F, highest}, {-1e30F, lowest}, {notANumber, 0},
    };
    CheckRows(RoundPitchBend, rows);
}

TEST_CASE("the checksum of a message makes its sum zero") {
    CHECK(InternetChecksum({}) == 0xFFFF);
    const std::uint8_t example[] = {0x00, 0x01, 0xF2, 0x03, 0xF4, 0xF5, 0xF6, 0xF7};
    CHECK(InternetChecksum(example) == 0x0D22); // 220d in the order of the network
    const std::uint8_t odd[] = {0x01, 0x02, 0x03};
    CHECK(InternetChecksum(odd) == 0xFDFB);
    CHECK(InternetChecksum(std::vector<std::uint8_t>(131072, 0xFF)) == 0);
    CHECK(InternetChecksum(EchoRequest(0x12345678)) == 0);
}

TEST_CASE("the bytes of an echo request") {
    const auto request = EchoRequest(0xA1B2C3D4);
    const std::vector<std::uint8_t> head(request.begin(), request.begin() + 14);
    CHECK(head == std::vector<std::uint8_t>{8, 0, request[2], request[3], 1, 0, 1, 0, 0, 0xD4, 0xC3, 0xB2,
                                            0xA1, 0x20});
    CHECK(request[44] == 0x3F);
    CHECK(request.size() == 45);
    CHECK((request[2] | request[3] << 8) == 0x858D);
}

TEST_CASE("host and port are both needed") {
    CHECK(ParseHostPort("localhost:1234") == HostPort{"localhost", 1234});
    CHECK(ParseHostPort(" 10.0.0.1 : 65535 ") == HostPort{"10.0.0.1", 65535});
    CHECK(ParseHostPort(std::string(253, 'h') + ":1"));
    CheckRefused(ParseHostPort, "", "host", "host:", ":23", "host:0", "host:65536", "host:-1", "host:23x",
                 "ho st:23", "a:b:23", "host\x01:23", std::string(254, 'h') + ":1");
}
