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

std::array<std::uint8_t, ECHO_REQUEST_LENGTH> EchoRequest(std::uint32_t tickCount, EchoNumber number) {
    std::array<std::uint8_t, ECHO_REQUEST_LENGTH> bytes{};
    bytes[0] = 8; // echo request
    bytes[4] = static_cast<std::uint8_t>(number.identifier);
    bytes[5] = static_cast<std::uint8_t>(number.identifier >> 8);
    bytes[6] = static_cast<std::uint8_t>(number.sequence);
    bytes[7] = static_cast<std::uint8_t>(number.sequence >> 8);
    for (std::size_t i = 0; i < 4; ++i) {
        bytes[9 + i] = static_cast<std::uint8_t>(tickCount >> (8 * i));
    }
    std::iota(bytes.begin() + 13, bytes.end(), std::uint8_t{0x20});
    const std::uint16_t checksum = InternetChecksum(bytes);
    bytes[2] = static_cast<std::uint8_t>(checksum);
    bytes[3] = static_cast<std::uint8_t>(checksum >> 8);
    return bytes;
}

std::optional<EchoReply> ReadEchoReply(std::span<const std::uint8_t> datagram) {
    constexpr std::size_t LEAST_HEADER = 20;
    constexpr std::size_t ECHO_HEADER = 8;
    constexpr std::uint8_t ICMP = 1;
    if (datagram.size() < LEAST_HEADER || datagram[0] >> 4 != 4 || datagram[9] != ICMP ||
        (datagram[6] & 0x3F) != 0 || datagram[7] != 0) {
        return std::nullopt;
    }
    const std::size_t header = (datagram[0] & 0xFU) * 4U;
    if (header < LEAST_HEADER || datagram.size() < header + ECHO_HEADER) {
        return std::nullopt;
    }
    const auto message = datagram.subspan(header);
    const bool isReply = message[0] == 0 && message[1] == 0;
    if (!isReply || InternetChecksum(message) != 0) {
        return std::nullopt;
    }
    EchoReply reply;
    for (std::size_t i = 12; i < 16; ++i) {
        reply.address = reply.address << 8 | datagram[i];
    }
    reply.number.identifier = static_cast<std::uint16_t>(message[4] | message[5] << 8);
    reply.number.sequence = static_cast<std::uint16_t>(message[6] | message[7] << 8);
    return reply;
}

} // namespace logic
