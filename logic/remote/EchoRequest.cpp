#include "logic/remote/EchoRequest.h"

#include <numeric>

namespace logic {

std::uint16_t InternetChecksum(std::span<const std::uint8_t> bytes) {
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        sum += i % 2 == 0 ? bytes[i] : static_cast<std::uint32_t>(bytes[i]) << 8;
        sum = (sum & 0xFFFF) + (sum >> 16);
    }
    return static_cast<std::uint16_t>(~sum);
}

std::array<std::uint8_t, ECHO_REQUEST_LENGTH> EchoRequest(std::uint32_t tickCount) {
    std::array<std::uint8_t, ECHO_REQUEST_LENGTH> bytes{};
    bytes[0] = 8; // echo request
    bytes[4] = 1; // identifier
    bytes[6] = 1; // sequence number
    for (std::size_t i = 0; i < 4; ++i) {
        bytes[9 + i] = static_cast<std::uint8_t>(tickCount >> (8 * i));
    }
    std::iota(bytes.begin() + 13, bytes.end(), std::uint8_t{0x20});
    const std::uint16_t checksum = InternetChecksum(bytes);
    bytes[2] = static_cast<std::uint8_t>(checksum);
    bytes[3] = static_cast<std::uint8_t>(checksum >> 8);
    return bytes;
}

} // namespace logic
