#include "base/Sockets.h"

#include <cstring>

std::optional<in_addr> AddressOf(const char* host) {
    const hostent* found = gethostbyname(host);
    if (found == nullptr || found->h_addrtype != AF_INET || found->h_addr_list[0] == nullptr) {
        return std::nullopt;
    }
    in_addr address{};
    std::memcpy(&address, found->h_addr_list[0], sizeof address);
    return address;
}
