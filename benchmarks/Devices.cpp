// Real devices: a value on its way to the network, ticks of a panel that is bound to many parameters, and
// how soon all of these are there. The device is a socket of this program that answers whatever it is asked.

#include <winsock2.h> // refuses to stand behind windows.h

#include "Panelhost/Hostinfo.h"
#include "base/Sockets.h"
#include "base/Threads.h"
#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"
#include "logic/devices/osc/Osc.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <fstream>
#include <thread>

namespace {

constexpr int PARAMETERS = 3000;
constexpr int BOUND_TO_EACH = 100; // control
constexpr int RATE = 2000;         // datagrams a second
constexpr int SETTINGS = 20;
constexpr int TICKS = 21;
constexpr double PATIENCE = 30;

class Device {
public:
    Device() : socket_(socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        bind(socket_.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address);
        int length = sizeof address_;
        getsockname(socket_.Get(), reinterpret_cast<sockaddr*>(&address_), &length);
        thread_ = std::thread([this] { Answer(); });
    }
    ~Device() {
        isEnding_ = true;
        sendto(socket_.Get(), "", 0, 0, reinterpret_cast<const sockaddr*>(&address_), sizeof address_);
        thread_.join();
    }
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;

    const sockaddr_in& Address() const { return address_; }
    // Datagrams with a value so far.
    int Written() const { return written_; }

private:
    void Answer() {
        char block[2048];
        sockaddr_in from{};
        std::vector<logic::OscMessage> messages;
        while (!isEnding_) {
            int size = sizeof from;
            const int length =
                recvfrom(socket_.Get(), block, sizeof block, 0, reinterpret_cast<sockaddr*>(&from), &size);
            if (length <= 0 || logic::ReadOsc({block, static_cast<std::size_t>(length)}, messages) !=
                                   logic::OscFault::None) {
                continue;
            }
            if (!messages[0].arguments.empty()) {
                ++written_;
                continue;
            }
            const logic::OscValue value = 0.5F;
            const auto answer = logic::WriteOsc(messages[0].address, std::span(&value, 1));
            sendto(socket_.Get(), answer->data(), static_cast<int>(answer->size()), 0,
                   reinterpret_cast<const sockaddr*>(&from), size);
        }
    }

    Socket socket_;
    sockaddr_in address_{};
    std::atomic<int> written_ = 0;
    std::atomic<bool> isEnding_ = false;
    std::thread thread_;
};

// Device file and profile, in a place of their own.
class Files {
public:
    explicit Files(const std::string& devices) {
        char folder[MAX_PATH];
        GetTempPathA(sizeof folder, folder);
        folder_ = std::string(folder) + "bench" + std::to_string(GetCurrentProcessId()) + "\\";
        CreateDirectoryA(folder_.c_str(), nullptr);
        std::ofstream(Devices(), std::ios::binary) << devices;
        std::ofstream(Profile(), std::ios::binary)
            << "profile=osc,1\nhello=/hi,/hi\nwindow=64\nrate=" << RATE << "\nrange*x=1,60\nrange*y=1,50\n"
            << "law*f=f,same\nlaw*go=f,same,trigger\np{x}.{y}=float,0,1,,/p/{x}/{y},f\n"
            << "go=float,0,1000,,/go,go\n";
    }
    ~Files() {
        DeleteFileA(Devices().c_str());
        DeleteFileA(Profile().c_str());
        RemoveDirectoryA(folder_.c_str());
    }
    Files(const Files&) = delete;
    Files& operator=(const Files&) = delete;

    std::string Devices() const { return folder_ + "bench.devices"; }

private:
    std::string Profile() const { return folder_ + "bench.profile"; }

