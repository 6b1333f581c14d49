// The host check: which answers count, what is told and sent, and the lamp in an operated panel.

#include <winsock2.h> // refuses to stand behind windows.h

#include <iphlpapi.h>
#include <icmpapi.h> // needs what stands before it

#include "Panelhost/Remote.h"
#include "Panelhost/Trace.h"
#include "logic/drawing/PanelColours.h"
#include "logic/remote/EchoRequest.h"
#include "tests/windows/ImportHook.h"
#include "tests/windows/Resources.h"
#include "tests/windows/TestPanel.h"

#include <atomic>
#include <cstring>
#include <string_view>

TEST_SUITE_BEGIN("HostCheck");

namespace {

constexpr const char* DEAD = "192.0.2.1"; // for documentation: nobody has it

// Requests to the dead host are lost. Somebody else, on this machine, answers them instead, with the number
// of the request.
class LostRequests {
public:
    LostRequests() : hook_(CONTROL_LIBRARY, "sendto", Send) {
        original = hook_.Original<decltype(sendto)>();
        count = 0;
    }
    static inline std::atomic<int> count;

private:
    static int WSAAPI Send(SOCKET socket, const char* bytes, int size, int flags, const sockaddr* to,
                           int length) {
        const auto& address = *reinterpret_cast<const sockaddr_in*>(to);
        if (address.sin_addr.s_addr != inet_addr(DEAD)) {
            return original(socket, bytes, size, flags, to, length);
        }
        ++count;
        std::string reply(bytes, static_cast<std::size_t>(size));
        reply[0] = reply[2] = reply[3] = 0;
        const std::uint16_t sum =
            logic::InternetChecksum({reinterpret_cast<const std::uint8_t*>(reply.data()), reply.size()});
        std::memcpy(reply.data() + 2, &sum, sizeof sum);
        sockaddr_in here = address;
        here.sin_addr.s_addr = inet_addr("127.0.0.1");
        original(socket, reply.data(), size, flags, reinterpret_cast<const sockaddr*>(&here), sizeof here);
        return size;
    }
    static inline decltype(sendto)* original;
    ImportHook hook_;
};

SOCKET WSAAPI NoSocket(int, int, int) {
    return INVALID_SOCKET;
}

// The echo service, for which the dead host is dead on every network.
class LostEchoes {
public:
    LostEchoes() : hook_(CONTROL_LIBRARY, "GetProcAddress", Find) {
        find = hook_.Original<decltype(GetProcAddress)>();
    }

private:
    static FARPROC WINAPI Find(HMODULE library, const char* name) {
        const FARPROC found = find(library, name);
        if (std::string_view(name) != "IcmpSendEcho") {
            return found;
        }
        send = reinterpret_cast<decltype(send)>(reinterpret_cast<void*>(found));
        return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&Send));
    }
    static DWORD WINAPI Send(HANDLE service, IPAddr host, void* data, WORD size,
                             IP_OPTION_INFORMATION* options, void* answer, DWORD room, DWORD timeout) {
        if (host == inet_addr(DEAD)) {
            Sleep(timeout);
            SetLastError(IP_REQ_TIMED_OUT);
            return 0;
        }
        return send(service, host, data, size, options, answer, room, timeout);
    }
    static inline decltype(GetProcAddress)* find;
    static inline decltype(IcmpSendEcho)* send;
    ImportHook hook_;
};

bool AwaitState(HWND check, const std::string& state) {
    return Await([&] {
        Poll(check);
        return Text(check, "state") == state;
    });
}

} // namespace

