#pragma once

#include "Controls/network/Sockets.h"

#include "Controls/framework/WorkerThread.h"
#include "Controls/network/CanChannel.h"
#include "Controls/network/PeerName.h"
#include "Panelhost/Hostinfo.h"
#include "logic/Terminal.h"

#include <string_view>

// The terminal on TCP port 23 and the thread that serves it. It also receives from the CAN channel. One
// terminal is connected at a time: another one takes its place.
class TerminalServer {
public:
    TerminalServer(HOSTINFO& control, CanChannel& can)
        : control_(control), window_(control.window), can_(can) {}
    ~TerminalServer() { Stop(); }
    TerminalServer(const TerminalServer&) = delete;
    TerminalServer& operator=(const TerminalServer&) = delete;

    // 0, 16 without a socket or 42 without a thread. A port that is taken is traced and the thread started
    // all the same.
    int Start();
    // Ends the thread and closes everything; waits for no more than what the thread itself is doing.
    void Stop();
    // On WorkerCalls::MESSAGE to the control's window.
    void ServeCalls() { calls_.Serve(); }

private:
    static unsigned __stdcall ThreadMain(void* server);
    void Listen();
    void Serve();
    void ServeListening();
    void ServeClient();
    void Accept();
    // One block out of the socket. The number of bytes, 0 at the end, below 0 an error with its sign changed.
    int ReceiveBlock();
    void Take(std::string_view block);
    // Whether the line was carried out; false when the server stops.
    bool Execute();
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
    CanChannel& can_;
    const PeerName peerName_;
    const Event stop_{Event::ManualReset};
    const SocketEvent listenEvent_;
    const SocketEvent clientEvent_;
    Socket listening_;
    Socket client_;
    Socket retired_;
    long clientEvents_ = 0; // of the client socket, still to be dealt with
    logic::Terminal terminal_;
    WorkerThread thread_;
};
