// The telephone on a double of tapi32.dll: lines, calls, and the terminal of a caller, whose modem is a pipe.

#include "Panelhost/Trace.h"
#include "tests/doubles/tapi32/TelephonyDouble.h"
#include "tests/windows/ImportHook.h"
#include "tests/windows/Interception.h"
#include "tests/windows/Resources.h"
#include "tests/windows/TestPanel.h"

#include <atomic>
#include <random>
#include <set>

TEST_SUITE_BEGIN("Telephone");

namespace {

const std::string BANNER =
    "\r\n*********************\r\nWelcome to OSMIR\r\n*********************\r\n*"; // 67 bytes

constexpr DWORD PATIENCE = 20000; // milliseconds, for what has to come

TelephonyDouble& Double() {
    auto* const get = Exported<decltype(GetTelephonyDouble)>("tapi32.dll", "GetTelephonyDouble");
    REQUIRE_MESSAGE((get != nullptr), "the system's own tapi32.dll is loaded instead of the double");
    return *get();
}

// A caller, and the port that the control gets of the call. The port's buffer holds so many bytes that were
// not yet heard.
class Caller {
public:
    explicit Caller(DWORD room = 65536) {
        static int number = 0;
        const std::string name = "\\\\.\\pipe\\telephone-" + std::to_string(GetCurrentProcessId()) + "-" +
                                 std::to_string(++number);
        port = CreateNamedPipeA(name.c_str(), PIPE_ACCESS_DUPLEX | FILE_FLAG_OVERLAPPED, PIPE_TYPE_BYTE, 1,
                                room, 65536, 0, nullptr);
        end_ = CreateFileA(name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
        REQUIRE(end_ != INVALID_HANDLE_VALUE);
    }
    ~Caller() { HangUp(); }
    Caller(const Caller&) = delete;
    Caller& operator=(const Caller&) = delete;

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
    std::string Hear(std::size_t count) const {
        std::string heard;
        const auto hearSome = [&] {
            DWORD available = 0;
            PeekNamedPipe(end_, nullptr, 0, nullptr, &available, nullptr);
            std::string block(std::min<std::size_t>(available, count - heard.size()), '\0');
            if (!block.empty()) {
                CHECK(ReadFile(end_, block.data(), block.size(), &available, nullptr) != 0);
                heard += block;
            }
            return heard.size() == count;
        };
        Await(hearSome, PATIENCE);
        return heard;
    }
    // Types, and hears the answer. What is said beyond that stands in front of the next one.
    void Ask(const std::string& text, const std::string& answer) const {
        CAPTURE(text);
        Type(text);
        CHECK(Hear(answer.size()) == answer);
    }
    // Whether the other end is closed.
    bool IsCutOff() const {
        return PeekNamedPipe(end_, nullptr, 0, nullptr, nullptr, nullptr) == 0 &&
               GetLastError() == ERROR_BROKEN_PIPE;
    }

    HANDLE port; // belongs to the control when it was given to it

private:
    HANDLE end_ = INVALID_HANDLE_VALUE;
};

constexpr DWORD CALL = 0x77;

// A panel with a telephone on a line.
class TelephonePanel {
public:
    TelephonePanel() { Create(); }

    void Create() {
        Double().Reset({0x00020000});
        control = panel.Create("ITELEPHONE", "Tel");
        Double().TakeCalls();
    }

    // What the system tells the application.
    void Tell(DWORD message, DWORD_PTR parameter, DWORD device = CALL) const {
        Double().callback(device, message, Double().instance, parameter, 0, 0);
    }
    // A call is connected; the caller has had the banner.
    void Connect(const Caller& caller) const {
        Double().port = caller.port;
        Tell(LINE_CALLSTATE, LINECALLSTATE_CONNECTED);
        CHECK(caller.Hear(BANNER.size()) == BANNER);
    }

    TestPanel panel;
    TraceCapture trace;
    HWND control = nullptr;
};

// The thread of a call: the one that is there and was not before.
class CallThread {
public:
    explicit CallThread(const std::set<DWORD>& before) {
        for (const DWORD thread : ListThreads()) {
            if (before.count(thread) == 0) {
                thread_ = OpenThread(SYNCHRONIZE | THREAD_QUERY_INFORMATION, FALSE, thread);
            }
        }
        REQUIRE(thread_ != nullptr);
    }
    ~CallThread() { CloseHandle(thread_); }
    CallThread(const CallThread&) = delete;
    CallThread& operator=(const CallThread&) = delete;

