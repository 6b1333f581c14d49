// The MIDI control on a double of winmm.dll: devices, ports, what is sent and what is received.

#include "Panelhost/Trace.h"
#include "tests/doubles/winmm/MidiDouble.h"
#include "tests/windows/TestPanel.h"

#include <atomic>
#include <limits>
#include <thread>

TEST_SUITE_BEGIN("Midi");

namespace {

// Not for other threads than that of the tests, which checks belong to.
MidiDouble& Double() {
    auto* const get = Exported<decltype(GetMidiDouble)>("winmm.dll", "GetMidiDouble");
    REQUIRE_MESSAGE((get != nullptr), "the system's own winmm.dll is loaded instead of the double");
    return *get();
}

// A panel with one MIDI control, two inputs and two outputs.
class MidiPanel {
public:
    MidiPanel() {
        Double().Reset({"Desk A", "Desk B"}, {"Desk A", "Desk B"});
        midi = panel.Create("IMIDI", "Midi1");
    }

    // Chooses the devices, opens the ports and sends what is to be sent at first.
    void Start(const char* devices = "driver=IN: Desk A, OUT: Desk A") const {
        CHECK(Load(midi, devices) == 1);
        Run("run=1", "1");
        Poll(midi);
        Double().TakeCalls();
    }
    // Sets whether the ports are to be open; what it says about that afterwards.
    void Run(const char* line, const char* shown) const {
        CHECK(Load(midi, line) == 1);
        CHECK(Text(midi, "run") == shown);
    }
    void Set(const char* keyword, int value) const {
        CHECK(Send(midi, COMMAND_SET, DATATYPE_INTEGER, &value, keyword) == 0);
    }
    // The messages that the next sending pass sends to an open port.
    std::string Pass() const {
        static const std::string call = "midiOutShortMsg 0 ";
        Double().TakeCalls();
        Poll(midi);
        std::string messages = Double().TakeCalls();
        for (auto at = messages.find(call); at != std::string::npos; at = messages.find(call)) {
            messages.erase(at, call.size());
        }
        return messages;
    }

    const TestPanel panel;
    HWND midi;
};

// The calls of a closing, which a thread of its own makes.
std::string TakeClosing() {
    std::string calls;
    CHECK(Await([&] {
        const std::string more = Double().TakeCalls();
        calls += (calls.empty() || more.empty() ? "" : "; ") + more;
        return calls.find("midiOutClose") != std::string::npos;
    }));
    return calls;
}

bool AwaitClosed() {
    return Await([] { return Double().OpenPorts() == 0; });
}

const std::string CLOSING = "midiInStop 0; midiInReset 0; midiInClose 0; midiOutReset 0; midiOutClose 0";

} // namespace

TEST_CASE("the devices are those whose name occurs in the text, and the last one gives its name") {
    const struct {
        const char* text; // a form that is refused changes nothing
        LRESULT taken;
        const char* shown;
        const char* opened;
    } rows[] = {
        {"IN: Desk B, OUT: Desk A", 1, "IN: Loop, OUT: Desk B", "midiInOpen 2; midiInStart 2; midiOutOpen 1"},
        {"IN: Desk A, OUT: none", 1, "IN: Loop, OUT: Desk B", "midiInOpen 0; midiInStart 0; midiOutOpen 0"},
        {"IN: Loop, OUT: none", 1, "IN: Loop, OUT: ", "midiInOpen 3; midiInStart 3; midiOutOpen 0"},
        {"IN: Desk A", 0, "IN: , OUT: ", "midiInOpen 0; midiInStart 0; midiOutOpen 0"},
        {"OUT: Desk A, IN: Desk A", 0, "IN: , OUT: ", "midiInOpen 0; midiInStart 0; midiOutOpen 0"},
    };
    for (const auto& row : rows) {
        CAPTURE(row.text);
        const MidiPanel test;
        Double().Reset({"Desk A", "Desk C", "Desk B", "Loop"}, {"Desk A", "Desk B"});
        const TraceCapture trace;
        CHECK(Load(test.midi, std::string("driver=") + row.text) == row.taken);
        CHECK(Text(test.midi, "driver") == row.shown);
        CHECK(trace.Count(TRACE_DEBUG, "3 Loop\n") == row.taken);
        Load(test.midi, "run=1");
        CHECK(Double().TakeCalls() == row.opened);
    }
}

