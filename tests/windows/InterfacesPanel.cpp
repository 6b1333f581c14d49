// The demo panel of the interface controls at work on doubles of winmm.dll and mapi32.dll; and what happens
// to its controls when they are destroyed at any moment.

#include "Panelhost/ApplicationPaths.h"
#include "Panelhost/Trace.h"
#include "logic/sound/WaveFile.h"
#include "tests/doubles/mapi32/MailDouble.h"
#include "tests/doubles/winmm/SoundDouble.h"
#include "tests/windows/Resources.h"
#include "tests/windows/TestPanel.h"

#include <cmath>
#include <cstdlib>
#include <random>

TEST_SUITE_BEGIN("InterfacesPanel");

namespace {

SoundDouble& Sound() {
    auto* const get = Exported<decltype(GetSoundDouble)>("winmm.dll", "GetSoundDouble");
    REQUIRE_MESSAGE((get != nullptr), "the system's own winmm.dll is loaded instead of the double");
    return *get();
}

MailDouble& MailLibrary() {
    auto* const get = Exported<decltype(GetMailDouble)>("mapi32.dll", "GetMailDouble");
    REQUIRE_MESSAGE((get != nullptr), "the system's own mapi32.dll is loaded instead of the double");
    return *get();
}

std::string FullPath(const std::string& name) {
    char path[MAX_PATH];
    a_MakeFullPathName(name.c_str(), path);
    return path;
}

void Click(HWND control) {
    SendMessageA(control, WM_LBUTTONDOWN, MK_LBUTTON, At(8, 8));
    SendMessageA(control, WM_LBUTTONUP, 0, At(8, 8));
}

} // namespace

TEST_CASE(
    "the panel plays the tone that it has generated, hears and records it, asks hosts and sends a mail") {
    Sound().Reset({"Line"}, {"Line"}, 2);
    MailLibrary().Reset();
    const TestPanel panel;
    const TraceCapture trace;
    REQUIRE(ph_LoadPanel(panel.Root(), FullPath("Interfaces.panel").c_str()) > 50);
    CHECK(trace.CountContaining("Error reading line") == 0);
    const auto ticking = [&](const std::function<bool()>& condition) {
        return Await(
            [&] {
                ph_Tick(panel.Root());
                return condition();
            },
            30000);
    };
    const auto text = [&](const char* name, const char* keyword) { return Text(panel.Find(name), keyword); };

    CHECK(Load(panel.Find("Wave1"), "signal=1000 Hz,16384") == 1);
    Click(panel.Find("Tone 5"));
    CHECK(text("Wave1", "duration") == "0:05 min");
    CHECK(ticking([&] { return text("Wave1", "duration") == "0:00 min"; }));
    Click(panel.Find("Listen"));
    CHECK(ticking([&] { return text("Input", "run") == "1"; }));
    Click(panel.Find("Play"));
    CHECK(text("Player", "value") == "1");
    const double level = 20 * std::log10(16384.0 / 32768.0);
    const auto peak = [&](const char* name, const char* keyword) {
        float number = 0;
        Send(panel.Find(name), COMMAND_GET, DATATYPE_FLOAT, &number, keyword);
        return static_cast<double>(number);
    };
    CHECK(ticking([&] { return std::abs(peak("Input", "peak1") - level) < 0.1; }));
    CHECK(ticking([&] { return std::abs(peak("Left", "value") - level) < 0.1; })); // as the bar shows it
    CHECK(ticking([&] { return std::abs(peak("Input", "rms1") - level + 3.01) < 0.1; }));
    Click(panel.Find("Record"));
    CHECK(ticking([&] { return !text("Recorded", "value").empty(); }));
    Click(panel.Find("Send"));
    CHECK(text("Alarm", "status") == "not sent: it has no recipient");
    CHECK(Load(panel.Find("Alarm"), "to=hall@example.org") == 1);
    Click(panel.Find("Send"));
    std::string mails;
    CHECK(ticking(
        [&] { return (mails += MailLibrary().TakeMails()).find("The input peaks at -6.0") != mails.npos; }));
    CHECK(ticking([&] { return text("Mail state", "value").starts_with("sent "); }));
    CHECK(ticking([&] { return text("State", "value") == "127.0.0.1=ok"; }));
    CHECK(ticking([&] { return text("Play", "value") == "0"; })); // the tone is over
    Click(panel.Find("Record"));
    CHECK(ticking([&] { return text("Input", "record") == "0"; }));
    Click(panel.Find("Listen"));
    CHECK(ticking([] { return Sound().OpenPorts() == 0; }));
    const std::string recorded = FullPath(text("Input", "recorded"));
    CHECK(ReadBytes(recorded).size() > 44100 * 4);
    CHECK(DeleteFileA(recorded.c_str()));
}

