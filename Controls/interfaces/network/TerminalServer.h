#pragma once

#include "base/Sockets.h"

#include "Controls/interfaces/network/CanChannel.h"
#include "Controls/interfaces/network/PeerName.h"
#include "Panelhost/Hostinfo.h"
#include "base/Threads.h"
#include "logic/remote/TelnetFilter.h"
#include "logic/remote/Terminal.h"
#include "logic/remote/TerminalAdmission.h"

#include <chrono>
#include <string>
#include <string_view>

// The terminal on TCP port 23, which a thread serves. It also receives from the CAN channel. One terminal is
// connected at a time: another one takes its place.
class TerminalServer {
public:
    TerminalServer(HOSTINFO& control, std::shared_ptr<CanChannel> can)
        : control_(control), window_(control.window), can_(std::move(can)) {}
    TerminalServer(const TerminalServer&) = delete;
    TerminalServer& operator=(const TerminalServer&) = delete;

    // Before the thread starts. False when the system has nothing left to listen with. A port that is taken
    // is traced and no failure.
    bool Open();
    // On the thread: serves, and closes everything at its end.
    void Run();
    void Stop();
    // On WorkerCalls::MESSAGE to the control's window.
    void ServeCalls() { calls_.Serve(); }

private:
    void Listen();
    void Serve();
    DWORD TimeToWait() const;
    void ReportRefusals();
    void ServeListening();
    void ServeClient();
    // Whether another terminal has come that may connect: it is the next one. Any other is closed.
    bool Accept();
    // The next one takes the place of the one who is connected.
    void Welcome();
    // One block out of the socket. The number of bytes, 0 at the end, below 0 an error with its sign changed.
    int ReceiveBlock();
    // Carries out the lines that the text completes and sends the answers, those of several lines at once.
    void Take(const std::string& text);
    // All of it, or as much as is possible before the server stops, another terminal connects or this one is
    // gone.
    void Send(std::string_view text);
    bool WaitForRoom();
    // The peer sends no more: the socket is kept until another terminal connects, but can be told that this
    // was all.
    void Retire();
    void Drop();

    HOSTINFO& control_; // used on the thread of its window only
    const HWND window_;
    WorkerCalls calls_;
    const std::shared_ptr<CanChannel> can_;
    const PeerName peerName_;
    const Event stop_{Event::ManualReset};
    const SocketEvent listenEvent_;
    const SocketEvent clientEvent_{SocketEvent::ResetsItself};
    Socket listening_;
    Socket client_;
    Socket retired_;
    struct {
        Socket socket;
        in_addr address{};
    } next_; // may connect, and does when the present one can be left
    logic::RefusalCount refusals_;
    in_addr lastRefused_{};
    std::chrono::steady_clock::duration panelTime_{}; // that lines took without a pause
    long clientEvents_ = 0;                           // of the client socket, still to be dealt with
    logic::Terminal terminal_;
    logic::TelnetFilter telnet_; // of the client
};
