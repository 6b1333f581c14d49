#pragma once

#include "base/SharedLock.h"
#include "base/Threads.h"
#include "logic/devices/DeviceLink.h"

#include <atomic>
#include <memory>
#include <vector>

// The clock of everything that has to do with real devices; it only rises.
logic::Milliseconds NetworkClock();

// What the network thread serves: one conversation with a device. All of it but the event is called on that
// thread only.
class NetworkConnection {
public:
    virtual ~NetworkConnection() = default;
    // Signalled when something came; resets itself.
    virtual HANDLE Event() const = 0;
    // Does what is to be done. When it is to be called again at the latest.
    virtual logic::Milliseconds Work(logic::Milliseconds now) = 0;
    // Sends what still has to be sent: the conversation is over.
    virtual void End(logic::Milliseconds now) = 0;
    // The thread ends because of a failure.
    virtual void Fail() noexcept = 0;
};

// The one thread of a panel that has its sockets, from the first real device to the last. It waits for
// nothing but what comes, what is due and its end.
class NetworkThread {
public:
    static constexpr std::size_t MOST_CONNECTIONS = 16;

    NetworkThread();
    // What its connections owe is sent first.
    ~NetworkThread();

    // False when there are too many, or no thread is to be had.
    bool Add(std::shared_ptr<NetworkConnection> connection);
    // It is ended, and let go when that is done.
    void Remove(const std::shared_ptr<NetworkConnection>& connection);
    // There is something to do for one of them.
    void Wake();

private:
    class Loop;

    std::size_t count_ = 0;
    bool isStarted_ = false;
    Worker<Loop> worker_;
};

class NetworkThread::Loop {
public:
    void Run();
    void Stop();
    void Add(std::shared_ptr<NetworkConnection> connection);
    void Remove(const std::shared_ptr<NetworkConnection>& connection);
    void Wake() { wake_.Set(); }

private:
    using Connections = std::vector<std::shared_ptr<NetworkConnection>>;

    void Serve();
    Connections Current();
    void EndThose(const Connections& connections);

    SharedLock lock_; // guards the two lists
    Connections connections_;
    Connections ending_;
    std::atomic<bool> isStopping_ = false;
    const Event wake_{Event::AutoReset};
};
