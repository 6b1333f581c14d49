#include "Controls/network/Sockets.h"

#include "Panelhost/Trace.h"

#include <cstring>

std::optional<in_addr> FindHost(const char* host) {
    const hostent* found = gethostbyname(host);
    if (found == nullptr || found->h_addrtype != AF_INET || found->h_addr_list[0] == nullptr) {
        TRACE("Host not found: %s\n", host);
        return std::nullopt;
    }
    in_addr address{};
    std::memcpy(&address, found->h_addr_list[0], sizeof address);
    return address;
}

void TraceSocketError(const char* what, int error) {
    TRACE("Windows Sockets error %d: %s\n", error, what);
}
