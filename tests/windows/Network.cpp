// The network interface: its terminal as clients see it and its CAN channel.

#include "tests/windows/TerminalClient.h"

#include "Controls/interfaces/network/EchoProbe.h"

#include "Panelhost/Trace.h"
#include "tests/windows/Interception.h"
#include "tests/windows/Resources.h"
#include "tests/windows/TestPanel.h"

#include <atomic>
#include <functional>

TEST_SUITE_BEGIN("Network");

namespace {

const std::string BANNER =
    "\r\n*********************\r\nWelcome to OSMIR\r\n*********************\r\n"; // 66 bytes

// Takes a prompt away, and what the terminal before has begun.
const std::string ERASE(5000, '\b');

// Runs of these tests take turns by holding a port besides; the tests that merely make a network interface
// among others have port 23 for a while only.
bool HasTurn() {
    constexpr u_short TURN_PORT = 23023;
    static TestListener turn(TURN_PORT);
    if (!turn.IsBound()) {
        turn = TestListener(TURN_PORT);
    }
    return turn.IsBound();
}

// A panel with a network interface that has the port to itself.
class NetworkPanel {
public:
    NetworkPanel() : threadsBefore(CountResources().threads) {
        static DWORD patience = 100000; // the turn of others included
        const auto hasPort = [this] {
            trace.Clear();
            control = HasTurn() ? panel.Create("INETWORK", "Net") : nullptr;
            if (control == nullptr || trace.CountContaining("Couldn't bind") == 0) {
                return control != nullptr;
            }
            DestroyWindow(control);
            Sleep(100);
            return false;
        };
        const bool isMine = Await(hasPort, patience);
        patience = isMine ? patience : 0; // said once
        REQUIRE_MESSAGE(isMine, "port 23 stays taken, by another run of these tests or another program");
    }

    // A terminal that has had its banner.
    TestSocket Connect() const {
        TestSocket terminal = TestSocket::Connected(TERMINAL_PORT);
        CHECK(terminal.Receive(BANNER.size()) == BANNER);
        return terminal;
    }
    // The server does its work.
    void CheckAnswers() const {
        CheckAnswer(Connect(), ERASE + "net*interval=77\n", "NET*interval=");
        CHECK(ObjectOf(control).interval == 77);
    }
    // What is answered beyond that stands in front of the next answer.
    static void CheckAnswer(const TestSocket& terminal, const std::string& typed, const std::string& answer) {
        CAPTURE(typed.substr(typed.rfind('\b') + 1, 100));
        terminal.Send(typed);
        CHECK(terminal.Receive(answer.size()) == answer);
    }
    // Destroys the control; whether its thread ended by then.
    bool Destroy() const {
        DestroyWindow(control);
        CHECK_FALSE(IsWindow(control));
        const bool isDone = CountResources().threads <= threadsBefore;
        CHECK(Await([this] { return CountResources().threads <= threadsBefore; }));
        return isDone;
    }
    void AwaitTrace(const std::string& line) const {
        CHECK_MESSAGE(Await([&] { return trace.Count(TRACE_DEBUG, line) != 0; }), trace.All());
    }

    int threadsBefore;
    TestPanel panel;
    TraceCapture trace;
    HWND control = nullptr;
};

// A terminal that has sent lines whose answers, without the panel, are more than anything buffers.
TestSocket SlowTerminal(const NetworkPanel& network, int lines) {
    TestSocket slow = network.Connect();
    const std::string prompt = std::string(120, 'n') + "*";
    network.CheckAnswer(slow, ERASE + prompt + "k=..\n", prompt);
    slow.Send(Repeated(lines, "..\n"));
    return slow;
}

} // namespace

