#include "tests/windows/TerminalClient.h"

#include <cstdio>
#include <utility>

namespace {

constexpr DWORD QUIET = 60; // milliseconds after which nothing more is expected

sockaddr_in Loopback(u_short port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    return address;
}

// Runs the attempt until it succeeds or that many milliseconds have passed without progress.
template <class Attempt>
bool Await(DWORD patience, Attempt attempt) {
    for (DWORD start = GetTickCount(); GetTickCount() - start < patience; Pump()) {
        if (attempt()) {
            return true;
        }
    }
    return false;
}

std::string Unescaped(const char* text) {
    std::string bytes;
    for (; *text != '\0'; ++text) {
        bytes += *text == '^' && text[1] != '\0' ? static_cast<char>(*++text - '@') : *text;
    }
    return bytes;
}

} // namespace

void Pump() {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 1, QS_ALLINPUT);
    for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);) {
        DispatchMessageA(&message);
    }
}

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
        const std::size_t rest = bytes.size() - sent;
        const int count =
            send(socket_, bytes.data() + sent, static_cast<int>(rest < 65536 ? rest : 65536), 0);
        sent += count > 0 ? static_cast<std::size_t>(count) : 0;
        return count > 0 || WSAGetLastError() != WSAEWOULDBLOCK;
    };
    for (std::size_t before = 0; sent < bytes.size(); before = sent) {
        if (!Await(patience, sendSome) || sent == before) {
            break;
        }
    }
    return sent;
}

std::string TestSocket::Receive(std::size_t count, DWORD patience) const {
    std::string received;
    const auto receiveSome = [&] {
        char block[4096];
        const std::size_t rest = count - received.size();
        const int got = recv(socket_, block, static_cast<int>(rest < sizeof block ? rest : sizeof block), 0);
        if (got > 0) {
            received.append(block, static_cast<std::size_t>(got));
        }
        return got >= 0 || WSAGetLastError() != WSAEWOULDBLOCK;
    };
    for (std::size_t before = 0; received.size() < count; before = received.size()) {
        if (!Await(patience, receiveSome) || received.size() == before) {
            break;
        }
    }
    return received;
}

std::string TestSocket::Ask(const std::string& bytes, std::size_t expectedCount) const {
    Send(bytes);
    const std::string answer = Receive(expectedCount);
    return answer + Receive(4096, QUIET);
}

bool TestSocket::AwaitEnd(DWORD patience) const {
    return Await(patience, [&] {
        char block[4096];
        const int got = recv(socket_, block, sizeof block, 0);
        return got == 0 || (got < 0 && WSAGetLastError() != WSAEWOULDBLOCK);
    });
}

TestListener::TestListener() : socket_(socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address = Loopback(0);
    int length = sizeof address;
    bind(socket_.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address);
    listen(socket_.Get(), 5);
    getsockname(socket_.Get(), reinterpret_cast<sockaddr*>(&address), &length);
    port_ = ntohs(address.sin_port);
}

TestSocket TestListener::Accept() const {
    TestSocket accepted;
    Await(5000, [&] {
        accepted = TestSocket(accept(socket_.Get(), nullptr, nullptr));
        return accepted.IsOpen();
    });
    return accepted;
}

int RunTerminalClient(int count, char** arguments) {
    WSADATA data;
    WSAStartup(0x0202, &data);
    const TestSocket terminal = TestSocket::Connected(TERMINAL_PORT);
    for (int i = 0; i + 1 < count; i += 2) {
        const std::string expected = Unescaped(arguments[i + 1]);
        const std::string answer = terminal.Ask(Unescaped(arguments[i]), expected.size());
        if (answer != expected) {
            std::printf("\"%s\" was answered by \"%s\"\n", arguments[i], answer.c_str());
            return i / 2 + 1;
        }
    }
    return 0;
}
