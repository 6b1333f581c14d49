// The telephone on a double of tapi32.dll: lines, calls, and the terminal of a caller, whose modem is a pipe.

#include "tests/doubles/tapi32/TelephonyDouble.h"
#include "tests/windows/ImportHook.h"
#include "tests/windows/Resources.h"
#include "tests/windows/TestPanel.h"

#include <atomic>
#include <random>
#include <set>
#include <tlhelp32.h>

TEST_SUITE_BEGIN("Telephone");

namespace {

using Calls = std::vector<std::string>;

const std::string BANNER =
    "\r\n*********************\r\nWelcome to OSMIR\r\n*********************\r\n*"; // 67 bytes

constexpr DWORD PROMPTLY = 1000;  // milliseconds that no end may take, however it is hindered
constexpr DWORD PATIENCE = 10000; // for what has to come

TelephonyDouble& Double() {
    const auto exported =
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("tapi32.dll"), "GetTelephonyDouble"));
    REQUIRE_MESSAGE(exported != nullptr, "the system's own tapi32.dll is loaded instead of the double");
    return *reinterpret_cast<decltype(&GetTelephonyDouble)>(exported)();
}

void SleepDispatching(DWORD milliseconds) {
    Await([] { return false; }, milliseconds);
}

// A caller, and the port that the control gets of the call. The port's buffer holds so many bytes that were
// not yet heard.
class Caller {
public:
    explicit Caller(DWORD room = 65536) {
        static int number = 0;
        name_ = "\\\\.\\pipe\\telephone-" + std::to_string(GetCurrentProcessId()) + "-" +
                std::to_string(++number);
        port = CreateNamedPipeA(name_.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED, PIPE_TYPE_BYTE, 1,
                                room, 65536, 0, nullptr);
        Dial();
    }
    ~Caller() { HangUp(); }
    Caller(const Caller&) = delete;
    Caller& operator=(const Caller&) = delete;

    void Dial() {
        end_ =
            CreateFileA(name_.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        REQUIRE(end_ != INVALID_HANDLE_VALUE);
    }
    void HangUp() {
        if (end_ != INVALID_HANDLE_VALUE) {
            CloseHandle(std::exchange(end_, INVALID_HANDLE_VALUE));
        }
    }
    void Type(const std::string& text) const {
        DWORD count = 0;
        CHECK(WriteFile(end_, text.data(), text.size(), &count, nullptr) != 0);
    }
    // That many bytes, or fewer when no more come.
    std::string Hear(std::size_t count, DWORD patience = PATIENCE) const {
        std::string heard;
        Await(
            [&] {
                DWORD available = 0;
                PeekNamedPipe(end_, nullptr, 0, nullptr, &available, nullptr);
                std::string block(std::min<std::size_t>(available, count - heard.size()), '\0');
                if (!block.empty()) {
                    CHECK(ReadFile(end_, block.data(), block.size(), &available, nullptr) != 0);
                    heard += block;
                }
                return heard.size() == count;
            },
            patience);
        return heard;
    }
    // Types, and hears the answer, which must not be followed by anything.
    void Ask(const std::string& text, const std::string& answer) const {
        CAPTURE(text);
        Type(text);
        CHECK(Hear(answer.size()) == answer);
        CHECK(Hear(1, 30).empty());
    }
    // Whether the other end is closed.
    bool IsCutOff() const {
        return PeekNamedPipe(end_, nullptr, 0, nullptr, nullptr, nullptr) == 0 &&
               GetLastError() == ERROR_BROKEN_PIPE;
    }

    HANDLE port; // belongs to the control when it was given to it

private:
    std::string name_;
    HANDLE end_ = INVALID_HANDLE_VALUE;
};

constexpr DWORD CALL = 0x77;

// A panel with a telephone on a line.
class TelephonePanel {
public:
    TelephonePanel() {
        Double().Reset();
        Double().AddDevice(0x00020000);
        control = panel.Create("ITELEPHONE", "Tel");
        Double().TakeCalls();
    }

    // What the system tells the application.
    void Tell(DWORD message, DWORD_PTR parameter, DWORD device = CALL) const {
        Double().Callback()(device, message, Double().Instance(), parameter, 0, 0);
    }
    // A call is connected; the caller has had the banner.
    void Connect(const Caller& caller) const {
        Double().SetPort(caller.port);
        Tell(LINE_CALLSTATE, LINECALLSTATE_CONNECTED);
        CHECK(caller.Hear(BANNER.size()) == BANNER);
    }
    // Destroys the control, without a delay.
    void Destroy() const {
        const DWORD start = GetTickCount();
        DestroyWindow(control);
        CHECK(GetTickCount() - start < PROMPTLY);
        CHECK_FALSE(IsWindow(control));
    }
    bool AwaitTrace(const std::string& line, int count = 1) const {
        return Await([&] { return trace.Count(TRACE_DEBUG, line) >= count; });
    }