TEST_CASE("a session: prompts, values, and what is no line") {
    NetworkPanel network;
    network.panel.Declare("AMP1*device=simulated\nAMP1*gain=float,-80,18,-20,dB\n");
    const HWND knob = network.panel.Create("KNOB", "Knob1");
    const HWND caption = network.panel.Create("BSTATIC", "Caption");
    CHECK_FALSE(IsChanged(knob));
    const struct {
        std::string typed, answer;
    } rows[] = {
        {"knob1*value=3\r\n", "KNOB1*value="},
        {"..\ninterval=801\n", "KNOB1*KNOB1*interval="},
        {std::string(9, '\b') + "val\xFF\xFD\x03ue=5\n", "KNOB1*value="},    // negotiation is no text
        {ERASE + "nobody*value=1\nvalue=1\nAMP1*gain=-5.5\n", "AMP1*gain="}, // without an object no prompt
        {ERASE + "amp1*GAIN=1\n", "AMP1*GAIN="},                             // keywords are case-sensitive
        {ERASE + "amp1*gain=?\n..\n?\n", "-5.5\r\nAMP1*gain=AMP1*\r\nAMP1*"},
        {ERASE + "knob1*value=?\n", "5\r\nKNOB1*value="},
        {"..\n?\n", "KNOB1*5\r\nKNOB1*"}, // the default value
        {ERASE + "caption*caption=a?\xFF\xFF\n?\n", "CAPTION*caption=a?\xFF\xFF\r\nCAPTION*caption="},
        {ERASE + "net*can=127.0.0.1:9\n", "NET*can="},
    };
    const TestSocket terminal = network.Connect();
    for (const auto& row : rows) {
        network.CheckAnswer(terminal, row.typed, row.answer);
    }
    CHECK(Value(knob) == 5.0F);
    CHECK(ObjectOf(knob).interval == 801);
    CHECK(IsChanged(knob));
    CHECK(Text(caption, "caption") == "a?\xFF");
    // A mark that is sent as urgent data stays where it stands.
    terminal.Send(ERASE + "knob1*value=1\xFF");
    CHECK(send(terminal.Get(), "\xF2", 1, MSG_OOB) == 1);
    network.CheckAnswer(terminal, "6\n", "KNOB1*value=");
    CHECK(Value(knob) == 16.0F);
    CHECK(network.trace.Count(TRACE_EDIT, "Not to be set by a terminal: Net*can=127.0.0.1:9") == 1);
    CHECK(network.panel.Saved().find("Net*can") == std::string::npos);
    CHECK(network.panel.Parameter("AMP1*gain") == "-5.5");
}

TEST_CASE("another terminal takes the place of the one before") {
    NetworkPanel network;
    const HWND knob = network.panel.Create("KNOB", "Knob");
    TestSocket first = network.Connect();
    network.CheckAnswer(first, "Knob*value=3\n5", "KNOB*value=");
    TestSocket second = network.Connect();
    CHECK(first.Receive(100).empty()); // no farewell
    CHECK(first.AwaitEnd());
    CHECK(network.trace.CountContaining("closesocket ") == 1);
    CHECK(network.trace.CountContaining("accepting ") == 2);
    // The object and the keyword are still there, and the line that was begun does not count up to its end.
    network.CheckAnswer(second, "67\n", "KNOB*value=");
    CHECK(Value(knob) == 3.0F);
    CHECK(network.trace.CountContaining("Error reading line value=") == 1);

    // A client that has left is not there to be replaced.
    second.Close();
    TestSocket third = network.Connect();
    CHECK(network.trace.CountContaining("closesocket ") == 1);
    // One that only says that it will send no more gets its answers, and the end.
    third.Send(ERASE + "knob*value=9\nknob*");
    third.EndSending();
    CHECK(third.Receive(100) == "KNOB*value=");
    CHECK(third.AwaitEnd());
    CHECK(Value(knob) == 9.0F);

    // Of one that is gone at once everything counts that it has sent.
    TestSocket hasty = network.Connect();
    std::string lines = ERASE + "knob*value=0\n";
    for (int value = 1; value < 100; ++value) {
        lines += std::to_string(value) + "\n";
    }
    hasty.Send(lines);
    hasty.Close();
    CHECK(Await([&] { return Value(knob) == 99.0F; }));
}

TEST_CASE("a second network interface finds the port taken and does no harm") {
    NetworkPanel network;
    const HWND second = network.panel.Create("INETWORK", "Net2");
    CHECK(network.trace.Count(TRACE_DEBUG, "Windows Sockets error 10048: Couldn't bind socket\n") == 1);
    network.CheckAnswers();
    DestroyWindow(second);
    network.CheckAnswers();
    network.Destroy();
    CHECK_FALSE(TestSocket::Connected(TERMINAL_PORT).IsOpen());
    network.control = network.panel.Create("INETWORK", "Net"); // the port is free at once
    CHECK(network.trace.CountContaining("Couldn't bind") == 1);
    network.CheckAnswers();
}

