#pragma once

#include <winsock2.h> // refuses to stand behind windows.h

#include <string>

// Dispatches what waits for this thread, after at most a millisecond.
void Pump();

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
    // How much of it was sent until the peer took no more for as long as that, in milliseconds.
    std::size_t Send(const std::string& bytes, DWORD patience = 5000) const;
    // That many bytes, or as many as there were until the peer ended the connection or nothing came any more.
    std::string Receive(std::size_t count, DWORD patience = 5000) const;
    // Sends, and receives as many bytes as are expected and what comes in a short time behind them.
    std::string Ask(const std::string& bytes, std::size_t expectedCount) const;
    // Whether the peer ends the connection in time.
    bool AwaitEnd(DWORD patience = 5000) const;

private:
    SOCKET socket_;
};

// Listens on a port of the system's choice.
class TestListener {
public:
    TestListener();
    u_short Port() const { return port_; }
    TestSocket Accept() const; // not open when nobody comes in time

private:
    TestSocket socket_;
    u_short port_ = 0;
};

constexpr u_short TERMINAL_PORT = 23;

// The test program started as a client of its own: takes pairs of a text to be sent and the answer that must
// come, control characters as ^J. Returns 0, or the number of the pair that went wrong.
constexpr const char* TERMINAL_CLIENT_SWITCH = "--terminal-client";
int RunTerminalClient(int count, char** arguments);