    TestPanel panel;
    TraceCapture trace;
    HWND control = nullptr;
};

// Runs a function when the control is sent a value, before the control takes it.
class Interception {
public:
    Interception(HWND control, std::function<void()> action) {
        action_ = std::move(action);
        procedure_ = reinterpret_cast<WNDPROC>(
            SetWindowLongA(control, GWL_WNDPROC, reinterpret_cast<LONG>(&Procedure)));
    }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == CWM_MESSAGE && reinterpret_cast<VALUERECORD*>(lParam)->command == COMMAND_SET) {
            action_();
        }
        return CallWindowProcA(procedure_, window, message, wParam, lParam);
    }

    static inline std::function<void()> action_;
    static inline WNDPROC procedure_ = nullptr;
};

std::set<DWORD> Threads() {
    std::set<DWORD> threads;
    HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    for (BOOL found = Thread32First(snapshot, &entry); found; found = Thread32Next(snapshot, &entry)) {
        if (entry.th32OwnerProcessID == GetCurrentProcessId()) {
            threads.insert(entry.th32ThreadID);
        }
    }
    CloseHandle(snapshot);
    return threads;
}

// The thread that is there now and was not before.
HANDLE NewThread(const std::set<DWORD>& before) {
    for (const DWORD thread : Threads()) {
        if (before.count(thread) == 0) {
            return OpenThread(SYNCHRONIZE | THREAD_QUERY_INFORMATION, FALSE, thread);
        }
    }
    return nullptr;
}

bool HasEnded(HANDLE thread) {
    return WaitForSingleObject(thread, 0) == WAIT_OBJECT_0;
}

ULONGLONG ProcessorTime(HANDLE thread) { // milliseconds
    FILETIME times[4];
    CHECK(GetThreadTimes(thread, &times[0], &times[1], &times[2], &times[3]) != 0);
    ULONGLONG sum = 0;
    for (const FILETIME& time : {times[2], times[3]}) {
        sum += (ULONGLONG{time.dwHighDateTime} << 32 | time.dwLowDateTime) / 10000;
    }
    return sum;
}

} // namespace

TEST_CASE("the first device that knows one of the versions is opened, and everything is closed in order") {
    const std::string initialise = "lineInitializeExA program ITELEPHONE 00020002, 24 bytes, options 1";
    const auto negotiate = [](int device) {
        return "lineNegotiateAPIVersion 100 " + std::to_string(device) + " 00010003 00020002";
    };
    const struct {
        std::vector<DWORD> devices; // the version that each settles on
        const char* failing;
        Calls opening, closing;
    } rows[] = {
        {{}, "lineInitializeExA", {initialise}, {}},
        {{}, "", {initialise, "lineShutdown 100"}, {}},
        {{0x00010004},
         "",
         {initialise, negotiate(0), "lineGetDevCapsA 100 0 00020002, 268 bytes",
          "lineOpenA 100 0 00010004 privileges 6 media 16", "lineSetStatusMessages 200 2 0"},
         {"lineClose 200", "lineShutdown 100"}},
        {{0, 0x00020001, 0x00020002},
         "lineGetDevCapsA", // does not matter
         {initialise, negotiate(0), negotiate(1), "lineGetDevCapsA 100 1 00020002, 268 bytes",
          "lineOpenA 100 1 00020001 privileges 6 media 16", "lineSetStatusMessages 201 2 0"},
         {"lineClose 201", "lineShutdown 100"}},
        {{0, 0}, "", {initialise, negotiate(0), negotiate(1)}, {"lineShutdown 100"}},
        {{0x00020002},
         "lineOpenA",
         {initialise, negotiate(0), "lineGetDevCapsA 100 0 00020002, 268 bytes",
          "lineOpenA 100 0 00020002 privileges 6 media 16", "lineSetStatusMessages 0 2 0"},
         {"lineShutdown 100"}},
    };
    for (const auto& row : rows) {
        CAPTURE(&row - rows);
        Double().Reset();
        for (const DWORD version : row.devices) {
            Double().AddDevice(version);
        }
        Double().Fail(row.failing, -5);
        const TestPanel panel;
        HWND telephone = panel.Create("ITELEPHONE", "Tel");
        REQUIRE(telephone != nullptr);
        CHECK(Double().TakeCalls() == row.opening);
        DestroyWindow(telephone);
        CHECK(Double().TakeCalls() == row.closing);
    }
}