namespace {

constexpr const char* FUNCTIONS[] = {"waveOutOpen",     "waveOutWrite", "waveOutReset",
                                     "waveOutClose",    "waveInOpen",   "waveInReset",
                                     "waveInAddBuffer", "waveInClose",  "MAPILogon",
                                     "MAPISendMail",    "MAPILogoff",   "waveOutUnprepareHeader"};

HWND victim; // destroyed when it sends its value to the lamp
WNDPROC lampProc;

LRESULT CALLBACK DeadlyProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == CWM_MESSAGE && reinterpret_cast<VALUERECORD*>(lParam)->command == COMMAND_SET &&
        victim != nullptr) {
        DestroyWindow(std::exchange(victim, nullptr));
    }
    return CallWindowProcA(lampProc, window, message, wParam, lParam);
}

// One panel, of which something happens to begin and somebody may hang, and its end at any moment.
void LiveShortly(std::mt19937& random) {
    const auto any = [&random](int below) { return std::uniform_int_distribution(0, below - 1)(random); };
    const TestPanel panel;
    HWND lamp = panel.Create("LED", "Lamp");
    HWND controls[] = {panel.Create("IWAVEOUT", "Out"), panel.Create("IWAVEIN", "In"),
                       panel.Create("XIPCHECK", "Hosts"), panel.Create("IMESSAGING", "Mail")};
    for (HWND control : controls) {
        CHECK(Load(control, "connection=Lamp") == 1);
    }
    lampProc = reinterpret_cast<WNDPROC>(
        SetWindowLongA(lamp, GWL_WNDPROC, static_cast<LONG>(reinterpret_cast<LONG_PTR>(DeadlyProc))));
    const char* const hanging = FUNCTIONS[any(std::size(FUNCTIONS))];
    const DWORD delay = any(2) == 0 ? INFINITE : static_cast<DWORD>(1 + any(20));
    Sound().Delay(hanging, delay);
    MailLibrary().Delay(hanging, delay);
    const char* const lines[][2] = {{"Out", "files=.\\Temp\\short.wav"},
                                    {"Out", "value=1"},
                                    {"In", "run=1"},
                                    {"In", "file=Temp\\round.wav"},
                                    {"In", "record=1"},
                                    {"In", "run=0"},
                                    {"Hosts", "host=127.0.0.1;192.0.2.1"},
                                    {"Hosts", "timeout=20"},
                                    {"Mail", "to=a@example.org"},
                                    {"Mail", "value=1"},
                                    {"Mail", "value=0"},
                                    {"Out", "value=0"},
                                    {"Out", "loop=1"},
                                    {"Out", "position=0.01"}};
    const int steps = 4 + any(20);
    for (int step = 0; step < steps; ++step) {
        const auto& line =
            lines[step < 9 ? step % std::size(lines) : static_cast<unsigned>(any(std::size(lines)))];
        if (HWND control = panel.Find(line[0])) {
            Load(control, line[1]);
        }
        if (HWND hosts = panel.Find("Hosts"); hosts != nullptr && any(3) == 0) {
            Poll(hosts);
        }
        if (any(4) == 0) {
            Sleep(static_cast<DWORD>(any(8)));
            PumpAll();
        }
        if (any(12) == 0) {
            victim = panel.Find(lines[any(std::size(lines))][0]);
        }
        if (any(10) == 0) {
            DestroyWindow(panel.Find(lines[any(std::size(lines))][0]));
        }
    }
    victim = nullptr;
}

} // namespace

// OSMIR_ROUNDS in the environment: how many rounds, where it is to be more.
TEST_CASE("destroyed at any moment the controls end, and nothing is left once the last call has returned") {
    const char* wanted = std::getenv("OSMIR_ROUNDS");
    const int rounds = wanted != nullptr ? std::atoi(wanted) : 16;
    Sound().Reset({"Line"}, {"Line"}, 20);
    MailLibrary().Reset();
    const auto header = logic::WaveHeader({1, 16, 8000, false}, 4000);
    const std::string wave = std::string(header.begin(), header.end()) + std::string(4000, '\x11');
    REQUIRE(WriteBytes(FullPath("Temp\\short.wav"), wave));
    std::mt19937 random(20);
    const auto live = [&random](int count) {
        for (int round = 0; round < count; ++round) {
            CAPTURE(round);
            LiveShortly(random);
            Sound().EndDelays();
            MailLibrary().EndDelays();
            CHECK(Await([] {
                return Sound().OpenPorts() == 0 && Sound().PreparedBlocks() == 0 &&
                       MailLibrary().OpenSessions() == 0 && Sound().Waiting() == 0 &&
                       MailLibrary().Waiting() == 0;
            }));
        }
    };
    live(4); // caches fill
    const Resources before = CountResources();
    live(rounds);
    Resources after = before;
    CHECK(Await([&] {
        after = CountResources().Settled(before);
        return after.IsAtMost(before);
    }));
    INFO(before, " then ", after);
    CHECK(after.IsAtMost(before));
    for (int number = 1; number < 5000; ++number) {
        if (!DeleteFileA(
                FullPath("Temp\\round" + (number == 1 ? "" : std::to_string(number)) + ".wav").c_str()) &&
            number > 40) {
            break;
        }
    }
    DeleteFileA(FullPath("Temp\\short.wav").c_str());
}

TEST_SUITE_END();