    std::string folder_;
};

std::string RealDevice(const Device& device) {
    return "D*device=osc,127.0.0.1:" + std::to_string(ntohs(device.Address().sin_port)) + ",bench\n";
}

std::string SimulatedDevice() {
    std::string lines = "D*device=simulated\n";
    for (int x = 1; x <= 60; ++x) {
        for (int y = 1; y <= 50; ++y) {
            lines += "D*p" + std::to_string(x) + "." + std::to_string(y) + "=float,0,1,0.5\n";
        }
    }
    return lines;
}

void BindAll(const BenchPanel& panel) {
    int number = 0;
    for (const HWND control : panel.AddMany("LED", PARAMETERS / BOUND_TO_EACH)) {
        std::string line = "function=";
        for (int i = 0; i < BOUND_TO_EACH; ++i, ++number) {
            line += "D*p" + std::to_string(number / 50 + 1) + "." + std::to_string(number % 50 + 1) + ";";
        }
        SendMessageA(control, CWM_LOAD, LOAD_FROM_FILE, reinterpret_cast<LPARAM>(line.c_str()));
        SendMessageA(control, CWM_LOAD, LOAD_FROM_FILE, reinterpret_cast<LPARAM>("interval=1"));
    }
}

int CountLive(const BenchPanel& panel) {
    int count = 0;
    for (int number = 0; number < PARAMETERS; ++number) {
        const std::string address =
            "D*p" + std::to_string(number / 50 + 1) + "." + std::to_string(number % 50 + 1);
        count += ph_ParameterState(panel.Root(), address.c_str()) == PH_STATE_LIVE ? 1 : 0;
    }
    return count;
}

template <class Condition>
bool TickUntil(const BenchPanel& panel, Condition condition) {
    const double end = Now() + PATIENCE;
    while (!condition()) {
        if (Now() > end) {
            return false;
        }
        ph_Tick(panel.Root());
        Settle();
        Sleep(1);
    }
    return true;
}

bool IsLive(const BenchPanel& panel) {
    char state[16] = "";
    ph_GetParameter(panel.Root(), "D*state", state, sizeof state);
    return std::string(state) == "live";
}

// Seconds from the first answer of the device until all parameters are there. Below 0 when they do not come.
double ReadAll() {
    const Device device;
    const Files files(RealDevice(device));
    const BenchPanel panel(false);
    BindAll(panel);
    if (ph_LoadDevices(panel.Root(), files.Devices().c_str()) != 1 ||
        !TickUntil(panel, [&] { return IsLive(panel); })) {
        return -1;
    }
    const double start = Now();
    return TickUntil(panel, [&] { return CountLive(panel) == PARAMETERS; }) ? Now() - start : -1;
}

void MeasureFirstRead(Report& report) {
    Samples read, allowed;
    for (int round = 0; round < report.Rounds(5); ++round) {
        const double taken = ReadAll();
        if (taken < 0) {
            report.Fail("first read of 3,000 parameters", "they did not come");
            return;
        }
        read.push_back(taken);
        allowed.push_back(static_cast<double>(PARAMETERS) / RATE);
    }
    report.Add("first read of 3,000 parameters", read, "what the rate allows", allowed, Unit::Seconds,
               RatioUpTo(1.3));
}

// Seconds for a tick in which all controls ask for all their parameters, the middle one of some.
Workload TickAll(const BenchPanel& panel) {
    return [&panel] {
        Samples times;
        for (int i = 0; i < TICKS; ++i) {
            Sleep(3); // all are due
            const double start = Now();
            ph_Tick(panel.Root());
            times.push_back(Now() - start);
            Settle();
        }
        std::ranges::nth_element(times, times.begin() + TICKS / 2);
        return times[TICKS / 2];
    };
}

void MeasureTick(Report& report) {
    const Device device;
    const Files files(RealDevice(device));
    const BenchPanel real(false);
    BindAll(real);
    const bool isReal = ph_LoadDevices(real.Root(), files.Devices().c_str()) == 1;
    const Files simulatedFiles(SimulatedDevice());
    const BenchPanel simulated(false);
    BindAll(simulated);
    const bool isSimulated = ph_LoadDevices(simulated.Root(), simulatedFiles.Devices().c_str()) == 1;
    if (!isReal || !isSimulated || !TickUntil(real, [&] { return CountLive(real) == PARAMETERS; })) {
        report.Fail("tick of controls bound to 3,000 parameters", "the device did not answer");
        return;
    }
    report.Measure("tick of controls bound to 3,000 parameters", TickAll(real), "simulated ones",
                   TickAll(simulated), Unit::Seconds, RatioUpTo(1.5), 15);
}

// Seconds until a datagram that an action sends is there.
double Arrival(const Device& device, const std::function<void()>& send) {
    double sum = 0;
    for (int i = 0; i < SETTINGS; ++i) {
        Sleep(2); // nothing waits for its turn
        const int before = device.Written();
        const double start = Now();
        send();
        while (device.Written() == before && Now() - start < PATIENCE) {
            YieldProcessor();
        }
        sum += Now() - start;
    }
    return sum / SETTINGS;
}

void MeasureSet(Report& report) {
    const Device device;
    const Files files(RealDevice(device));
    const BenchPanel panel(false);
    const HWND knob = panel.Add("KNOB", 1);
    SendMessageA(knob, CWM_LOAD, LOAD_FROM_FILE, reinterpret_cast<LPARAM>("function=D*go"));
    if (ph_LoadDevices(panel.Root(), files.Devices().c_str()) != 1 ||
        !TickUntil(panel, [&] { return IsLive(panel); })) {
        report.Fail("a value on its way to the network", "the device did not answer");
        return;
    }
    REQUESTLIST& requests = a_FromWindow(knob)->requests;
    float value = 0;
    const auto set = [&] {
        value += 1;
        a_SendRequest(requests, COMMAND_SET, DATATYPE_FLOAT, &value, nullptr);
    };
    const Socket bare(socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP));
    const Event wake(Event::AutoReset);
    std::atomic<bool> isEnding = false;
    std::thread sender([&] {
        const logic::OscValue argument = 1.0F;
        const std::string datagram = logic::WriteOsc("/go", std::span(&argument, 1)).value();
        while (WaitForSingleObject(wake.Get(), INFINITE) == WAIT_OBJECT_0 && !isEnding) {
            sendto(bare.Get(), datagram.data(), static_cast<int>(datagram.size()), 0,
                   reinterpret_cast<const sockaddr*>(&device.Address()), sizeof(sockaddr_in));
        }
    });
    report.Measure(
        "a value on its way to the network",
        [&] {
            value = value > 500 ? 0 : value;
            return Arrival(device, set);
        },
        "waking a thread that sends", [&] { return Arrival(device, [&] { wake.Set(); }); }, Unit::Seconds,
        RatioUpTo(2), 25);
    isEnding = true;
    wake.Set();
    sender.join();
}