    bool HasEnded() const { return WaitForSingleObject(thread_, 0) == WAIT_OBJECT_0; }
    // Whether it comes to its own end.
    bool EndsProperly() const {
        DWORD code = 0;
        return Await([this] { return HasEnded(); }) && GetExitCodeThread(thread_, &code) != 0 && code == 11;
    }
    // Whether it uses next to no processor time, however long the machine lets it wait.
    bool Rests() const {
        const ULONGLONG used = ProcessorTime();
        Await([] { return false; }, 500);
        return ProcessorTime() - used < 100;
    }

private:
    ULONGLONG ProcessorTime() const { // milliseconds
        FILETIME times[4];
        CHECK(GetThreadTimes(thread_, &times[0], &times[1], &times[2], &times[3]) != 0);
        ULONGLONG sum = 0;
        for (const FILETIME& time : {times[2], times[3]}) {
            sum += (ULONGLONG{time.dwHighDateTime} << 32 | time.dwLowDateTime) / 10000;
        }
        return sum;
    }

    HANDLE thread_ = nullptr;
};

} // namespace

TEST_CASE("the first device that knows one of the versions is opened, and everything is closed in order") {
    const std::string initialise = "lineInitializeExA program ITELEPHONE 00020002, 24 bytes, options 1";
    const auto negotiated = [](int device) {
        return "; lineNegotiateAPIVersion 100 " + std::to_string(device) + " 00010003 00020002";
    };
    const auto opened = [](const char* device, const char* version, const char* line) {
        return std::string("; lineGetDevCapsA 100 ") + device + " 00020002, 268 bytes; lineOpenA 100 " +
               device + version + " privileges 6 media 16; lineSetStatusMessages " + line + " 2 0";
    };
    const struct {
        std::vector<DWORD> devices; // the version that each settles on
        const char* failing;
        std::string opening, closing;
    } rows[] = {
        {{}, "lineInitializeExA", initialise, ""},
        {{0, 0x00020001, 0x00020002},
         "lineGetDevCapsA", // does not matter
         initialise + negotiated(0) + negotiated(1) + opened("1", " 00020001", "201"),
         "lineClose 201; lineShutdown 100"},
        {{0x00020002},
         "lineOpenA",
         initialise + negotiated(0) + opened("0", " 00020002", "0"),
         "lineShutdown 100"},
    };
    for (const auto& row : rows) {
        CAPTURE(&row - rows);
        Double().Reset(row.devices);
        Double().failures[row.failing] = -5;
        const TestPanel panel;
        HWND telephone = panel.Create("ITELEPHONE", "Tel");
        CHECK(Double().TakeCalls() == row.opening);
        DestroyWindow(telephone);
        CHECK(Double().TakeCalls() == row.closing);
    }
}

TEST_CASE("the callback traces every message, and acts for a telephone that lives") {
    TelephonePanel test;
    const struct {
        DWORD message, parameter;
        std::string line, calls;
    } rows[] = {
        {2, 0x2, "LINECALLSTATE_OFFERING...\n",
         "lineGetCallStatus 77, 56 bytes; lineGetCallInfoA 77, 324 bytes; lineAnswer 77 null 0"},
        {2, 0x100, "LINECALLSTATE_CONNECTED...\n",
         "lineGetIDA 200 77 4 comm/datamodem, 24 bytes; lineGetIDA 200 77 4 comm/datamodem, 38 bytes"},
        {2, 0x4000, "LINECALLSTATE_DISCONNECTED...\n", "lineDeallocateCall 77"},
        {19, 2, "LINE_ ?19\n", ""},
    };
    const auto check = [&](bool lives) {
        for (const auto& row : rows) {
            CAPTURE(row.line);
            test.trace.Clear();
            test.Tell(row.message, row.parameter);
            CHECK(Double().TakeCalls() == (lives ? row.calls : ""));
            CHECK(test.trace.All() == "0 " + row.line + "\n");
        }
    };
    check(true);
    DestroyWindow(test.control);
    Double().TakeCalls();
    check(false);
    HWND knob = test.panel.Create("KNOB", "Knob"); // possibly where the telephone was
    check(false);
    DestroyWindow(knob);
}

TEST_CASE("a session: prompts, values, and what is no line") {
    TelephonePanel test;
    HWND knob = test.panel.Create("KNOB", "Knob1");
    HWND strip = test.panel.Create("MIXER", "Strip");
    HWND child = CreateControl("KNOB", "Gain", strip, &ObjectOf(strip));
    const Caller caller;
    test.Connect(caller);

    const std::string erase(20, '\b');
    const struct {
        std::string typed, answer;
        float value; // of the knob then
    } rows[] = {
        {"KNOB1*GAIN=3\r", "\rKNOB1*GAIN=", 3}, // a keyword that it does not know is its value
        {"\b\b\b\b\binterval=900\n\r", "\rKNOB1*interval=", 3}, // a line feed is no end
        {erase + "Strip*Gain*value=7\r", "\rStrip*Gain*value=", 3},
        {erase + "knob1*value=6\r?\r", "\rknob1*value=6\r\n\rknob1*value=", 6},
        {erase + "nobody*value=?\r", "\r\n\r*", 6},
        {erase + "knob1*bitmap=NUL\r", "\rknob1*bitmap=", 6},
        {erase + "knob1*value=" + std::string(5000, '0') + "8\r", "\rknob1*bitmap=", 6}, // is too long
        {erase + "Tel*interval=7\r", "\rTel*", 6}, // it does not take values itself
        {erase + "KNOB1*value=1\r2\r3\r", "\rKNOB1*value=\rKNOB1*value=\rKNOB1*value=", 3},
    };
    for (const auto& row : rows) {
        caller.Ask(row.typed, row.answer);
        CHECK(Value(knob) == row.value);
    }
    CHECK(ObjectOf(knob).interval == 900);
    CHECK(Value(child) == 7.0F);
    CHECK(ObjectOf(test.control).interval == 60000);
    CHECK(test.trace.Count(TRACE_EDIT, "Not to be set by a terminal: Knob1*bitmap=NUL") == 1);
    CHECK(test.trace.CountContaining("The telephone terminal refused a line") == 1);
    DestroyWindow(test.control);
    CHECK(Await([&] { return caller.IsCutOff(); }));
}

TEST_CASE("a second call takes the place of the first, a disconnected one leaves the terminal as it is") {
    TelephonePanel test;
    HWND knob = test.panel.Create("KNOB", "Knob");
    const std::set<DWORD> before = ListThreads();
    const Caller first, second;
    test.Connect(first);
    const CallThread thread(before);
    first.Ask("Knob*value=1\r", "\rKnob*value=");
    test.Tell(LINE_CALLSTATE, LINECALLSTATE_DISCONNECTED);
    first.Ask("2\r", "\rKnob*value=");
    test.Connect(second);
    CHECK(thread.EndsProperly());
    CHECK(first.IsCutOff());
    second.Ask("3\r", "\r*"); // nothing of the first call is left
    second.Ask("Knob*value=4\r5", "\rKnob*value=");
    test.Connect(second); // the same port once more
    second.Ask("Knob*value=6\r", "\rKnob*value=");
    CHECK(Value(knob) == 6.0F);
}

TEST_CASE("after a hang-up the thread rests until the telephone goes") {
    TelephonePanel test;
    HWND knob = test.panel.Create("KNOB", "Knob");
    const std::set<DWORD> before = ListThreads();
    Caller caller;
    test.Connect(caller);
    const CallThread thread(before);
    caller.Ask("Knob*value=1\r2\r3", "\rKnob*value=\rKnob*value=");
    CHECK(Value(knob) == 2.0F);
    caller.HangUp();
    CHECK(Await([&] { return thread.Rests(); }));
    CHECK_FALSE(thread.HasEnded());
    DestroyWindow(test.control);
    CHECK(thread.EndsProperly());
}

TEST_CASE("a caller who hears nothing gets everything later, and delays no end") {
    TelephonePanel test;
    HWND knob = test.panel.Create("KNOB", "Knob");
    const std::set<DWORD> before = ListThreads();
    const Caller caller(1);
    Double().port = caller.port;
    test.Tell(LINE_CALLSTATE, LINECALLSTATE_CONNECTED);
    const CallThread thread(before);
    caller.Type("Knob*value=1\r2\r3\r");
    CHECK(Await([&] { return Value(knob) == 1.0F; })); // the answer has to wait for the banner
    CHECK(Await([&] { return thread.Rests(); }));
    CHECK(Value(knob) == 1.0F);

    CHECK(caller.Hear(BANNER.size()) == BANNER);
    caller.Ask("", "\rKnob*value=\rKnob*value=\rKnob*value=");
    CHECK(Value(knob) == 3.0F);
    caller.Type("4\r5\r");
    CHECK(Await([&] { return Value(knob) == 5.0F; })); // one answer is pending, another one waits
    DestroyWindow(test.control);
    CHECK(thread.EndsProperly());
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
        {"destroy both",
         [](TelephonePanel& test, Caller&, HWND knob) {
             DestroyWindow(knob);
             DestroyWindow(test.control);
         }},
        {"close the panel", [](TelephonePanel& test, Caller&, HWND) { test.panel.Close(); }},
    };
    for (const auto& row : rows) {
        CAPTURE(row.what);
        const std::set<DWORD> before = ListThreads();
        TelephonePanel test;
        HWND knob = test.panel.Create("KNOB", "Knob");
        Caller caller;
        test.Connect(caller);
        int runs = 0;
        const Interception interception(knob, CWM_MESSAGE, [&] {
            if (++runs == 1) {
                row.act(test, caller, knob);
            }
        });
        caller.Type("Knob*value=1\r2\r");
        CHECK(Await([&] { return runs > 0; }));
        DestroyWindow(test.control);
        CHECK(Await([&] { return ListThreads().size() <= before.size(); }));
    }
}

