// Messages to and from devices: pitch bends, echo requests, CAN records, and where a host is found.
#include "logic/controls/PitchBend.h"
#include "logic/remote/CanRecords.h"
#include "logic/remote/EchoRequest.h"
#include "logic/remote/HostPort.h"
#include "tests/native/Tables.h"

#include <algorithm>

using namespace logic;
using namespace std::string_literals;

TEST_CASE("values become messages, and every value on every channel is read back from its own") {
    const Row<std::uint32_t, unsigned, std::uint16_t> rows[] = {
        {{0U, 0}, 0x0000E0},
        {{2U, 2039}, 0x7F70E2},
        {{1U, 15}, 0x00F0E1},
        {{7U, 1000}, 0x3E80E7}, // 62 * 16 + 8: the first data byte has its top bit set
    };
    CheckRows(PitchBendMessage, rows);
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
        CHECK_FALSE(ReadPitchBend(message));
    }
    CHECK(ReadPitchBend(0xFFFFE0)->value == 2039);
}

TEST_CASE("numbers are rounded by adding a half") {
    const Row<std::int32_t, float> rows[] = {{0.0F, 0},        {0.49F, 0},       {0.5F, 1},
                                             {2038.5F, 2039},  {-0.7F, 0},       {-2.7F, -2},
                                             {1e30F, highest}, {-1e30F, lowest}, {notANumber, 0}};
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

namespace {

std::string Feed(CanRecordReader& reader, std::string_view bytes, std::size_t blockLength = 4096) {
    std::string lines;
    while (!bytes.empty()) {
        const auto room = reader.Room();
        const std::size_t count = std::min({bytes.size(), room.size(), blockLength});
        std::copy_n(bytes.begin(), count, room.begin());
        reader.Received(count, [&](const std::string& line) { lines += line; });
        bytes.remove_prefix(count);
    }
    return lines;
}

} // namespace

TEST_CASE("each type of CAN record has its line") {
    const auto type = [](const char* digits) {
        const std::string line = DescribeCanRecord("S"s + digits + "T");
        return line.substr(10, line.size() - 11); // without CPC_MSG_T_ and the line end
    };
    const Row<std::string, const char*> types[] = {
        {"ff", "UNKNOWN (255)"}, {"A0", "UNKNOWN (160)"},
        {"", "RESYNC"},          {"1", "CAN"}, // the first digit alone
        {"x2", "BUSLOAD"},                     // the second alone
        {"Gg", "RESYNC"},        {"0A", "POWERUP"},
        {"09", "TXACK"},         {"05", "UNKNOWN (5)"},
        {"11", "XRTR"},          {"16", "KEEPALIVE"},
        {"17", "UNKNOWN (23)"}};
    CheckRows(type, types);
    const Row<std::string, const char*> rows[] = {
        //  type     1-10                id       count data
        {"S10 0102030405060708090", "0 ()\n"},
        {"S100102030405060708090a2301000003aB00 7T", "123 (ab 00 07 )\n"},
        {"S1001020304050607080900efBEadDE0111T", "deadbeef (11 )\n"},
        {"S10010203040506070809000000000000T", "0 ()\n"},
        {"S100102030405060708090001000000022T", "1 (02 00 )\n"}, // announced, but not there
    };
    CheckRows(DescribeCanRecord, rows);
    CHECK(DescribeCanRecord("S1001020304050607080900000000 0ff1T").size() == 3 + 255 * 3 + 2);
}

TEST_CASE("records are found however the stream is divided") {
    const std::string stream = "xyS01T\r\nS1001020304050607080900efBEadDE0111TTTS05T";
    const std::string lines =
        "skipped 2\nCPC_MSG_T_CAN\nskipped 2\ndeadbeef (11 )\nskipped 2\nCPC_MSG_T_UNKNOWN (5)\n";
    for (std::size_t length = 1; length <= stream.size(); ++length) {
        CanRecordReader reader;
        CHECK(Feed(reader, stream, length) == lines);
        CHECK(Feed(reader, std::string(5000, 'S') + "T", length).starts_with("Receive Buffer Overflow\n"));
    }
    CanRecordReader reader;
    for (int i = 0; i < 3000; ++i) { // over the end of the receive buffer again and again
        REQUIRE(Feed(reader, stream, 100) == lines);
    }
}

TEST_CASE("a record ends within its buffer or is dropped together with what was received behind it") {
    CanRecordReader reader;
    CHECK(Feed(reader, "S01" + std::string(4092, '0') + "T") == "CPC_MSG_T_CAN\n"); // 4096 in all
    CHECK(Feed(reader, "S" + std::string(4095, '0')) == "Receive Buffer Overflow\n");
    CHECK(Feed(reader, "TS01T") == "skipped 1\nCPC_MSG_T_CAN\n");

    reader.Restart();
    Feed(reader, "S" + std::string(3999, '0'));
    Feed(reader, std::string(95, 'x')); // one byte of room is left
    CHECK(Feed(reader, "T") == "CPC_MSG_T_RESYNC\n");
    reader.Restart();
    CHECK(Feed(reader, "xS" + std::string(4094, '0')) == "skipped 1\n");
    CHECK(Feed(reader, "0S02TS02T") == "Receive Buffer Overflow\n"); // all of this block is gone
    CHECK(Feed(reader, "S03T") == "skipped 8\nCPC_MSG_T_STRING\n");
    Feed(reader, "S0");
    reader.Restart();
    CHECK(Feed(reader, "4TS04T") == "skipped 2\nCPC_MSG_T_CONTI\n");
}