TEST_CASE("a host answers when the answer is its own, and is gone after so many that are lost") {
    const TestPanel panel;
    panel.Declare("AMP1*device=simulated\nAMP1*hosts=integer,0,9,7\n");
    HWND check = panel.Create("XIPCHECK", "Hosts");
    CHECK(SendMessageA(check, CWM_GETCONTROLTYPE, 0, 0) == DATATYPE_INTEGER);
    const LostRequests lost;
    for (const char* line : {"function=AMP1*hosts", "timeout=300", "tries=3"}) {
        CHECK(Load(check, line) == 1);
    }
    CHECK(Load(check, std::string("host=127.0.0.1; ") + DEAD + ";127.0.0.2;no.such.host.invalid") == 1);
    const auto state = [](const char* first, const char* dead) {
        return std::string("127.0.0.1=") + first + ";" + DEAD + "=" + dead + ";127.0.0.2=" + first +
               ";no.such.host.invalid=" + dead;
    };
    CHECK(Text(check, "state") == state("unknown", "unknown"));
    CHECK(Text(check, "time") == "-1");
    Poll(check);
    CHECK(Await([&] { return Text(check, "state") == state("ok", "unknown"); }));
    CHECK(Text(check, "value") == "2");
    CHECK(panel.Parameter("AMP1*hosts") == "2");
    CHECK(Text(check, "time") != "-1");
    CHECK(lost.count == 1);
    CHECK(AwaitState(check, state("ok", "gone")));
    CHECK(lost.count >= 3);
    CHECK(Text(check, "value") == "2");
    CHECK(Load(check, "host=") == 1);
    CHECK(Text(check, "value") == "0");
    CHECK(panel.Parameter("AMP1*hosts") == "0");
    CHECK(Load(check, "host=a b") == 0);
    CHECK(Load(check, "value=1") == 0);
    const RemoteSetting remote;
    CHECK(Load(check, "host=127.0.0.1") == 0);
}

TEST_CASE("without the right to raw sockets the system's echo service is asked, which is said once") {
    const ImportHook hook(CONTROL_LIBRARY, "socket", NoSocket);
    const LostEchoes lost;
    const TestPanel panel;
    const TraceCapture trace;
    HWND check = panel.Create("XIPCHECK", "Hosts");
    CHECK(Load(check, "timeout=200") == 1);
    CHECK(Load(check, "tries=1") == 1);
    CHECK(Load(check, std::string("host=127.0.0.1;") + DEAD) == 1);
    CHECK(AwaitState(check, std::string("127.0.0.1=ok;") + DEAD + "=gone"));
    Poll(check);
    CHECK(trace.CountContaining("the system's echo service is used") == 1);
}

TEST_CASE("a lamp with a text where it is to be visible, which can be clicked") {
    const TestPanel panel(TestPanel::Visible);
    HWND check = panel.Create("XIPCHECK", "Hosts");
    HWND knob = panel.Create("KNOB", "Knob");
    CHECK_FALSE(IsWindowVisible(check));
    CHECK(Load(check, "visible=1") == 1);
    CHECK(IsWindowVisible(check));
    const auto colour = [&] { return Picture(check).At(12, 22); };
    CHECK(colour() == logic::PANEL_WELL);
    CHECK(Load(check, "tries=1") == 1);
    CHECK(Load(check, "timeout=500") == 1);
    const LostRequests lost;
    const std::pair<std::string, COLORREF> rows[] = {{"127.0.0.1", logic::PANEL_GREEN},
                                                     {std::string("127.0.0.1;") + DEAD, logic::PANEL_YELLOW},
                                                     {DEAD, logic::PANEL_RED}};
    for (const auto& [hosts, expected] : rows) {
        CHECK(Load(check, "host=" + hosts) == 1);
        CHECK(Await([&] {
            Poll(check);
            return Text(check, "state").find("unknown") == std::string::npos;
        }));
        CHECK(colour() == expected);
    }
    CHECK(Load(check, "click=Knob*value=42") == 1);
    SendMessageA(check, WM_LBUTTONDOWN, MK_LBUTTON, At(10, 10));
    CHECK(Value(knob) == 42);
    ph_SetMode(panel.Root(), 1);
    CHECK(Load(check, "visible=0") == 1);
    CHECK(IsWindowVisible(check));
    ph_SetMode(panel.Root(), 0);
    CHECK_FALSE(IsWindowVisible(check));
}

TEST_CASE("it ends while answers are waited for, and nothing is left behind") {
    const LostRequests lost;
    CHECK(LeftBehind(20, [&] {
              const TestPanel panel;
              HWND check = panel.Create("XIPCHECK", "Hosts");
              CHECK(Load(check, "timeout=60000") == 1);
              CHECK(Load(check, std::string("host=127.0.0.1;") + DEAD) == 1);
              const int before = lost.count;
              Poll(check);
              CHECK(Await([&] { return lost.count > before; }));
              DestroyWindow(check);
          }) == "");
}

TEST_SUITE_END();
