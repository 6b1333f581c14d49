#pragma once

#include "base/Sockets.h"

#include "base/Threads.h"
#include "logic/remote/CanRecords.h"
#include "logic/remote/HostPort.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>

// The stream that carries the records of a CAN interface. The user-interface thread opens and closes it, the
// server thread receives. Each record is described on the trace.
class CanChannel {
public:
    CanChannel() = default;
    ~CanChannel() { End(); }
    CanChannel(const CanChannel&) = delete;
    CanChannel& operator=(const CanChannel&) = delete;

    // Signalled when there is something to receive.
    HANDLE ReadyEvent() const { return state_->ready.Get(); }
    // Takes a connected stream socket over in place of the one before.
    void Attach(Socket socket);
    // Connects a socket aside and attaches it; another call before that has been done takes its place.
    // Failures are traced.
    void Connect(const logic::HostPort& target);
    void Close();
    // Closes it for good: what was received and not described yet stays so.
    void End();
    // On the server thread, when the event is signalled.
    void Receive();

private:
    // Shared with the task that connects, which may outlive the channel.
    struct State {
        SharedLock lock;
        Socket socket;
        SocketEvent ready;
        int attached = 0; // how many sockets there have been
        std::optional<logic::HostPort> wanted;
        bool isConnecting = false;
        Event isChanged{Event::ManualReset}; // what is connected at present is no longer wanted

        void Attach(Socket newSocket); // under the lock
        void Close();                  // under the lock
    };

    static void ConnectAside(State& state);
    static Socket ConnectTo(const logic::HostPort& target, const Event& isChanged);
    // The number of bytes received, 0 at the end of the stream, below 0 an error with its sign changed.
    int ReceiveBlock();

    const std::shared_ptr<State> state_ = std::make_shared<State>();
    std::atomic<bool> isEnding_ = false;
    // Of the server thread.
    logic::CanRecordReader reader_;
    int reading_ = 0; // the socket that the reader has been reading, as counted in the state
};