TEST_CASE("the callback traces every message, and acts for a telephone that lives") {
    TelephonePanel test;
    const struct {
        DWORD message, parameter;
        const char* line;
        Calls calls;
    } rows[] = {
        {2, 0x1, "LINECALLSTATE_IDLE...\n", {}},
        {2,
         0x2,
         "LINECALLSTATE_OFFERING...\n",
         {"lineGetCallStatus 77, 56 bytes", "lineGetCallInfoA 77, 324 bytes", "lineAnswer 77 null 0"}},
        {2, 0x4, "LINECALLSTATE_ACCEPTED...\n", {}},
        {2,
         0x100,
         "LINECALLSTATE_CONNECTED...\n",
         {"lineGetIDA 200 77 4 comm/datamodem, 24 bytes", "lineGetIDA 200 77 4 comm/datamodem, 38 bytes"}},
        {2, 0x4000, "LINECALLSTATE_DISCONNECTED...\n", {"lineDeallocateCall 77"}},
        {2, 0x8, "LINECALLSTATE_?2\n", {}},
        {3, 0, "LINE_CLOSED...\n", {}},
        {8, 0x2, "LINEDEVSTATE_RINGING...\n", {}},
        {8, 0x40000, "LINEDEVSTATE_REINIT...\n", {}},
        {8, 0x4, "LINE_LINEDEVSTATE ?8\n", {}},
        {12, 0, "LINE_REPLY...\n", {}},
        {0, 0, "LINE_ ?0\n", {}},
        {19, 2, "LINE_ ?19\n", {}},
    };
    const auto check = [&](bool lives) {
        for (const auto& row : rows) {
            CAPTURE(row.line);
            test.trace.Clear();
            test.Tell(row.message, row.parameter);
            CHECK(Double().TakeCalls() == (lives ? row.calls : Calls{}));
            CHECK(test.trace.All() == std::string("0 ") + row.line + "\n");
        }
    };
    check(true);
    test.Destroy();
    Double().TakeCalls();
    check(false);
    HWND knob = test.panel.Create("KNOB", "Knob"); // possibly where the telephone was
    check(false);
    DestroyWindow(knob);
}

