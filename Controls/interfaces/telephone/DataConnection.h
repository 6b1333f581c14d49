#pragma once

#include "Controls/interfaces/telephone/ModemPort.h"
#include "Panelhost/Hostinfo.h"
#include "base/Threads.h"
#include "logic/remote/TelephoneTerminal.h"

#include <optional>
#include <string>
#include <string_view>

// A connected data call. Its thread serves the terminal at the other end.
class DataConnection {
public:
    DataConnection(HOSTINFO& control, Handle port)
        : control_(control), window_(control.window), port_(std::move(port)) {}
    ~DataConnection() { port_.Close(); }
    DataConnection(const DataConnection&) = delete;
    DataConnection& operator=(const DataConnection&) = delete;

    // On the thread: welcomes the caller and serves the terminal. Closes the port at its end, even in the
    // middle of a line.
    void Run();
    void Stop();
    // Before the end: gives the port up if it is that one, which then stays open.
    void LeaveOpen(HANDLE port) { port_.LeaveOpen(port); }
    // On WorkerCalls::MESSAGE to the control's window.
    void ServeCalls() { calls_.Serve(); }

private:
    void Serve();
    // False when the connection is being ended.
    bool Take(char character);
    // What is shown in front of the prompt; nothing when the connection is being ended.
    std::optional<std::string> Execute();
    bool Send(std::string text);
    void FinishWriting();

    HOSTINFO& control_; // used on the thread of its window only
    const HWND window_;
    WorkerCalls calls_;
    const Event stop_{Event::ManualReset};
    char received_ = 0;
    std::string sent_;
    Transfer reading_; // into received_
    Transfer writing_; // out of sent_
    ModemPort port_;
    logic::TelephoneTerminal terminal_;
};
