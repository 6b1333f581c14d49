#include "Controls/interfaces/network/HostProbe.h"

#include "Panelhost/Trace.h"
#include "base/Handles.h"

#include <algorithm>
#include <iphlpapi.h>
#include <icmpapi.h>
#include <mutex>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int LONGEST_ANSWER = 2048; // bytes

// No two of them alike on this machine, as far as that can be had.
std::uint16_t NextIdentifier() {
    static std::atomic<unsigned> count = 0;
    return static_cast<std::uint16_t>(GetCurrentProcessId() * 31 + ++count * 257);
}

int MillisecondsSince(Clock::time_point start) {
    return static_cast<int>(
        std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start).count());
}

// The system's own echo service, which needs no special right. A newer library has it in another place.
class EchoService {
public:
    EchoService() : library_(LoadLibraryA("iphlpapi.dll")) {
        if (library_ != nullptr) {
            Find(create_, "IcmpCreateFile");
            Find(send_, "IcmpSendEcho");
            Find(close_, "IcmpCloseHandle");
        }
        handle_ = IsThere() ? create_() : INVALID_HANDLE_VALUE;
    }
    ~EchoService() {
        if (handle_ != INVALID_HANDLE_VALUE) {
            close_(handle_);
        }
    }
    EchoService(const EchoService&) = delete;
    EchoService& operator=(const EchoService&) = delete;

    std::optional<int> Ask(const in_addr& host, int timeout) const {
        if (handle_ == INVALID_HANDLE_VALUE) {
            return std::nullopt;
        }
        char data[] = "echo";
        alignas(ICMP_ECHO_REPLY) char answer[sizeof(ICMP_ECHO_REPLY) + sizeof data + 64];
        const DWORD count = send_(handle_, host.s_addr, data, sizeof data, nullptr, answer, sizeof answer,
                                  static_cast<DWORD>(timeout));
        const auto& reply = *reinterpret_cast<const ICMP_ECHO_REPLY*>(answer);
        if (count == 0 || reply.Status != 0 || reply.Address != host.s_addr) {
            return std::nullopt;
        }
        return static_cast<int>(reply.RoundTripTime);
    }

private:
    template <class Function>
    void Find(Function*& function, const char* name) {
        function = reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library_.get(), name)));
    }
    bool IsThere() const { return create_ != nullptr && send_ != nullptr && close_ != nullptr; }

    const Library library_;
    decltype(IcmpCreateFile)* create_ = nullptr;
    decltype(IcmpSendEcho)* send_ = nullptr;
    decltype(IcmpCloseHandle)* close_ = nullptr;
    HANDLE handle_ = INVALID_HANDLE_VALUE;
};

} // namespace

HostProbe::HostProbe(HWND window, std::function<void()> changed)
    : window_(window), changed_(std::move(changed)), identifier_(NextIdentifier()) {}

void HostProbe::Ask(const Settings& settings) {
    {
        const std::lock_guard guard(lock_);
        settings_ = settings;
        isAsked_ = true;
    }
    wake_.Set();
}

logic::HostStates HostProbe::States() const {
    const SharedLock::Reading reading(lock_);
    return states_;
}

void HostProbe::Stop() {
    isStopping_ = true;
    calls_.Close();
    stop_.Set();
    wake_.Set();
}

void HostProbe::Run() {
    while (!isStopping_) {
        Settings settings;
        bool isAsked = false;
        {
            const std::lock_guard guard(lock_);
            isAsked = std::exchange(isAsked_, false);
            settings = settings_;
        }
        if (!isAsked) {
            WaitForSingleObject(wake_.Get(), INFINITE);
            continue;
        }
        AskAll(settings);
        Publish(settings);
    }
}