TEST_CASE("a session: prompts, values, and what is no line") {
    TelephonePanel test;
    test.panel.Declare("AMP1*device=simulated\nAMP1*gain=float,-80,18,-20,dB\n");
    HWND knob = test.panel.Create("KNOB", "Knob1");
    HWND strip = test.panel.Create("MIXER", "Strip");
    HWND child = CreateControl("KNOB", "Gain", strip, &ObjectOf(strip));
    const Caller caller;
    test.Connect(caller);
    CHECK(caller.Hear(1, 30).empty());
    CHECK(test.AwaitTrace("Write 67\n"));

    caller.Ask("KNOB1*GAIN=3\r", "\rKNOB1*GAIN="); // a keyword that it does not know is its value
    CHECK(Value(knob) == 3.0F);
    CHECK(test.AwaitTrace("Write 12\n"));
    caller.Ask("4\r\n", "\rKNOB1*GAIN=");
    CHECK(Value(knob) == 4.0F);
    caller.Ask("\b\b\b\b\binterval=900\n", ""); // a line feed is no end
    caller.Ask("\r", "\rKNOB1*interval=");
    CHECK(ObjectOf(knob).interval == 900);
    CHECK(Value(knob) == 4.0F);
    caller.Ask("no\r", "\rKNOB1*interval="); // refused
    CHECK(ObjectOf(knob).interval == 900);
    const std::string erase(20, '\b');
    caller.Ask(erase + "Strip*Gain*value=7\r", "\rStrip*Gain*value=");
    CHECK(Value(child) == 7.0F);
    caller.Ask(erase + "knob1*\r", "\rknob1*");
    caller.Ask("\r", "\rknob1*");
    caller.Ask("..\r", "\rknob1*");
    CHECK(Value(knob) == 4.0F);
    caller.Ask(erase + "knob1*6\r", "\rknob1*"); // without a keyword: the value
    CHECK(Value(knob) == 6.0F);
    caller.Ask("?\r", "6\r\n\rknob1*");
    caller.Ask("value=4\r?\r", "\rknob1*value=4\r\n\rknob1*value=");
    caller.Ask(erase + "nobody*value=?\r", "\r\n\r*");
    caller.Ask("Tel*interval=?\r", "60000\r\n\rTel*");
    caller.Ask(erase + "knob1*bitmap=NUL\r", "\rknob1*bitmap=");
    CHECK(test.trace.Count(TRACE_EDIT, "Not to be set by a terminal: Knob1*bitmap=NUL") == 1);
    CHECK(Load(knob, "properties=0,100,4") == 1);
    const std::string longest(4095 - 13, '0');
    caller.Ask(erase + "knob1*value=" + longest + "7\r", "\rknob1*value=");
    CHECK(Value(knob) == 7.0F);
    caller.Ask(longest + "18\r", "\rknob1*value=");
    CHECK(Value(knob) == 7.0F);
    CHECK(test.trace.CountContaining("The telephone terminal refused a line") == 1);
    caller.Ask("4\r", "\rknob1*value=");
    caller.Ask(erase + "AMP1*nosuch=?\r", "\r\n\rAMP1*");
    caller.Ask(erase + "AMP1*gain=-5.5\r", "\rAMP1*gain=");
    CHECK(test.panel.Parameter("AMP1*gain") == "-5.5");
    caller.Ask(erase + "AMP1*nosuch=1\r", "\rAMP1*");
    caller.Ask(erase + "nobody*value=1\r", "\r*");
    caller.Ask("KNOB1*value=5\r", "\rKNOB1*value=");
    CHECK(Value(knob) == 5.0F);
    caller.Ask(erase + "dir\r", "\r*");
    caller.Ask("\bTel*interval=7\r", "\rTel*"); // it does not take values itself
    CHECK(ObjectOf(test.control).interval == 60000);
    caller.Ask(erase + "KNOB1*value=1\r2\r3\r", "\rKNOB1*value=\rKNOB1*value=\rKNOB1*value=");
    CHECK(Value(knob) == 3.0F);
    test.Destroy();
    CHECK(caller.IsCutOff());
}

TEST_CASE("a second call takes the place of the first, a disconnected one leaves the terminal as it is") {
    TelephonePanel test;
    HWND knob = test.panel.Create("KNOB", "Knob");
    const std::set<DWORD> before = Threads();
    const Caller first, second;
    test.Connect(first);
    HANDLE firstThread = NewThread(before);
    REQUIRE(firstThread != nullptr);
    first.Ask("Knob*value=1\r", "\rKnob*value=");
    test.Tell(LINE_CALLSTATE, LINECALLSTATE_DISCONNECTED);
    first.Ask("2\r", "\rKnob*value=");

    test.Connect(second);
    CHECK(HasEnded(firstThread));
    CHECK(first.IsCutOff());
    DWORD code = 0;
    CHECK(GetExitCodeThread(firstThread, &code) != 0);
    CHECK(code == 11);
    CloseHandle(firstThread);
    second.Ask("3\r", "\r*"); // nothing of the first call is left
    second.Ask("Knob*value=4\r5", "\rKnob*value=");
    test.Connect(second); // the same port once more
    second.Ask("Knob*value=6\r", "\rKnob*value=");
    CHECK(Value(knob) == 6.0F);
    CHECK(Threads().size() == before.size() + 1);

    HANDLE thread = NewThread(before);
    test.Destroy();
    CHECK(HasEnded(thread));
    CHECK(GetExitCodeThread(thread, &code) != 0);
    CHECK(code == 11);
    CloseHandle(thread);
    CHECK(second.IsCutOff());
}

TEST_CASE(
    "after a hang-up the thread rests, and goes on where it was when there is something to read again") {
    TelephonePanel test;
    HWND knob = test.panel.Create("KNOB", "Knob");
    const std::set<DWORD> before = Threads();
    Caller caller;
    HANDLE port = nullptr;
    DuplicateHandle(GetCurrentProcess(), caller.port, GetCurrentProcess(), &port, 0, FALSE,
                    DUPLICATE_SAME_ACCESS);
    test.Connect(caller);
    HANDLE thread = NewThread(before);
    REQUIRE(thread != nullptr);
    caller.Ask("Knob*value=1\rvalue", "\rKnob*value=");
    caller.Ask("\b\b\b\b\b2", "");
    caller.HangUp();
    SleepDispatching(300);
    const ULONGLONG used = ProcessorTime(thread);
    SleepDispatching(1000);
    CHECK(ProcessorTime(thread) - used < 100);
    CHECK_FALSE(HasEnded(thread));

    DisconnectNamedPipe(port);
    OVERLAPPED connecting{};
    connecting.hEvent = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    ConnectNamedPipe(port, &connecting);
    caller.Dial();
    CHECK(WaitForSingleObject(connecting.hEvent, PATIENCE) == WAIT_OBJECT_0);
    caller.Ask("3\r", "\rKnob*value=");
    CHECK(Value(knob) == 23.0F);
    CloseHandle(connecting.hEvent);
    CloseHandle(port);
    caller.HangUp();
    test.Destroy();
    CHECK(HasEnded(thread));
    CloseHandle(thread);
}

