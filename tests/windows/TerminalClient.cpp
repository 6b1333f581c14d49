#include "tests/windows/TerminalClient.h"

#include "tests/windows/TestPanel.h"

#include <utility>

namespace {

sockaddr_in Loopback(u_short port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    return address;
}

} // namespace

TestSocket::TestSocket(SOCKET socket) : socket_(socket) {
    u_long isNonBlocking = 1;
    if (IsOpen()) {
        ioctlsocket(socket, FIONBIO, &isNonBlocking);
    }
}

TestSocket& TestSocket::operator=(TestSocket&& other) noexcept {
    Close();
    socket_ = other.Release();
    return *this;
}

TestSocket TestSocket::Connected(u_short port) {
    const SOCKET made = socket(AF_INET, SOCK_STREAM, 0);
    const sockaddr_in address = Loopback(port);
    if (connect(made, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        closesocket(made);
        return TestSocket();
    }
    return TestSocket(made);
}

SOCKET TestSocket::Release() {
    return std::exchange(socket_, INVALID_SOCKET);
}

void TestSocket::Close() {
    if (IsOpen()) {
        closesocket(Release());
    }
}

void TestSocket::Reset() {
    const linger atOnce{1, 0};
    setsockopt(socket_, SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&atOnce), sizeof atOnce);
    Close();
}

std::size_t TestSocket::Send(const std::string& bytes, DWORD patience) const {
    std::size_t sent = 0;
    const auto sendSome = [&] {
        const int count = send(socket_, bytes.data() + sent, static_cast<int>(bytes.size() - sent), 0);
        sent += count > 0 ? static_cast<std::size_t>(count) : 0;
        return sent == bytes.size() || (count < 0 && WSAGetLastError() != WSAEWOULDBLOCK);
    };
    Await(sendSome, patience);
    return sent;
}

std::string TestSocket::Receive(std::size_t count, DWORD patience) const {
    std::string received(count, '\0');
    std::size_t size = 0;
    const auto receiveSome = [&] {
        const int got = recv(socket_, received.data() + size, static_cast<int>(count - size), 0);
        size += got > 0 ? static_cast<std::size_t>(got) : 0;
        return size == count || got == 0 || (got < 0 && WSAGetLastError() != WSAEWOULDBLOCK);
    };
    Await(receiveSome, patience);
    received.resize(size);
    return received;
}

bool TestSocket::AwaitEnd(DWORD patience) const {
    const auto hasEnded = [this] {
        char block[4096];
        const int got = recv(socket_, block, sizeof block, 0);
        return got == 0 || (got < 0 && WSAGetLastError() != WSAEWOULDBLOCK);
    };
    return Await(hasEnded, patience);
}

TestListener::TestListener(u_short port) : socket_(socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address = Loopback(port);
    int length = sizeof address;
    isBound_ = bind(socket_.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    listen(socket_.Get(), 5);
    getsockname(socket_.Get(), reinterpret_cast<sockaddr*>(&address), &length);
    port_ = ntohs(address.sin_port);
}

TestSocket TestListener::Accept() const {
    TestSocket accepted;
    Await([&] {
        accepted = TestSocket(accept(socket_.Get(), nullptr, nullptr));
        return accepted.IsOpen();
    });
    return accepted;
}
