// The message that asks a host whether it is there.
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace logic {

constexpr std::size_t ECHO_REQUEST_LENGTH = 45; // bytes

// One's-complement sum of the 16-bit words, lowest byte first; an odd last byte is added as a low byte. To be
// stored lowest byte first.
std::uint16_t InternetChecksum(std::span<const std::uint8_t> bytes);

// An ICMP echo request with identifier 1, sequence number 1, the tick count in milliseconds and the
// characters 0x20 to 0x3F as data.
std::array<std::uint8_t, ECHO_REQUEST_LENGTH> EchoRequest(std::uint32_t tickCount);

} // namespace logic
