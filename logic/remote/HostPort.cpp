#include "logic/remote/HostPort.h"

#include <algorithm>

#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

namespace logic {

namespace {

constexpr std::size_t MAXIMUM_HOST = 253;
constexpr std::int32_t MAXIMUM_PORT = 65535;

bool IsControlOrBlank(char character) {
    return IsBlank(character) || static_cast<unsigned char>(character) < 0x20 || character == ':';
}

} // namespace

std::optional<HostPort> ParseHostPort(std::string_view text) {
    const std::size_t colon = text.rfind(':');
    if (colon == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view host = TrimBlanks(text.substr(0, colon));
    const std::optional<std::int32_t> port = ParseWholeInteger(text.substr(colon + 1));
    if (host.empty() || host.size() > MAXIMUM_HOST ||
        std::any_of(host.begin(), host.end(), IsControlOrBlank) || !port || *port < 1 ||
        *port > MAXIMUM_PORT) {
        return std::nullopt;
    }
    return HostPort{std::string(host), static_cast<std::uint16_t>(*port)};
}

} // namespace logic