TEST_CASE("without devices, with faulty ones and with too long a name") {
    const MidiPanel test;
    const TraceCapture trace;
    const auto find = [&test] {
        CHECK(Load(test.midi, "driver=IN: a name of thirty-two characters, OUT: Desk A") == 1);
        return Text(test.midi, "driver");
    };
    Double().Reset({}, {});
    CHECK(find() == "IN: , OUT: ");
    test.Run("run=1", "0");
    CHECK(trace.Count(TRACE_DEBUG, "Midi 7: error 2 of 256 (0)\n") == 2);

    Double().Reset({"a name of thirty-two characters!"}, {"Desk A"});
    Double().failures["midiOutGetDevCapsA"] = 5;
    CHECK(find() == "IN: a name of thirty-two characters, OUT: ");
    CHECK(trace.Count(TRACE_DEBUG, "midiOutGetDevCaps error 5 for device 0\n") == 1);
}

TEST_CASE("running opens and closes the ports in order") {
    const MidiPanel test;
    CHECK(Load(test.midi, "driver=IN: Desk B, OUT: Desk B") == 1);
    test.Run("run=-1", "0");
    CHECK(Double().TakeCalls().empty());
    CHECK(Load(test.midi, "run=1") == 1);
    CHECK(Double().TakeCalls() == "midiInOpen 1; midiInStart 1; midiOutOpen 1");
    CHECK(Load(test.midi, "run=2") == 1);
    CHECK(Load(test.midi, "driver=IN: Desk A, OUT: Desk A") == 1); // from the next opening on
    CHECK(Double().TakeCalls().empty());
    CHECK(Text(test.midi, "run") == "1");
    int number = 0;
    CHECK(Send(test.midi, COMMAND_SET, DATATYPE_INTEGER, &number, "run") == 1);
    CHECK(Text(test.midi, "run") == "0");
    CHECK(TakeClosing() == "midiInStop 1; midiInReset 1; midiInClose 1; midiOutReset 1; midiOutClose 1");
    CHECK(Load(test.midi, "run=1") == 1);
    CHECK(Double().TakeCalls() == "midiInOpen 0; midiInStart 0; midiOutOpen 0");
    DestroyWindow(test.midi);
    CHECK(TakeClosing() == CLOSING);
    CHECK(AwaitClosed());
}

TEST_CASE("whatever fails while closing is told, and the rest goes on") {
    const MidiPanel test;
    test.Start();
    const TraceCapture trace;
    for (const char* function :
         {"midiInStop", "midiInReset", "midiInClose", "midiOutReset", "midiOutClose"}) {
        Double().failures[function] = 11;
    }
    CHECK(Load(test.midi, "run=0") == 1);
    CHECK(TakeClosing() == CLOSING);
    CHECK(Await([&] { return trace.CountContaining(": error 11 of 256 (0)\n") == 5; }));
    CHECK(Text(test.midi, "run") == "0");
    Double().CallInput(MM_MIM_DATA, 0x7F7FE0); // the input could not be closed
    CHECK(Text(test.midi, "chan1value") == "0");
}

TEST_CASE("an output is opened and used, and closed in the end, without its input, and the other way round") {
    {
        const MidiPanel test;
        const TraceCapture trace;
        Double().failures["midiInOpen"] = 4;
        test.Run("run=1", "0");
        test.Set("chan3value", 5000);
        CHECK(test.Pass() == "007f70e2");
        Double().failures["midiInOpen"] = MMSYSERR_NOERROR;
        test.Run("run=1", "1");
        CHECK(Double().OpenPorts() == 2);
        CHECK(test.Pass().size() == 8 * 10 - 2);
        DestroyWindow(test.midi);
        CHECK(AwaitClosed());
        CHECK(trace.Count(TRACE_DEBUG, "Midi 7: error 4 of 256 (0)\n") == 1);
    }
    const MidiPanel test;
    Double().failures["midiOutOpen"] = 4;
    test.Run("run=1", "1");
    CHECK(test.Pass().empty());
    Double().CallInput(MM_MIM_DATA, 0x4000E7);
    CHECK(Text(test.midi, "chan8value") == "1024");
    CHECK(Load(test.midi, "run=0") == 1);
    CHECK(AwaitClosed());
}