// Recalling a snapshot beside sending its values to the device one by one, as terminals and click templates
// do.
void MeasureRecall(Report& report) {
    constexpr int VALUES = 1000;
    const Files files(SimulatedDevice());
    const BenchPanel panel(false);
    std::string snapshots[2] = {"snapshot=1\r\n", "snapshot=1\r\n"};
    std::vector<std::string> addresses;
    if (ph_LoadDevices(panel.Root(), files.Devices().c_str()) != 1) {
        report.Fail("recall of 1,000 simulated parameters", "there is no device");
        return;
    }
    for (int number = 0; number < VALUES; ++number) {
        addresses.push_back("D*p" + std::to_string(number / 50 + 1) + "." + std::to_string(number % 50 + 1));
        snapshots[0] += addresses.back() + "=0.25\r\n";
        snapshots[1] += addresses.back() + "=0.75\r\n";
    }
    const std::string paths[2] = {files.Devices() + "1", files.Devices() + "2"};
    for (int i = 0; i < 2; ++i) {
        std::ofstream(paths[i], std::ios::binary) << snapshots[i];
    }
    int turn = 0;
    bool isWhole = true;
    report.Measure(
        "recall of 1,000 simulated parameters",
        [&] {
            const double start = Now();
            isWhole &= ph_RecallSnapshot(panel.Root(), paths[++turn % 2].c_str(), 0) == VALUES;
            const double taken = Now() - start;
            isWhole &= ph_ListRecall(panel.Root(), nullptr, nullptr) == 0;
            return taken;
        },
        "sent one by one",
        [&] {
            char value[TEXT_SIZE];
            std::strcpy(value, ++turn % 2 == 0 ? "0.25" : "0.75");
            const double start = Now();
            for (const std::string& address : addresses) {
                VALUERECORD record = VALUERECORD::SetText(value).Named(address.c_str() + 2);
                isWhole &= SendMessageA(ph_Find(panel.Root(), "D"), CWM_MESSAGE, 0,
                                        reinterpret_cast<LPARAM>(&record)) != 0;
            }
            return Now() - start;
        },
        Unit::Seconds, RatioUpTo(2), 25);
    if (!isWhole) {
        report.Fail("recall of 1,000 simulated parameters", "not all were set");
    }
    for (const std::string& path : paths) {
        DeleteFileA(path.c_str());
    }
}

} // namespace

void MeasureDevices(Report& report) {
    WSADATA data{};
    WSAStartup(MAKEWORD(2, 2), &data); // until the process ends
    MeasureSet(report);
    MeasureTick(report);
    MeasureRecall(report);
    MeasureFirstRead(report);
}
