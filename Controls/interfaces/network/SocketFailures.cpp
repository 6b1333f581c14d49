#include "Controls/interfaces/network/SocketFailures.h"

#include "Panelhost/Trace.h"

std::optional<in_addr> FindHost(const char* host) {
    const auto address = AddressOf(host);
    if (!address) {
        TRACE("Host not found: %s\n", host);
    }
    return address;
}

void TraceSocketError(const char* what, int error) {
    TRACE("Windows Sockets error %d: %s\n", error, what);
}