TEST_CASE("a telephone goes at any moment of a call and leaves nothing behind") {
    std::minstd_rand random(7);
    TestPanel panel;
    HWND knob = panel.Create("KNOB", "Knob");
    Double().Reset({0x00020000});
    // As a window that shows the trace: whoever traces waits for this thread.
    ph_SetTraceSink(
        [](int, const char*, void* window) { SendMessageA(static_cast<HWND>(window), WM_NULL, 0, 0); },
        panel.Window());
    const std::string left = LeftBehind(200, [&] {
        HWND control = panel.Create("ITELEPHONE", "Tel");
        Caller caller(random() % 2 == 0 ? 1 : 1000);
        Double().port = caller.port;
        Double().TakeCalls();
        Double().callback(CALL, LINE_CALLSTATE, Double().instance, LINECALLSTATE_CONNECTED, 0, 0);
        caller.Type("Knob*value=1\r2\r3\r");
        if (random() % 4 == 0) {
            caller.HangUp();
        }
        Await([] { return false; }, random() % 4);
        DestroyWindow(control);
    });
    CHECK(left == "");
    ph_SetTraceSink(nullptr, nullptr);
    Double().TakeCalls();
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
    const std::set<DWORD> before = ListThreads();
    const Caller caller;
    {
        const ImportHook hook(CONTROL_LIBRARY, "SetCommTimeouts", +setTimeouts);
        test.Connect(caller);
        CHECK(Await([] { return hangs.load(); }));
        DestroyWindow(test.control);
    }
    CHECK_FALSE(caller.IsCutOff());
    SetEvent(goesOn);
    CHECK(Await([&] { return caller.IsCutOff() && ListThreads().size() <= before.size(); }));
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
        {"lineGetIDA", 38, 28, nullptr}, {"", 38, 28, nullptr},     {"", 38, 28, INVALID_HANDLE_VALUE},
        {"", 0, 28, caller.port},        {"", 38, 35, caller.port}, {"", 38, 0xFFFFFFFF, caller.port},
    };
    const std::set<DWORD> before = ListThreads();
    for (const auto& row : rows) {
        CAPTURE(&row - rows);
        DestroyWindow(test.control);
        test.Create();
        Double().failures[row.failing] = -5;
        Double().neededSize = row.neededSize;
        Double().offset = row.offset;
        Double().port = row.port;
        test.Tell(LINE_CALLSTATE, LINECALLSTATE_CONNECTED);
        CHECK(ListThreads().size() <= before.size());
    }
}

TEST_SUITE_END();
