#include "Controls/interfaces/network/EchoProbe.h"

#include "Controls/interfaces/network/SocketFailures.h"
#include "Panelhost/Trace.h"
#include "base/Sockets.h"
#include "logic/remote/EchoRequest.h"

namespace {

constexpr long TIME_OUT = 2;        // seconds
constexpr int LONGEST_ANSWER = 321; // bytes

void SendRequest(const Socket& socket, const in_addr& host) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr = host;
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
    const auto address = FindHost(host);
    if (!address) {
        return 0;
    }
    SendRequest(socket, *address);
    const int answered = AwaitAnswer(socket);
    if (socket.Close() != 0) {
        TRACE("closesocket()");
    }
    return answered;
}