void HostProbe::AskAll(const Settings& settings) {
    if (settings.hosts != hosts_) {
        hosts_ = settings.hosts;
        asked_.assign(hosts_.size(), {});
        const std::lock_guard guard(lock_);
        states_ = logic::HostStates(hosts_);
    }
    for (std::size_t i = 0; i < hosts_.size() && !isStopping_; ++i) {
        if (!asked_[i].address || !asked_[i].milliseconds) { // it may have another one by now
            asked_[i].address = AddressOf(hosts_[i].c_str());
        }
        asked_[i].milliseconds.reset();
    }
    if (!AskBySocket(settings.timeout)) {
        AskBySystem(settings.timeout);
    }
}

bool HostProbe::AskBySocket(int timeout) {
    if (!socket_.IsOpen()) {
        socket_ = Socket(::socket(AF_INET, SOCK_RAW, IPPROTO_ICMP));
        if (!socket_.IsOpen()) {
            return false;
        }
        socket_.Select(socketEvent_.Get(), FD_READ);
    }
    SendRequests();
    TakeAnswers(timeout);
    return true;
}

void HostProbe::SendRequests() {
    for (Asked& host : asked_) {
        host.number = {identifier_, ++sequence_};
        host.sent = Clock::now();
        if (!host.address) {
            continue;
        }
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr = *host.address;
        const auto request = logic::EchoRequest(GetTickCount(), host.number);
        // A request that cannot be sent is lost as one that is not answered.
        sendto(socket_.Get(), reinterpret_cast<const char*>(request.data()), static_cast<int>(request.size()),
               0, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    }
}

void HostProbe::TakeAnswers(int timeout) {
    const HANDLE handles[] = {stop_.Get(), socketEvent_.Get()};
    const Clock::time_point start = Clock::now();
    const auto isComplete = [this] {
        return std::all_of(asked_.begin(), asked_.end(),
                           [](const Asked& host) { return host.milliseconds || !host.address; });
    };
    while (!isComplete()) {
        const int left = timeout - MillisecondsSince(start);
        if (left <= 0 ||
            WaitForMultipleObjects(2, handles, FALSE, static_cast<DWORD>(left)) != WAIT_OBJECT_0 + 1) {
            return;
        }
        // Others send here too, as fast as they like.
        while (MillisecondsSince(start) < timeout && TakeAnswer()) {
        }
    }
}

bool HostProbe::TakeAnswer() {
    char datagram[LONGEST_ANSWER];
    sockaddr_in from{};
    int length = sizeof from;
    const int size =
        recvfrom(socket_.Get(), datagram, sizeof datagram, 0, reinterpret_cast<sockaddr*>(&from), &length);
    if (size == SOCKET_ERROR) {
        return WSAGetLastError() == WSAEMSGSIZE; // one of somebody else
    }
    const auto reply = logic::ReadEchoReply(
        {reinterpret_cast<const std::uint8_t*>(datagram), static_cast<std::size_t>(size)});
    if (!reply) {
        return true;
    }
    for (Asked& host : asked_) {
        const bool isHis = host.address && reply->number == host.number &&
                           reply->address == ntohl(host.address->s_addr) &&
                           from.sin_addr.s_addr == host.address->s_addr;
        if (isHis && !host.milliseconds) {
            host.milliseconds = MillisecondsSince(host.sent);
        }
    }
    return true;
}

void HostProbe::AskBySystem(int timeout) {
    if (!std::exchange(isTold_, true)) {
        TRACE("Host check: raw sockets are not permitted; the system's echo service is used\n");
    }
    const EchoService service;
    for (Asked& host : asked_) {
        if (host.address && !isStopping_) {
            host.milliseconds = service.Ask(*host.address, timeout);
        }
    }
}

void HostProbe::Publish(const Settings& settings) {
    if (isStopping_) {
        return;
    }
    {
        const std::lock_guard guard(lock_);
        for (std::size_t i = 0; i < asked_.size(); ++i) {
            states_.Take(i, asked_[i].milliseconds, settings.tries);
        }
    }
    calls_.Run(window_, stop_.Get(), changed_);
}
