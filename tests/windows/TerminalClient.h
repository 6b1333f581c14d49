#pragma once

#include <winsock2.h> // refuses to stand behind windows.h

#include <string>

// A socket of the test that waits for nothing without dispatching messages meanwhile: what is tested may need
// this thread.
class TestSocket {
public:
    explicit TestSocket(SOCKET socket = INVALID_SOCKET);
    ~TestSocket() { Close(); }
    TestSocket(TestSocket&& other) noexcept : socket_(other.Release()) {}
    TestSocket& operator=(TestSocket&& other) noexcept;

    static TestSocket Connected(u_short port);

    SOCKET Get() const { return socket_; }
    bool IsOpen() const { return socket_ != INVALID_SOCKET; }
    SOCKET Release();
    void Close();
    // The peer sees a reset instead of an end.
    void Reset();
    // Nothing more will be sent.
    void EndSending() const { shutdown(socket_, SD_SEND); }
    // How much of it was sent in that time, in milliseconds.
    std::size_t Send(const std::string& bytes, DWORD patience = 20000) const;
    // That many bytes, or as many as came in time or until the peer ended the connection.
    std::string Receive(std::size_t count, DWORD patience = 20000) const;
    // Whether the peer ends the connection in time.
    bool AwaitEnd(DWORD patience = 20000) const;

private:
    SOCKET socket_;
};

// Listens on a port of its own, of the system's choice unless one is given.
class TestListener {
public:
    explicit TestListener(u_short port = 0);
    bool IsBound() const { return isBound_; } // nobody else has that port
    u_short Port() const { return port_; }
    TestSocket Accept() const; // not open when nobody comes in time

private:
    TestSocket socket_;
    u_short port_ = 0;
    bool isBound_ = false;
};

constexpr u_short TERMINAL_PORT = 23;
