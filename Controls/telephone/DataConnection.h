#pragma once

#include "Controls/framework/WorkerThread.h"
#include "Controls/telephone/ModemPort.h"
#include "Panelhost/Hostinfo.h"
#include "logic/TelephoneTerminal.h"

#include <string>
#include <string_view>

// A connected data call and the thread that serves the terminal at its other end.
class DataConnection {
public:
    DataConnection(HOSTINFO& control, Handle port)
        : control_(control), window_(control.window), port_(std::move(port)) {}
    // Closes the port and ends the thread, even in the middle of a line.
    ~DataConnection();
    DataConnection(const DataConnection&) = delete;
    DataConnection& operator=(const DataConnection&) = delete;

    // Gives the port up if it is that one, which then stays open.
    void LeaveOpen(HANDLE port) { port_.LeaveOpen(port); }
    // Welcomes the caller and starts the thread.
    void Start();
    // On WorkerCalls::MESSAGE to the control's window.
    void ServeCalls() { calls_.Serve(); }

private:
    static unsigned __stdcall ThreadMain(void* connection);
    void Serve();
    // False when the connection is being ended.
    bool Take(char character);
    bool Execute();
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
    WorkerThread thread_;
};
