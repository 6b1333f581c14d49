// The terminal and the CAN channel of the network interface, beside a socket that echoes and one that only
// reads.

#include <winsock2.h> // refuses to stand behind windows.h

#include "Panelhost/HostInterface.h"
#include "Panelhost/Messages.h"
#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace {

constexpr u_short TERMINAL_PORT = 23;
constexpr int BANNER_LENGTH = 66;
constexpr int SINGLE_LINES = 100;
constexpr int LINES_AT_ONCE = 5000;
constexpr int MANY_LINES = 100000;
constexpr int RECORDS = 20000;
constexpr int TICK = 20; // milliseconds between the ticks of a panel

const std::string LINES[] = {"7\n", "8\n"}; // each sets a value that is new
const std::string PROMPT = "BAR1*value=";   // as long as what the control's name makes of it
const std::string RECORD = "S100102030405060708090a2301000008000102030405060708T";

// A blocking socket; not open when there is nobody to connect to.
class Connection {
public:
    explicit Connection(SOCKET socket) : socket_(socket) {}
    explicit Connection(u_short port) : socket_(socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = htons(port);
        isOpen_ = connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    }
    ~Connection() { closesocket(socket_); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    bool IsOpen() const { return isOpen_; }
    void Send(const std::string& bytes) const {
        int count = 0;
        for (std::size_t sent = 0; sent < bytes.size(); sent += static_cast<std::size_t>(count)) {
            count = send(socket_, bytes.data() + sent, static_cast<int>(bytes.size() - sent), 0);
            if (count <= 0) {
                return;
            }
        }
    }
    int ReceiveSome() { return recv(socket_, block_, sizeof block_, 0); }
    void Receive(std::size_t count) {
        for (std::size_t received = 0; received < count;) {
            const int got = ReceiveSome();
            if (got <= 0) {
                isOpen_ = false;
                return;
            }
            received += static_cast<std::size_t>(got);
        }
    }
    const char* Block() const { return block_; }

private:
    SOCKET socket_;
    bool isOpen_ = true;
    char block_[65536];
};

// Listens on this machine. Answers the port.
u_short Listen(SOCKET listening) {
    sockaddr_in address{};
    int length = sizeof address;
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    bind(listening, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    listen(listening, 1);
    getsockname(listening, reinterpret_cast<sockaddr*>(&address), &length);
    return ntohs(address.sin_port);
}

// Serves one client on a thread of its own, which ends with it. Each block goes to the function.
class BareServer {
public:
    explicit BareServer(std::function<void(const Connection&, const char*, int)> take)
        : listening_(socket(AF_INET, SOCK_STREAM, 0)) {
        port_ = Listen(listening_);
        thread_ = std::thread([this, take = std::move(take)] {
            const auto client = std::make_unique<Connection>(accept(listening_, nullptr, nullptr));
            for (int count = 0; (count = client->ReceiveSome()) > 0;) {
                take(*client, client->Block(), count);
            }
        });
    }
    ~BareServer() {
        thread_.join();
        closesocket(listening_);
    }
    BareServer(const BareServer&) = delete;
    BareServer& operator=(const BareServer&) = delete;

    u_short Port() const { return port_; }

private:
    SOCKET listening_;
    u_short port_ = 0;
    std::thread thread_;
};

// Runs the work of a client on a thread of its own while this one dispatches its messages and ticks; the
// result of the work. longestGap: receives the longest time between two ticks, in seconds.
double AsClient(const BenchPanel& panel, const Workload& work, double* longestGap = nullptr) {
    double result = 0;
    double gap = 0;
    std::atomic<bool> isDone = false;
    std::thread client([&] {
        result = work();
        isDone = true;
    });
    SetTimer(panel.Window(), 1, TICK, nullptr);
    for (double last = Now(); !isDone;) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, TICK, QS_ALLINPUT);
        for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);) {
            if (message.message == WM_TIMER) {
                ph_Tick(panel.Root());
                gap = std::max(gap, Now() - last);
                last = Now();
            }
            DispatchMessageA(&message);
        }
    }
    KillTimer(panel.Window(), 1);
    client.join();
    if (longestGap != nullptr) {
        *longestGap = gap;
    }
    return result;
}