TEST_CASE("a caller who hears nothing gets everything later, and delays no end") {
    TelephonePanel test;
    HWND knob = test.panel.Create("KNOB", "Knob");
    const std::set<DWORD> before = Threads();
    const Caller caller(1);
    Double().SetPort(caller.port);
    test.Tell(LINE_CALLSTATE, LINECALLSTATE_CONNECTED);
    HANDLE thread = NewThread(before);
    REQUIRE(thread != nullptr);
    caller.Type("Knob*value=1\r2\r3\r");
    CHECK(Await([&] { return Value(knob) == 1.0F; })); // the answer has to wait for the banner
    SleepDispatching(100);
    CHECK(Value(knob) == 1.0F);
    CHECK(test.trace.CountContaining("Write ") == 0);
    const ULONGLONG used = ProcessorTime(thread);
    SleepDispatching(500);
    CHECK(ProcessorTime(thread) - used < 100);

    CHECK(caller.Hear(BANNER.size()) == BANNER);
    caller.Ask("", "\rKnob*value=\rKnob*value=\rKnob*value=");
    CHECK(Value(knob) == 3.0F);
    CHECK(test.AwaitTrace("Write 67\n"));
    CHECK(test.AwaitTrace("Write 12\n", 3));
    caller.Type("4\r5\r");
    CHECK(Await([&] { return Value(knob) == 5.0F; })); // one answer is pending, another one waits
    test.Destroy();
    CHECK(HasEnded(thread));
    CloseHandle(thread);
}

TEST_CASE("a line may end its own call, its telephone, its panel and its object") {
    const struct {
        const char* what;
        std::function<void(TelephonePanel&, Caller&, HWND)> act;
    } rows[] = {
        {"hang up", [](TelephonePanel&, Caller& caller, HWND) { caller.HangUp(); }},
        {"another call",
         [](TelephonePanel& test, Caller&, HWND) {
             const Caller other;
             test.Connect(other);
         }},
        {"destroy the telephone", [](TelephonePanel& test, Caller&, HWND) { test.Destroy(); }},
        {"destroy both",
         [](TelephonePanel& test, Caller&, HWND knob) {
             DestroyWindow(knob);
             test.Destroy();
         }},
        {"close the panel", [](TelephonePanel& test, Caller&, HWND) { test.panel.Close(); }},
    };
    for (const auto& row : rows) {
        CAPTURE(row.what);
        const std::set<DWORD> before = Threads();
        TelephonePanel test;
        HWND knob = test.panel.Create("KNOB", "Knob");
        Caller caller;
        test.Connect(caller);
        int runs = 0;
        const Interception interception(knob, [&] {
            if (++runs == 1) {
                row.act(test, caller, knob);
            }
        });
        caller.Type("Knob*value=1\r2\r");
        CHECK(Await([&] { return runs > 0; }));
        SleepDispatching(50);
        if (IsWindow(test.control)) {
            test.Destroy();
        }
        CHECK(Await([&] { return Threads().size() <= before.size(); }));
    }
}