TEST_CASE("what a terminal may not set") {
    NetworkPanel network;
    const TestFolder folder;
    const std::string picture = folder.Write("knob.bmp", BitmapFile(4, 4, 0));
    HWND knob = network.panel.Create("KNOB", "KNOB");
    HWND button = network.panel.Create("BBUTTON", "GO");
    HWND edit = network.panel.Create("BEDIT", "EDIT");
    HWND tone = network.panel.Create("IWAVEGENERATOR", "TONE");
    const struct {
        HWND control;
        std::string keyword, value;
        bool isTaken;
    } rows[] = {
        {knob, "bitmap", ".\\Controls\\KNOB_amber.bmp", true},
        {knob, "bitmap", picture, false},
        {knob, "bitmap", "\\\\10.255.255.1\\share\\x.bmp", false},
        {knob, "connection", "Go;Edit*value", true},
        {knob, "connection", "Go;Knob*bitmap", false},
        {edit, "connection", "Net*can", false},
        {edit, "connection", "Tone*duration", false},
        {edit, "function", "AMP1*gain1", true},
        {edit, "function", "AMP1*terminal", false},
        {button, "click", "Knob*value=%l", true},
        {button, "click", "Go*click=Go*click=Net*can=10.255.255.1:9", false},
        {button, "click", "background=\\\\10.255.255.1\\share\\x.bmp", false},
        {tone, "duration", "60:01", false},
        {tone, "duration", "0", true},
    };
    const TestSocket terminal = network.Connect();
    for (const auto& row : rows) {
        const std::string line = row.keyword + "=" + row.value;
        const std::string name = ObjectOf(row.control).name;
        network.trace.Clear();
        network.CheckAnswer(terminal, ERASE + name + "*" + line + "\n", name + "*" + row.keyword + "=");
        CHECK(network.trace.Count(TRACE_EDIT, "Not to be set by a terminal: " + name + "*" + line) ==
              (row.isTaken ? 0 : 1));
        CHECK((row.isTaken || row.control != button || Text(button, "click") != row.value));
        if (row.keyword != "bitmap" || row.value == picture) { // here, anybody may
            CHECK(Load(row.control, row.control == tone ? "duration=0" : line) == 1);
        }
    }
}

TEST_CASE("who may connect, and one who may not takes no answer away from a slow terminal") {
    NetworkPanel network;
    HWND root = network.panel.Window();
    CHECK(Text(root, "terminal").empty());
    constexpr int LINES = 50'000;
    const TestSocket slow = SlowTerminal(network, LINES);
    CHECK(Load(root, "terminal=10.0.0.0/8,192.168.1.7") == 1);
    CHECK(Load(root, "terminal=127.0.0.1,all") == 0);
    CHECK(Text(root, "terminal") == "10.0.0.0/8,192.168.1.7");
    for (int i = 0; i < 20; ++i) { // without a welcome, and nothing happens to the one who is here
        const TestSocket refused = TestSocket::Connected(TERMINAL_PORT);
        CHECK(refused.Receive(1).empty());
        CHECK(refused.AwaitEnd());
    }
    CHECK(slow.Receive(121 * LINES).size() == 121 * LINES);
    network.CheckAnswer(slow, ERASE + "net*interval=78\n", "NET*interval=");
    CHECK(network.trace.Count(TRACE_DEBUG, "Terminals that may not connect: 1, the last from 127.0.0.1\n") ==
          1);
    CHECK(network.panel.Saved().find("terminal=10.0.0.0/8,192.168.1.7\r\n") != std::string::npos);
    CHECK(Load(root, "terminal=none") == 1);
    CHECK(TestSocket::Connected(TERMINAL_PORT).Receive(1).empty());
    for (const char* line : {"terminal=10.0.0.0/8,127.0.0.0/24", "terminal="}) {
        CHECK(Load(root, line) == 1);
        network.CheckAnswers();
    }
    CHECK(network.panel.Saved().starts_with("control="));
}

