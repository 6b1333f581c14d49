// Addresses of the form "host:port".
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace logic {

struct HostPort {
    std::string host; // name or dotted address, 1 to 253 characters without blanks
    std::uint16_t port = 0;

    bool operator==(const HostPort&) const = default;
};

// Nothing when the host is missing or too long, or the port is no number from 1 to 65535.
std::optional<HostPort> ParseHostPort(std::string_view text);

} // namespace logic
