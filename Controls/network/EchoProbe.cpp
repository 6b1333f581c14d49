#include "Controls/network/EchoProbe.h"

#include "Controls/network/Sockets.h"
#include "Panelhost/Trace.h"
#include "logic/EchoRequest.h"

#include <cstring>

namespace {

constexpr long TIME_OUT = 2;        // seconds
constexpr int LONGEST_ANSWER = 321; // bytes

bool FindHost(const char* host, sockaddr_in& address) {
    const hostent* found = gethostbyname(host);
    if (found == nullptr || found->h_addrtype != AF_INET || found->h_addr_list[0] == nullptr) {
        TRACE("Host not found: %s\n", host);
        return false;
    }
    address.sin_family = AF_INET;
    std::memcpy(&address.sin_addr, found->h_addr_list[0], sizeof address.sin_addr);
    return true;
}

void SendRequest(const Socket& socket, const sockaddr_in& address) {
    const auto request = logic::EchoRequest(GetTickCount());
    if (sendto(socket.Get(), reinterpret_cast<const char*>(request.data()), static_cast<int>(request.size()),
               0, reinterpret_cast<const sockaddr*>(&address), sizeof address) == SOCKET_ERROR) {
        TRACE("sendto()");
    }
}

int AwaitAnswer(const Socket& socket) {
    fd_set readable;
    FD_ZERO(&readable);
    FD_SET(socket.Get(), &readable);
    timeval timeOut{TIME_OUT, 0};
    const int ready = select(0, &readable, nullptr, nullptr, &timeOut);
    if (ready == SOCKET_ERROR) {
        TRACE("select()\n");
        return 0;
    }
    if (ready == 0) {
        TRACE("TimeOut\n");
        return 0;
    }
    char answer[LONGEST_ANSWER];
    if (recvfrom(socket.Get(), answer, sizeof answer, 0, nullptr, nullptr) == SOCKET_ERROR) {
        TRACE("recvfrom()");
    }
    return 1;
}

} // namespace

int PingHost(const char* host) {
    Socket socket(::socket(AF_INET, SOCK_RAW, IPPROTO_ICMP));
    if (!socket.IsOpen()) {
        TRACE("socket()");
        return 0;
    }
    sockaddr_in address{};
    if (!FindHost(host, address)) {
        return 0;
    }
    SendRequest(socket, address);
    const int answered = AwaitAnswer(socket);
    if (socket.Close() != 0) {
        TRACE("closesocket()");
    }
    return answered;
}
