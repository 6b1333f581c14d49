#include "Panelhost/devices/UdpConnection.h"

#include "Panelhost/Trace.h"

namespace {

constexpr int RECEIVE_BUFFER = 1 << 20;
constexpr int DATAGRAMS_AT_ONCE = 256; // then others have their turn

// A port that nobody listens on is told by a failure of the next call; that is no news here.
#ifndef SIO_UDP_CONNRESET
constexpr DWORD SIO_UDP_CONNRESET = 0x9800000C;
#endif

} // namespace

UdpConnection::UdpConnection(HWND window, const sockaddr_in& device)
    : LinkConnection(window), device_(device) {}

std::unique_ptr<logic::DeviceLink> UdpConnection::Open(logic::Milliseconds now) {
    socket_ = Socket(socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP));
    if (socket_.IsOpen()) {
        setsockopt(socket_.Get(), SOL_SOCKET, SO_RCVBUF, reinterpret_cast<const char*>(&RECEIVE_BUFFER),
                   sizeof RECEIVE_BUFFER);
        BOOL isTold = FALSE;
        DWORD size = 0;
        WSAIoctl(socket_.Get(), SIO_UDP_CONNRESET, &isTold, sizeof isTold, nullptr, 0, &size, nullptr,
                 nullptr);
        socket_.Select(event_.Get(), FD_READ);
    } else {
        TRACE("No socket for a device: error %d\n", WSAGetLastError());
    }
    return MakeLink(now);
}

void UdpConnection::Send(std::string_view bytes) {
    // What cannot be sent is as good as lost on the way.
    sendto(socket_.Get(), bytes.data(), static_cast<int>(bytes.size()), 0,
           reinterpret_cast<const sockaddr*>(&device_), sizeof device_);
}

bool UdpConnection::Receive(logic::DeviceLink& link, logic::Milliseconds now) {
    char datagram[65536];
    for (int i = 0; i < DATAGRAMS_AT_ONCE; ++i) {
        sockaddr_in from{};
        int size = sizeof from;
        const int length =
            recvfrom(socket_.Get(), datagram, sizeof datagram, 0, reinterpret_cast<sockaddr*>(&from), &size);
        if (length < 0) {
            if (WSAGetLastError() == WSAECONNRESET) {
                continue;
            }
            return true;
        }
        if (from.sin_addr.s_addr == device_.sin_addr.s_addr && from.sin_port == device_.sin_port) {
            link.Receive({datagram, static_cast<std::size_t>(length)}, now);
        }
    }
    return false;
}

void UdpConnection::End(logic::Milliseconds now) {
    LinkConnection::End(now);
    socket_.Close();
}
