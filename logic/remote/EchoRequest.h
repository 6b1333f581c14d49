// The message that asks a host whether it is there.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>

namespace logic {

constexpr std::size_t ECHO_REQUEST_LENGTH = 45; // bytes

// One's-complement sum of the 16-bit words, lowest byte first; an odd last byte is added as a low byte. To be
// stored lowest byte first.
std::uint16_t InternetChecksum(std::span<const std::uint8_t> bytes);

// Which request it is, so that its answer can be told from others.
struct EchoNumber {
    std::uint16_t identifier = 1; // of who asks
    std::uint16_t sequence = 1;

    bool operator==(const EchoNumber&) const = default;
};

// An ICMP echo request with identifier and sequence number, the tick count in milliseconds and the characters
// 0x20 to 0x3F as data.
std::array<std::uint8_t, ECHO_REQUEST_LENGTH> EchoRequest(std::uint32_t tickCount, EchoNumber number = {});

struct EchoReply {
    std::uint32_t address = 0; // it came from, the first byte of the dotted form highest
    EchoNumber number;
};

// Reads a datagram as a raw socket receives it, its IPv4 header included. Nothing when it is no sound echo
// reply: one's own request, another kind, a wrong checksum, cut short, a piece of a longer one.
std::optional<EchoReply> ReadEchoReply(std::span<const std::uint8_t> datagram);

} // namespace logic
