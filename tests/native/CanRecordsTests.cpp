#include "logic/CanRecords.h"
#include "tests/native/Tables.h"

#include <algorithm>

using namespace logic;
using namespace std::string_literals;

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
    const char* const names[] = {
        "RESYNC", "CAN",   "BUSLOAD", "STRING",  "CONTI",    "UNKNOWN (5)", "UNKNOWN (6)", "MEM",
        "RTR",    "TXACK", "POWERUP", "CMD_NO",  "CAN_PRMS", "ABORTED",     "CANSTATE",    "RESET",
        "",       "XRTR",  "INFO",    "CONTROL", "CONFIRM",  "OVERRUN",     "KEEPALIVE",   "UNKNOWN (23)"};
    for (unsigned type = 0; type < std::size(names); ++type) {
        if (type == 16)
            continue;
        char record[8];
        std::snprintf(record, sizeof record, "S%02xT", type);
        CHECK(DescribeCanRecord(record) == "CPC_MSG_T_"s + names[type] + "\n");
    }
    const Row<std::string, const char*> rows[] = {
        {"SffT", "CPC_MSG_T_UNKNOWN (255)\n"},
        {"SFfT", "CPC_MSG_T_UNKNOWN (255)\n"},
        {"ST", "CPC_MSG_T_RESYNC\n"},
        {"S1T", "CPC_MSG_T_CAN\n"},      // the first digit alone
        {"Sx2T", "CPC_MSG_T_BUSLOAD\n"}, // the second alone
        {"SGgT", "CPC_MSG_T_RESYNC\n"},
        {"S0AT", "CPC_MSG_T_POWERUP\n"},
        {"SA0T", "CPC_MSG_T_UNKNOWN (160)\n"},
        {"S@`T", "CPC_MSG_T_RESYNC\n"}, // beside the letters
        {"S/:T", "CPC_MSG_T_RESYNC\n"}, // beside the digits
        {"S09T", "CPC_MSG_T_TXACK\n"},
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
    for (int i = 0; i < 3000; ++i) // over the end of the receive buffer again and again
        REQUIRE(Feed(reader, stream, 100) == lines);
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