TEST_CASE("a telephone goes at any moment of a call and leaves nothing behind") {
    constexpr int COUNT = 300;
    std::minstd_rand random(7);
    TestPanel panel;
    HWND knob = panel.Create("KNOB", "Knob");
    Double().Reset();
    Double().AddDevice(0x00020000);
    // As a window that shows the trace: whoever traces waits for this thread.
    ph_SetTraceSink(
        [](int, const char*, void* window) { SendMessageA(static_cast<HWND>(window), WM_NULL, 0, 0); },
        panel.Window());
    const auto live = [&] {
        HWND control = panel.Create("ITELEPHONE", "Tel");
        Caller caller(random() % 2 == 0 ? 1 : 1000);
        Double().SetPort(caller.port);
        Double().Callback()(CALL, LINE_CALLSTATE, Double().Instance(), LINECALLSTATE_CONNECTED, 0, 0);
        caller.Type("Knob*value=1\r2\r3\r");
        switch (random() % 4) {
        case 0:
            caller.HangUp();
            break;
        case 1:
            caller.Type(std::string(60000, 'x')); // takes seconds to be read
            break;
        default:
            break;
        }
        SleepDispatching(random() % 4);
        const DWORD start = GetTickCount();
        DestroyWindow(control);
        CHECK(GetTickCount() - start < PROMPTLY);
    };
    for (int i = 0; i < 20; ++i) {
        live();
    }
    const Resources before = CountResources();
    const int blocks = CountHeapBlocks();
    for (int i = 0; i < COUNT; ++i) {
        live();
    }
    ph_SetTraceSink(nullptr, nullptr);
    Double().TakeCalls();
    CHECK(CountResources().Settled(before) == before);
    CHECK(CountHeapBlocks() < blocks + COUNT / 4);
    DestroyWindow(knob);
}

TEST_CASE("a telephone goes while its modem's driver hangs, and the port is closed when that comes back") {
    static HANDLE goesOn;
    goesOn = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    static std::atomic<bool> hangs;
    hangs = false;
    const auto setTimeouts = [](HANDLE, COMMTIMEOUTS*) __attribute__((stdcall))->BOOL {
        hangs = true;
        WaitForSingleObject(goesOn, INFINITE);
        return FALSE;
    };
    TelephonePanel test;
    const std::set<DWORD> before = Threads();
    const Caller caller;
    {
        const ImportHook hook(CONTROL_LIBRARY, "SetCommTimeouts", +setTimeouts);
        test.Connect(caller);
        CHECK(Await([] { return hangs.load(); }));
        test.Destroy();
    }
    CHECK_FALSE(caller.IsCutOff());
    CHECK(Threads().size() == before.size() + 1);
    SetEvent(goesOn);
    CHECK(Await([&] { return caller.IsCutOff() && Threads().size() <= before.size(); }));
    CloseHandle(goesOn);
}

TEST_CASE("a call without a port is left alone") {
    TelephonePanel test;
    const Caller caller; // whose port is not used where the record is not sound
    const struct {
        const char* failing;
        DWORD neededSize, offset;
        HANDLE port;
    } rows[] = {
        {"lineGetIDA", 38, 28, nullptr},    {"", 38, 28, nullptr},
        {"", 38, 28, INVALID_HANDLE_VALUE}, {"", 0, 28, caller.port},
        {"", 0xFFFFFFFF, 28, caller.port},  {"", 38, 0, caller.port},
        {"", 38, 35, caller.port},          {"", 38, 0xFFFFFFFF, caller.port},
    };
    const std::set<DWORD> before = Threads();
    for (const auto& row : rows) {
        CAPTURE(&row - rows);
        Double().Reset();
        Double().AddDevice(0x00020000);
        DestroyWindow(test.control);
        test.control = test.panel.Create("ITELEPHONE", "Tel");
        Double().Fail(row.failing, -5);
        Double().SetNeededSize(row.neededSize);
        Double().SetOffset(row.offset);
        Double().SetPort(row.port);
        test.Tell(LINE_CALLSTATE, LINECALLSTATE_CONNECTED);
        CHECK(Threads() == before);
    }
    Double().Reset();
    Double().AddDevice(0x00020000);
    DestroyWindow(test.control);
    test.control = test.panel.Create("ITELEPHONE", "Tel");
    test.Connect(caller);
}

TEST_CASE("property text, and the window's own answers") {
    TelephonePanel test;
    CHECK(Text(test.control).empty());
    CHECK(Load(test.control, "interval=500", LOAD_FROM_FILE) == 1);
    CHECK(ObjectOf(test.control).interval == 500);
    for (const char* line : {"value=1", "connection=Knob", "interval=x"}) {
        CAPTURE(line);
        CHECK(Load(test.control, line) == 0);
        CHECK(test.trace.Count(TRACE_EDIT, std::string("Error reading line ") + line) == 1);
    }
    CHECK(Load(test.control, "nosuch=1") == 0);
    CHECK(test.trace.Count(TRACE_DEBUG, "Telephone Keyword not found: nosuch\n") == 1);
    CHECK(SendMessageA(test.control, CWM_GETCONTROLTYPE, 0, 0) == 0);

    CHECK(SendMessageA(test.control, WM_ERASEBKGND, 0, 0) == 1);
}
