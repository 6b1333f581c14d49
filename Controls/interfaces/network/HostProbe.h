#pragma once

#include "base/Sockets.h"

#include "base/SharedLock.h"
#include "base/Threads.h"
#include "logic/remote/EchoRequest.h"
#include "logic/remote/HostStates.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

// Asks hosts whether they are there, on the thread that runs it: names are looked up and answers waited for
// there. Only an answer from the host that was asked, to the very request, counts.
class HostProbe {
public:
    struct Settings {
        std::vector<std::string> hosts;
        int timeout = 1000; // milliseconds
        int tries = 2;      // lost in a row before a host counts as gone
    };

    // changed: called on the window's thread when there is something new to be seen.
    HostProbe(HWND window, std::function<void()> changed);

    // From the window's thread: asks all of them once. While that goes on already, once more when it is done.
    void Ask(const Settings& settings);
    // What is known of them.
    logic::HostStates States() const;

    // For Worker.
    void Run();
    void Stop();
    // On WorkerCalls::MESSAGE to the window.
    void ServeCalls() { calls_.Serve(); }

private:
    struct Asked {
        std::optional<in_addr> address; // kept as long as it answers
        logic::EchoNumber number;
        std::chrono::steady_clock::time_point sent;
        std::optional<int> milliseconds; // its answer took
    };

    void AskAll(const Settings& settings);
    // False when the system lets nobody open a raw socket.
    bool AskBySocket(int timeout);
    void SendRequests();
    void TakeAnswers(int timeout);
    bool TakeAnswer();
    void AskBySystem(int timeout);
    void Publish(const Settings& settings);

    const HWND window_;
    const std::function<void()> changed_;
    WorkerCalls calls_;
    const Event stop_{Event::ManualReset};
    const Event wake_{Event::AutoReset};
    std::atomic<bool> isStopping_ = false;

    mutable SharedLock lock_;
    // Guarded by it:
    Settings settings_;
    bool isAsked_ = false;
    logic::HostStates states_;

    // The thread's own:
    std::vector<std::string> hosts_; // that were asked last
    std::vector<Asked> asked_;
    Socket socket_;
    const SocketEvent socketEvent_{SocketEvent::ResetsItself};
    const std::uint16_t identifier_;
    std::uint16_t sequence_ = 0;
    bool isTold_ = false; // that there is no raw socket
};