TEST_CASE("destroyed while a terminal is connected, or by the very line that it sent") {
    const struct {
        const char* typed;
        void (*act)(NetworkPanel& network);
    } rows[] = {
        {"", [](NetworkPanel& network) { network.Destroy(); }},
        {"Trap*x=1\nTrap*x=2\nTrap*x=3\n", [](NetworkPanel& network) { DestroyWindow(network.control); }},
        {"Trap*x=1\n", [](NetworkPanel& network) { DestroyWindow(network.panel.Window()); }},
        {"Trap*x=1\n",
         [](NetworkPanel& network) { // inside a loop of messages, as a question to the user runs one
             SetTimer(
                 network.control, 99, 1,
                 [](HWND window, UINT, UINT_PTR, DWORD) __attribute__((stdcall)) { DestroyWindow(window); });
             CHECK(Await([&network] { return !IsWindow(network.control); }));
         }},
    };
    for (const auto& row : rows) {
        CAPTURE(&row - rows);
        NetworkPanel network;
        const Interception trap(network.panel.Create("KNOB", "Trap"), CWM_LOAD, [&] { row.act(network); });
        const TestSocket terminal = network.Connect();
        terminal.Send(row.typed);
        if (*row.typed == '\0') {
            row.act(network);
        }
        CHECK(Await([&network] { return !IsWindow(network.control); }));
        CHECK(terminal.AwaitEnd());
        CHECK(Await([&network] { return CountResources().threads <= network.threadsBefore; }));
    }
}

TEST_CASE("destroyed while its thread waits for the panel, again and again") {
    static HWND panelWindow;
    static std::atomic<int> sent;
    sent = 0;
    constexpr int ROUNDS = 20;
    int done = 0;
    for (int round = 0; round < ROUNDS; ++round) {
        NetworkPanel network;
        const TestListener canInterface;
        Load(network.control, "can=127.0.0.1:" + std::to_string(canInterface.Port()));
        const TestSocket records = canInterface.Accept();
        panelWindow = network.panel.Window();
        ph_SetTraceSink(
            [](int, const char*, void*) __attribute__((cdecl)) {
                sent += SendMessageTimeoutA(panelWindow, WM_GETTEXTLENGTH, 0, 0, SMTO_NORMAL, 20000,
                                            nullptr) != 0;
            },
            nullptr);
        records.Send(Repeated(1000, "S01T"));
        Await([] { return false; }, static_cast<DWORD>(round));
        done += network.Destroy() ? 1 : 0;
        ph_SetTraceSink(nullptr, nullptr);
    }
    CHECK(done > ROUNDS / 2); // but for a machine that is busy, all
    CHECK(sent > 0);
}

TEST_CASE("a terminal that never reads holds up neither another one nor the end") {
    NetworkPanel network;
    const std::string lines = Repeated(20000, "..\n"); // answered without the panel
    const auto fill = [&] {
        TestSocket full = SlowTerminal(network, 0);
        std::size_t sent = 0;
        while (full.Send(lines, 300) == lines.size() && sent < 100'000'000) {
            sent += lines.size();
        }
        CHECK(sent < 100'000'000); // it takes no more
        return full;
    };
    const TestSocket first = fill();
    network.CheckAnswers(); // replaces it
    CHECK(network.trace.CountContaining("closesocket ") == 1);
    const TestSocket second = fill();
    network.Destroy();
}

TEST_CASE("bad clients: resets, single bytes, no line end") {
    NetworkPanel network;
    const HWND knob = network.panel.Create("KNOB", "Knob");
    for (int i = 0; i < 100; ++i) {
        TestSocket terminal = TestSocket::Connected(TERMINAL_PORT);
        if (i % 3 == 1) {
            terminal.Send("Knob*value=1\n");
        }
        if (i % 3 == 2) {
            terminal.Receive(1);
        }
        terminal.Reset();
    }
    network.CheckAnswers();

    {
        const TestSocket terminal = network.Connect();
        for (const char character : ERASE.substr(0, 50) + "Knob*value=44\r\n") {
            terminal.Send(std::string(1, character));
        }
        CHECK(terminal.Receive(11) == "KNOB*value=");
        network.CheckAnswer(terminal, std::string(1'000'000, '5') + "\n", "KNOB*value=");
        CHECK(network.trace.CountContaining("The network terminal refused a line") == 1);
        CHECK(Value(knob) == 44.0F);
    }

    network.Destroy();
}

