#include <winsock2.h> // refuses to stand behind windows.h

#include "Panelhost/devices/NetworkThread.h"

#include "Panelhost/Trace.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <mutex>

namespace {

// Windows Sockets, as long as a thread needs them.
class SocketsInUse {
public:
    SocketsInUse() {
        constexpr WORD version = MAKEWORD(2, 2);
        WSADATA data{};
        isUsed_ = WSAStartup(version, &data) == 0;
    }
    ~SocketsInUse() {
        if (isUsed_) {
            WSACleanup();
        }
    }
    SocketsInUse(const SocketsInUse&) = delete;
    SocketsInUse& operator=(const SocketsInUse&) = delete;

private:
    bool isUsed_ = false;
};

} // namespace

logic::Milliseconds NetworkClock() {
    using namespace std::chrono;
    constexpr logic::Milliseconds beginning = 1'000'000; // nothing happened at 0
    static const auto start = steady_clock::now();
    return beginning +
           static_cast<logic::Milliseconds>(duration_cast<milliseconds>(steady_clock::now() - start).count());
}

NetworkThread::NetworkThread() = default;
NetworkThread::~NetworkThread() = default; // the worker ends with it

bool NetworkThread::Add(std::shared_ptr<NetworkConnection> connection) {
    if (count_ == MOST_CONNECTIONS) {
        return false;
    }
    worker_->Add(connection);
    if (!isStarted_) {
        isStarted_ = worker_.Start(0);
    }
    if (!isStarted_) {
        worker_->Remove(connection);
        return false;
    }
    ++count_;
    return true;
}

void NetworkThread::Remove(const std::shared_ptr<NetworkConnection>& connection) {
    --count_;
    worker_->Remove(connection);
}

void NetworkThread::Wake() {
    worker_->Wake();
}

void NetworkThread::Loop::Add(std::shared_ptr<NetworkConnection> connection) {
    {
        const std::lock_guard guard(lock_);
        ending_.reserve(ending_.size() + connections_.size() + 1); // ending takes no memory
        connections_.push_back(std::move(connection));
    }
    Wake();
}

void NetworkThread::Loop::Remove(const std::shared_ptr<NetworkConnection>& connection) {
    {
        const std::lock_guard guard(lock_);
        if (std::erase(connections_, connection) > 0) {
            ending_.push_back(connection);
        }
    }
    Wake();
}

void NetworkThread::Loop::Stop() {
    isStopping_ = true;
    Wake();
}

NetworkThread::Loop::Connections NetworkThread::Loop::Current() {
    Connections ending;
    Connections current;
    {
        const std::lock_guard guard(lock_);
        ending.swap(ending_);
        current = connections_;
        ending_.reserve(current.size());
    }
    EndThose(ending);
    return current;
}

void NetworkThread::Loop::EndThose(const Connections& connections) {
    for (const auto& connection : connections) {
        connection->End(NetworkClock());
    }
}

void NetworkThread::Loop::Run() {
    try {
        Serve();
    } catch (const std::exception& failure) {
        TRACE("The network thread has ended: %s\n", failure.what());
        const std::lock_guard guard(lock_);
        for (const auto& connection : connections_) {
            connection->Fail();
        }
    }
}

void NetworkThread::Loop::Serve() {
    const SocketsInUse sockets;
    Connections current;
    while (!isStopping_) {
        current = Current();
        HANDLE events[MOST_CONNECTIONS + 1] = {wake_.Get()};
        DWORD count = 1;
        logic::Milliseconds next = NetworkClock() + 1000;
        for (const auto& connection : current) {
            next = std::min(next, connection->Work(NetworkClock()));
            events[count++] = connection->Event();
        }
        const logic::Milliseconds now = NetworkClock();
        if (next > now) {
            WSAWaitForMultipleEvents(count, events, FALSE, static_cast<DWORD>(next - now), FALSE);
        }
    }
    EndThose(Current());
}
