#include "logic/EchoRequest.h"
#include "logic/HostPort.h"

#include <vector>

#include <doctest/doctest.h>

using namespace logic;

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
    for (const std::string& text :
         {std::string(), std::string("host"), std::string("host:"), std::string(":23"), std::string("host:0"),
          std::string("host:65536"), std::string("host:-1"), std::string("host:23x"), std::string("ho st:23"),
          std::string("a:b:23"), std::string("host\x01:23"), std::string(254, 'h') + ":1"}) {
        CAPTURE(text);
        CHECK_FALSE(ParseHostPort(text));
    }
}