TEST_CASE("the CAN channel describes its records on the trace") {
    NetworkPanel network;
    const TestListener canInterface;
    const std::string address = "can=127.0.0.1:" + std::to_string(canInterface.Port());
    CHECK(Load(network.control, address) == 1);
    TestSocket first = canInterface.Accept();
    REQUIRE(first.IsOpen());
    first.Send("xyS10010203040506070809");
    first.Send("0a2301000003ab0007T");
    network.AwaitTrace("skipped 2\n");
    network.AwaitTrace("123 (ab 00 07 )\n");
    CHECK(Text(network.control, "can").empty());

    // A second one takes its place; a record that the first had begun is none of the second's.
    first.Send("S0");
    CHECK(Load(network.control, address) == 1);
    TestSocket second = canInterface.Accept();
    CHECK(first.AwaitEnd());
    // What was sent before the end is not lost.
    second.Send("S01T" + std::string(20000, 'x') + "S16T");
    second.Close();
    network.AwaitTrace("CPC_MSG_T_CAN\n");
    network.AwaitTrace("CPC_MSG_T_KEEPALIVE\n");

    // A socket that is connected already.
    auto* const attach = Exported<int __cdecl(void*, unsigned)>(CONTROL_LIBRARY, "a_AttachCanChannel");
    REQUIRE((attach != nullptr));
    TestSocket attached = TestSocket::Connected(canInterface.Port());
    TestSocket third = canInterface.Accept();
    CHECK(attach(&ObjectOf(network.panel.Create("KNOB", "Knob")), attached.Get()) == 0);
    CHECK(attach(&ObjectOf(network.control), INVALID_SOCKET) == 0);
    CHECK(attach(&ObjectOf(network.control), attached.Release()) == 1);
    third.Send("S09T");
    network.AwaitTrace("CPC_MSG_T_TXACK\n");
    CHECK(Load(network.control, "can=") == 1);
    CHECK(third.AwaitEnd());
    network.CheckAnswers();

    // Nobody there, or no answer: neither the panel nor the end waits.
    CHECK(Load(network.control, "can=127.0.0.1:1") == 1);
    network.AwaitTrace("Windows Sockets error 10061: Couldn't connect to 127.0.0.1\n");
    CHECK(Load(network.control, address) == 1);
    TestSocket fourth = canInterface.Accept();
    for (int i = 0; i < 1000; ++i) {
        Load(network.control, "can=10.255.255.1:9");
    }
    CHECK(fourth.IsOpen());
    network.Destroy();
    CHECK(fourth.AwaitEnd());
}

TEST_CASE("what served terminals leave no trace of: sockets, threads, memory") {
    const std::string left = LeftBehind(20, [] {
        NetworkPanel network;
        const TestListener canInterface;
        Load(network.control, "can=127.0.0.1:" + std::to_string(canInterface.Port()));
        TestSocket records = canInterface.Accept();
        records.Send("S01T");
        network.CheckAnswers();
        TestSocket second = network.Connect();
        second.Send("Net*interval=6\n");
        TestSocket third = network.Connect();
        third.EndSending();
    });
    CHECK(left == "");
}

TEST_CASE("the echo probe, which gives a silent host two seconds") {
    TraceCapture trace;
    if (PingHost("127.0.0.1") != 1 && trace.Count(TRACE_DEBUG, "socket()") != 0) {
        MESSAGE("skipped: raw sockets are not allowed here");
        return;
    }
    CHECK(trace.All() == "");
    CHECK(PingHost("no-such-host.invalid") == 0);
    CHECK(trace.All() == "0 Host not found: no-such-host.invalid\n\n");
    const DWORD start = GetTickCount();
    if (PingHost("198.51.100.1") == 1) { // an address of examples, which nobody has
        MESSAGE("skipped: a router answers for everybody");
        return;
    }
    CHECK(trace.Count(TRACE_DEBUG, "TimeOut\n") == 1);
    CHECK(GetTickCount() - start >= 1900);
}

TEST_SUITE_END();