std::string Repeated(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

// The median time from the line feed of a line to the last byte of its prompt.
double MedianAnswer(Connection& server) {
    std::vector<double> times;
    for (int i = 0; i < SINGLE_LINES; ++i) {
        const double start = Now();
        server.Send(LINES[i % 2]);
        server.Receive(PROMPT.size());
        times.push_back(Now() - start);
    }
    std::nth_element(times.begin(), times.begin() + SINGLE_LINES / 2, times.end());
    return times[SINGLE_LINES / 2];
}

// The time for one of many lines that are sent without waiting for the prompts.
double LineOfMany(Connection& server, int count) {
    const double start = Now();
    std::thread sender([&] { server.Send(Repeated(LINES[0] + LINES[1], count / 2)); });
    server.Receive(PROMPT.size() * static_cast<std::size_t>(count));
    sender.join();
    return (Now() - start) / count;
}

void MeasureTerminal(Report& report, const BenchPanel& panel) {
    const BareServer echo([](const Connection& client, const char* block, int count) {
        client.Send(Repeated(PROMPT, static_cast<int>(std::count(block, block + count, '\n'))));
    });
    const auto bare = std::make_unique<Connection>(echo.Port());
    const auto terminal = std::make_unique<Connection>(TERMINAL_PORT);
    AsClient(panel, [&] {
        terminal->Receive(BANNER_LENGTH);
        terminal->Send("bar1*value=0\n");
        terminal->Receive(PROMPT.size());
        return 0.0;
    });
    report.Measure(
        "one line, from line feed to prompt",
        [&] { return AsClient(panel, [&] { return MedianAnswer(*terminal); }); }, "a bare echo",
        [&] { return AsClient(panel, [&] { return MedianAnswer(*bare); }); }, Unit::Seconds, RatioUpTo(1.5),
        25);
    report.Measure(
        "a line of 5,000 that are sent at once",
        [&] { return AsClient(panel, [&] { return LineOfMany(*terminal, LINES_AT_ONCE); }); }, "a bare echo",
        [&] { return AsClient(panel, [&] { return LineOfMany(*bare, LINES_AT_ONCE); }); }, Unit::Seconds,
        NO_AIM);

    const auto longestGap = [&panel](Connection& server) {
        return [&panel, &server] {
            double gap = 0;
            AsClient(
                panel, [&server] { return LineOfMany(server, MANY_LINES); }, &gap);
            return gap;
        };
    };
    const std::vector<Samples> gaps = TakeTurns(report.Rounds(3), {longestGap(*terminal), longestGap(*bare)});
    report.Add("longest wait for a tick during 100,000 lines", gaps[0], "the same beside the bare echo",
               gaps[1], Unit::Seconds, RatioUpTo(5));
    if (!terminal->IsOpen()) {
        report.Fail("the terminal", "not every line was answered");
    }
}

std::atomic<int> recordsTraced;

void MeasureCan(Report& report, const BenchPanel& panel, HWND network) {
    // The records come from a server on this side, to which the control connects.
    const SOCKET listening = socket(AF_INET, SOCK_STREAM, 0);
    const std::string line = "can=127.0.0.1:" + std::to_string(Listen(listening));
    SendMessageA(network, CWM_LOAD, LOAD_FROM_FILE, reinterpret_cast<LPARAM>(line.c_str()));
    const auto records = std::make_unique<Connection>(accept(listening, nullptr, nullptr));
    closesocket(listening);

    std::atomic<int> bytesRead = 0;
    const BareServer reader([&](const Connection&, const char*, int count) { bytesRead += count; });
    const auto bare = std::make_unique<Connection>(reader.Port());

    ph_SetTraceSink(
        [](int, const char* text, void*)
            __attribute__((cdecl)) { recordsTraced += std::strncmp(text, "123 (", 5) == 0; },
        nullptr);
    const std::string all = Repeated(RECORD, RECORDS);
    const auto sendAll = [&](const Connection& to, const std::atomic<int>& progress, int goal) {
        return [&, goal] {
            const double start = Now();
            to.Send(all);
            while (progress < goal) {
                Sleep(0);
            }
            return (Now() - start) / RECORDS;
        };
    };
    report.Measure(
        "a CAN record, from the socket to the trace",
        [&] {
            recordsTraced = 0;
            return AsClient(panel, sendAll(*records, recordsTraced, RECORDS));
        },
        "its bytes read and forgotten",
        [&] {
            bytesRead = 0;
            return AsClient(panel, sendAll(*bare, bytesRead, static_cast<int>(all.size())));
        },
        Unit::Seconds, NO_AIM);
    ph_SetTraceSink(nullptr, nullptr);
}

} // namespace

void MeasureNetwork(Report& report) {
    const BenchPanel panel(false);
    static bool isTaken = false;
    ph_SetTraceSink(
        [](int, const char* text, void*)
            __attribute__((cdecl)) { isTaken = isTaken || std::strstr(text, "Couldn't bind") != nullptr; },
        nullptr);
    const HWND network = panel.Add("INETWORK", 1);
    ph_SetTraceSink(nullptr, nullptr);
    if (isTaken || network == nullptr) {
        report.Fail("the terminal", "port 23 is in use");
        return;
    }
    CreateWindowExA(0, "METER", "bar1", WS_CHILD, 0, 0, SIDE, SIDE, panel.Window(), nullptr, nullptr,
                    panel.Root());
    MeasureTerminal(report, panel);
    MeasureCan(report, panel, network);
}
