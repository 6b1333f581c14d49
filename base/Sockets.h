#pragma once

#include <winsock2.h> // refuses to stand behind windows.h

#include <optional>
#include <utility>

// Owners of the handles of Windows Sockets, and what its users share.

// Looks the address of a name up, or reads a dotted one; nothing for a host that is not found. Blocks for as
// long as the look-up takes.
std::optional<in_addr> AddressOf(const char* host);

class Socket {
public:
    explicit Socket(SOCKET socket = INVALID_SOCKET) : socket_(socket) {}
    ~Socket() { Close(); }
    Socket(Socket&& other) noexcept : socket_(other.Release()) {}
    Socket& operator=(Socket&& other) noexcept {
        if (this != &other) {
            Close();
            socket_ = other.Release();
        }
        return *this;
    }

    SOCKET Get() const { return socket_; }
    bool IsOpen() const { return socket_ != INVALID_SOCKET; }
    SOCKET Release() { return std::exchange(socket_, INVALID_SOCKET); }
    // 0, also without a socket, or SOCKET_ERROR.
    int Close() {
        const SOCKET socket = Release();
        return socket == INVALID_SOCKET ? 0 : closesocket(socket);
    }
    // A blocking socket no longer blocks when events are selected.
    void Select(WSAEVENT event, long events) const { WSAEventSelect(socket_, event, events); }
    void SelectNothing() const { WSAEventSelect(socket_, nullptr, 0); }

private:
    SOCKET socket_;
};

class SocketEvent {
public:
    enum Kind { StaysSignalled, ResetsItself }; // once it was waited for

    explicit SocketEvent(Kind kind = StaysSignalled)
        : event_(CreateEventA(nullptr, kind == StaysSignalled, FALSE, nullptr)) {}
    ~SocketEvent() {
        if (IsMade()) {
            WSACloseEvent(event_);
        }
    }
    SocketEvent(const SocketEvent&) = delete;
    SocketEvent& operator=(const SocketEvent&) = delete;

    WSAEVENT Get() const { return event_; }
    bool IsMade() const { return event_ != WSA_INVALID_EVENT; }
    // What happened on the socket since the last call. The event is not signalled afterwards.
    WSANETWORKEVENTS Take(const Socket& socket) const {
        WSANETWORKEVENTS happened{};
        if (!socket.IsOpen() || WSAEnumNetworkEvents(socket.Get(), event_, &happened) != 0) {
            WSAResetEvent(event_); // of a socket that is gone
            return {};
        }
        return happened;
    }

private:
    WSAEVENT event_;
};