TEST_CASE("values are sent lowest channel first, once an interval") {
    const MidiPanel test;
    CHECK(Load(test.midi, "interval=60000") == 1);
    test.Set("chan2value", 1000);
    CHECK(test.Pass().empty()); // no port yet
    CHECK(Load(test.midi, "run=1") == 1);
    CHECK(test.Pass() == "000000e0; 003e80e1; 000000e2; 000000e3; 000000e4; 000000e5; 000000e6; 000000e7");
    CHECK(test.Pass().empty());
    test.Set("chan8value", 1);
    test.Set("chan1value", -5);
    SendMessageA(test.midi, WM_TIMER, 0, 0); // which are not over
    CHECK(Double().TakeCalls().empty());
    CHECK(test.Pass() == "000000e0; 000010e7");
}

TEST_CASE("a failing message ends the pass, a blocking one too") {
    const MidiPanel test;
    test.Start();
    TraceCapture trace;
    const auto set = [&test](std::initializer_list<const char*> keywords) {
        for (const char* keyword : keywords) {
            test.Set(keyword, 16);
        }
    };
    set({"chan6value", "chan2value", "chan4value"});
    Double().failures["midiOutShortMsg"] = 6;
    CHECK(test.Pass() == "000100e1");
    CHECK(trace.Count(TRACE_DEBUG, "Midi 7: error 6 of 256 (0)\n") == 1);
    Double().failures["midiOutShortMsg"] = MMSYSERR_NOERROR;
    CHECK(test.Pass() == "000100e3; 000100e5");

    set({"chan1value", "chan2value", "chan3value"});
    Double().delays["midiOutShortMsg"] = 2000;
    CHECK(test.Pass() == "000100e0");
    Double().EndDelays();
    CHECK(test.Pass() == "000100e1; 000100e2");
}

TEST_CASE("channel values: what is taken and what is answered") {
    const MidiPanel test;
    const char* const keyword = "chan5value";
    const auto set = [&](float value) {
        CHECK(Send(test.midi, COMMAND_SET, DATATYPE_FLOAT, &value, keyword) == 0);
        return Text(test.midi, keyword);
    };
    CHECK(set(12.5F) == "13");
    CHECK(set(1e30F) == "2039");
    CHECK(set(-1e30F) == "0");
    CHECK(set(700) == "700");
    for (const float bad :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        CHECK(set(bad) == "700");
    }
    for (const auto& [held, answered] : {std::pair{700.4F, 0}, {699.5F, 0}, {700.5F, 1}, {699.4F, 1}}) {
        CAPTURE(held);
        float number = held;
        CHECK(Send(test.midi, COMMAND_GET, DATATYPE_FLOAT, &number, keyword) == answered);
        CHECK(number == (answered == 1 ? 700.0F : held));
    }
}

TEST_CASE("received messages are traced, and pitch bends on eight channels are taken and not sent back") {
    const MidiPanel test;
    test.Start();
    TraceCapture trace;
    const auto receive = [](UINT message, DWORD_PTR parameter) {
        MidiDouble& driver = Double();
        std::thread([&] { driver.CallInput(message, parameter); }).join();
    };
    receive(MM_MIM_DATA, 0x7F7FE0);
    receive(MM_MIM_DATA, 0x3E80E7);
    CHECK(trace.Count(TRACE_DEBUG, "0xe7 0x80 0x3e \n") == 1);
    for (const DWORD_PTR other : {0x7F7FE8U, 0x7F40DFU, 0x7F4090U, 0xF8U}) {
        receive(MM_MIM_DATA, other);
    }
    receive(MM_MIM_LONGDATA, 0);
    CHECK(trace.Count(TRACE_DEBUG, "0x90 0x40 0x7f \n") == 1);
    std::string values;
    for (char channel = '1'; channel <= '8'; ++channel) {
        values += Text(test.midi, (std::string("chan") + channel + "value").c_str()) + " ";
    }
    CHECK(values == "2039 0 0 0 0 0 0 1000 ");
    CHECK(test.Pass().empty());
}

