// What large panels depend on: ticks for those alone that have something to do, loading that is watched and
// cancelled, and junk that is traced in a few lines.

#include "Panel/LoadProgress.h"
#include "Panel/StatusBar.h"
#include "Panelhost/Trace.h"
#include "tests/windows/ControlClasses.h"
#include "tests/windows/OwnControl.h"
#include "tests/windows/PanelProgram.h"

#include <atomic>
#include <commctrl.h>
#include <functional>
#include <map>
#include <thread>

TEST_SUITE_BEGIN("LargePanels");

namespace {

// When each window received a tick, and what else happens then.
std::map<HWND, std::vector<DWORD>> ticks;
std::function<void(HWND)> atTick = [](HWND) {};

LRESULT CALLBACK Listen(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
    if (message == WM_TIMER) {
        ticks[window].push_back(GetTickCount());
        atTick(window);
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

HWND CreateWatched(const TestPanel& panel, const char* className) {
    const HWND control = panel.Create(className, className);
    ticks.clear();
    REQUIRE(SetWindowSubclass(control, Listen, 1, 0));
    return control;
}

std::size_t TicksAtOne(const TestPanel& panel, HWND control) {
    const std::size_t before = ticks[control].size();
    ph_Tick(panel.Root());
    return ticks[control].size() - before;
}

std::string Knobs(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += "control=0x0 KNOB \"K" + std::to_string(i) + "\" 0x50010000 0,0,47,47\r\n";
    }
    return text;
}

// What watches a loading: at each call it does something, and says whether to go on.
using Watch = std::function<bool(int read, int total)>;

int __cdecl Tell(int read, int total, void* context) noexcept {
    return (*static_cast<Watch*>(context))(read, total) ? 1 : 0;
}

// A trace that takes its time, so that whoever watches is called after each line that is traced.
void __cdecl TraceSlowly(int, const char*, void*) {
    Sleep(120); // well above the period, which a coarse clock may shorten
}

} // namespace

TEST_CASE("a control gets its ticks when something is due, and at its interval") {
    for (const ExpectedClass& expected : EXPECTED_CLASSES) {
        CAPTURE(expected.name);
        const TestPanel panel;
        const HWND control = CreateWatched(panel, expected.name);
        HOSTINFO& object = ObjectOf(control);
        const bool isClock = std::string_view(expected.name) == "CLOCK"; // which has a time of its own
        ph_Tick(panel.Root());                                           // it catches up
        object.interval = 1000000;
        const DWORD now = GetTickCount();
        const DWORD wait = object.DueIn(now);
        CHECK(object.DueIn(now + wait) == 0);
        CHECK((wait == 0 || object.DueIn(now + wait - 1) == 1));
        CHECK((isClock || wait > 900000));
        CHECK((isClock || TicksAtOne(panel, control) == 0));
        object.interval = 40;
        ticks[control].clear();
        CHECK(Await([&] {
            ph_Tick(panel.Root());
            return ticks[control].size() == 3;
        }));
        CHECK(ticks[control][2] - ticks[control][1] > (isClock ? 500U : 40U));
    }
}

TEST_CASE("what does not say when it is due gets every tick, until it goes") {
    const OwnControl own(OwnControl::Saves);
    const TestPanel panel;
    const HWND foreign = CreateWatched(panel, OwnControl::CLASS);
    const HWND knob = CreateWatched(panel, "KNOB");
    const HWND last = CreateWatched(panel, OwnControl::CLASS);
    CHECK(TicksAtOne(panel, knob) == 1);
    Load(knob, "interval=1000000");
    CHECK(TicksAtOne(panel, foreign) == 1);
    CHECK(TicksAtOne(panel, knob) == 0);
    atTick = [&](HWND window) { DestroyWindow(window == foreign ? last : nullptr); };
    CHECK(TicksAtOne(panel, last) == 0);
    CHECK_FALSE(IsWindow(last));
    atTick = [](HWND) {};
}

TEST_CASE("a panel window keeps what others put in front of its procedure") {
    const TestPanel panel;
    const HWND window = panel.Window();
    HOSTINFO* root = panel.Root();
    ticks.clear();
    REQUIRE(SetWindowSubclass(window, Listen, 1, 0));
    for (int round = 0; round < 2; ++round) {
        ph_DestroyRoot(root);
        CHECK(SendMessageA(window, CWM_GETPROPERTIES, 0, 0) == 0);
        root = ph_CreateRoot(window, "again");
        CHECK(SendMessageA(window, CWM_GETPROPERTIES, 0, 0) == reinterpret_cast<LRESULT>(root));
    }
    SendMessageA(window, WM_TIMER, 0, 0);
    CHECK(ticks[window].size() == 1);
    RemoveWindowSubclass(window, Listen, 1);
    ph_DestroyRoot(root);
    CHECK(SendMessageA(window, CWM_GETPROPERTIES, 0, 0) == 0);
}

TEST_CASE("a cancelled loading leaves the panel as it was") {
    const TestFolder folder;
    const std::string junk = "Nobody*value=1\r\n";
    const std::string text = "title=New\r\nonopen=send\r\n" + Knobs(2) + junk + junk + Knobs(6) +
                             "K1*function=AMP1*gain\r\nK1*value=7\r\nK1*connection=K0\r\n" + junk;
    const std::string file = folder.Write("new.panel", text);
    const std::string saved = folder.Path("saved.panel");
    ph_SetTraceSink(TraceSlowly, nullptr);
    for (const int enough : {0, 2, 8}) { // headers read
        CAPTURE(enough);
        TestPanel panel;
        panel.Declare("AMP1*device=simulated\nAMP1*gain=float,0,10,5,\n");
        Load(panel.Window(), "title=Old", LOAD_FROM_FILE);
        const std::string before = panel.Saved();
        Watch watch = [&](int read, int total) {
            CHECK(total == 8);
            ph_Tick(panel.Root()); // nothing acts on half a panel
            CHECK(ph_SavePanel(panel.Root(), saved.c_str()) == 0);
            CHECK(GetLastError() == ERROR_BUSY);
            CHECK(ph_LoadPanel(panel.Root(), file.c_str()) == -1);
            return read < enough;
        };
        ph_SetLoadProgress(panel.Root(), Tell, &watch);
        CHECK(ph_LoadPanel(panel.Root(), file.c_str()) == -1);
        CHECK(GetWindow(panel.Window(), GW_CHILD) == nullptr);
        CHECK(ph_ListUnread(panel.Root(), nullptr, nullptr) == 0);
        CHECK(panel.Saved() == before);
        ph_Tick(panel.Root());
        CHECK(panel.Parameter("AMP1*gain") == "5");
        ph_SetLoadProgress(panel.Root(), nullptr, nullptr);
        CHECK(ph_LoadPanel(panel.Root(), file.c_str()) == 6); // two headers for each of the first two
        ph_SetLoadProgress(panel.Root(), Tell, &watch);
        watch = [](int, int) { return false; }; // what is there cannot be taken apart again
        CHECK(panel.Open(Knobs(7)) == 1);
        watch = [&](int, int) {
            ph_DestroyRoot(panel.Root());
            return true;
        };
        CHECK(ph_LoadPanel(panel.Root(), file.c_str()) == -1);
        CHECK(GetWindow(panel.Window(), GW_CHILD) == nullptr);
    }
    ph_SetTraceSink(nullptr, nullptr);
}

TEST_CASE("junk is traced in a few lines, counted and kept as a whole") {
    std::string text = Knobs(1);
    for (int i = 0; i < 2000; ++i) {
        text += "junk " + std::to_string(i) + "\r\nK0*newer=" + std::to_string(i) + "\r\nK0*value=x\r\n";
    }
    const TestPanel panel;
    const TraceCapture trace;
    CHECK(panel.Open(text) == 1);
    for (const auto& [kind, format, single] :
         {std::tuple{TRACE_EDIT, "Object not found: ...", "Object not found: junk"},
          std::tuple{TRACE_DEBUG, "... Keyword not found: ...\n", "Keyword not found: newer"},
          std::tuple{TRACE_EDIT, "Error reading line ...", "Error reading line value=x"}}) {
        CAPTURE(format);
        CHECK(trace.CountContaining(single) == 20);
        CHECK(trace.Count(kind, std::string("test.panel: 1980 more: ") + format) == 1);
    }
    CHECK(ph_ListUnread(panel.Root(), nullptr, nullptr) == 6000);
}

TEST_CASE("the status bar tells how far the loading of a large panel is") {
    const TestPanel window;
    StatusBar bar;
    REQUIRE(bar.Create(window.Window(), nullptr));
    for (const auto& [total, mayCancel, expected] :
         {std::tuple{2000, true, ""},
          std::tuple{2001, true, "Loading Big: 7 of 2001 controls (Escape cancels)"},
          std::tuple{3000, false, "Loading Big: 7 of 3000 controls"}}) {
        LoadProgress progress(window.Window(), bar, "Big", mayCancel);
        CHECK(LoadProgress::Tell(7, total, &progress) == 1);
        char text[128] = "";
        SendMessageA(GetWindow(window.Window(), GW_CHILD), SB_GETTEXTA, 0, reinterpret_cast<LPARAM>(text));
        CHECK(text == std::string(expected));
    }
}

TEST_CASE("Escape cancels the loading of a large panel, and the panel before it stays") {
    const TestFolder folder;
    const std::string large = folder.Write("large.panel", Knobs(20000));
    const auto pressEscape = [] {
        keybd_event(VK_ESCAPE, 0, 0, 0);
        Sleep(50);
        keybd_event(VK_ESCAPE, 0, KEYEVENTF_KEYUP, 0);
    };
    PanelHere program(Knobs(1));
    SetForegroundWindow(program.Frame());
    std::atomic<bool> isOpened = false;
    std::thread user([&] {
        while (!isOpened) {
            pressEscape();
        }
    });
    CHECK_FALSE(program.Open(large));
    isOpened = true;
    user.join();
    CHECK(program.Title() == "test.panel - Panel");
    CHECK(Contains(program.Trace(), "The loading was cancelled"));

    PanelProgram started(folder, large); // at the start there is no panel before it
    HWND frame = nullptr;
    REQUIRE(WaitFor([&] { return (frame = started.Top("PanelFrame")) != nullptr; }));
    SetForegroundWindow(frame);
    CHECK(WaitFor([&] {
        pressEscape();
        char title[32] = "";
        return GetWindowTextA(frame, title, sizeof title) > 0 && std::string(title) == "Untitled - Panel";
    }));
    started.FindFrame();
    CHECK(started.Close() == 0);
}

TEST_SUITE_END();