TEST_CASE("a fader follows what is received and sends what it is set to") {
    const MidiPanel test;
    test.Start();
    HWND fader = test.panel.Create("FADER", "Level");
    CHECK(Load(fader, "properties=0,2039,0") == 1);
    CHECK(Load(fader, "connection=Midi1*chan2value") == 1);
    test.Pass();
    Double().CallInput(MM_MIM_DATA, 0x3E00E1);
    Poll(fader);
    CHECK(Value(fader) == 992.0F);
    CHECK(test.Pass().empty());
    CHECK(SetValue(fader, 100.5F) == 1);
    CHECK(test.Pass() == "000650e1");
    Poll(fader); // keeps what lies between two whole numbers
    CHECK(Value(fader) == 100.5F);
}

TEST_CASE("a driver that hangs while a port is closed holds nothing up, and the port is closed in the end") {
    for (const char* function : {"midiInReset", "midiInClose", "midiOutReset", "midiOutClose"}) {
        CAPTURE(function);
        const MidiPanel test;
        test.Start();
        Double().delays[function] = INFINITE;
        DestroyWindow(test.midi);
        CHECK(Double().OpenPorts() > 0);
        Double().CallInput(MM_MIM_DATA, 0x7F7FE3); // to nobody
        Double().EndDelays();
        CHECK(AwaitClosed());
    }
}

TEST_CASE("messages that come while the control is destroyed, and after it") {
    constexpr int ROUNDS = 30;
    for (int round = 0; round < ROUNDS; ++round) {
        const MidiPanel test;
        test.Start();
        std::atomic<int> calls = 0;
        std::vector<std::jthread> storm;
        while (storm.size() < 2) {
            storm.emplace_back([&calls, &driver = Double()](const std::stop_token& stop) {
                for (; !stop.stop_requested(); ++calls) {
                    driver.CallInput(MM_MIM_DATA, 0x7F7FE3);
                }
            });
        }
        const auto awaitCalls = [&calls](int count) {
            while (calls < count) {
                Sleep(0);
            }
        };
        awaitCalls(20);
        CHECK(Text(test.midi, "chan4value") == "2039");
        DestroyWindow(test.midi);
        // New ones may get its memory.
        HWND others[10];
        for (HWND& other : others) {
            other = test.panel.Create("IMIDI", "Other");
        }
        awaitCalls(calls + 20);
        storm.clear();
        for (HWND other : others) {
            CHECK(Text(other, "chan4value") == "0");
        }
        CHECK(AwaitClosed());
    }
}

TEST_CASE("a panel is saved and loaded with its devices before its ports") {
    std::string saved;
    {
        const MidiPanel test;
        test.Start("driver=IN: Desk A, OUT: Desk B");
        test.Set("chan1value", 7);
        saved = test.panel.Saved();
    }
    CHECK(saved.find("Midi1*chan8value=0\r\nMidi1*driver=IN: Desk B, OUT: Desk B\r\nMidi1*interval=1000\r\n"
                     "Midi1*run=1\r\nMidi1*connection=\r\n") != std::string::npos);
    const MidiPanel test;
    DestroyWindow(test.midi);
    TraceCapture trace;
    CHECK(test.panel.Open(saved) == 1);
    CHECK(Double().TakeCalls() == "midiInOpen 1; midiInStart 1; midiOutOpen 1");
    CHECK(trace.CountContaining("Error reading line") == 0); // values are no texts, and no reason to complain
}

TEST_SUITE_END();
