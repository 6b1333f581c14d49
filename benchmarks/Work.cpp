// What larger panels and the dialogs ask of the machine: many controls that follow moving devices, clocks,
// the decay fitter, a press of a button, and a parameter dialog.

#include "Panelhost/HostInterface.h"
#include "Panelhost/Messages.h"
#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"
#include "logic/controls/DecayFitter.h"

#include <cmath>
#include <fstream>
#include <functional>
#include <iterator>
#include <vector>

namespace {

constexpr int CONTROLS = 1000;
constexpr int TICKS = 20;      // of one second
constexpr int SHOWN_TICKS = 2; // of them, where painting takes long
constexpr int CLICKS = 100;
constexpr int EXPONENTIALS = 100000;
constexpr double MOST_OF_A_CORE = 0.5;
constexpr const char* LEVELS[] = {"-20", "-14", "-17", "-6", "-11", "3", "-9", "-24"};
constexpr int STEPS = std::size(LEVELS);

constexpr const char* DEVICES = "AMP1*device=simulated\n"
                                "AMP1*level=float,-80,12,-80,dB\n"
                                "AMP1*level=wave,triangle,-80,12,700\n"
                                "AMP1*scene=integer,0,1,0,\n"
                                "AMP1*step=float,-80,12,-20,dB\n";

void LoadLine(HWND control, const char* line) {
    SendMessageA(control, CWM_LOAD, LOAD_FROM_FILE, reinterpret_cast<LPARAM>(line));
}

// Seconds for what one second asks of the machine; some of its ticks stand for all.
Workload Second(int ticks, const std::function<void()>& tick) {
    return [ticks, tick] {
        const double start = Now();
        for (int i = 0; i < ticks; ++i) {
            tick();
            Settle();
        }
        return (Now() - start) / ticks * TICKS;
    };
}

Workload PanelSecond(const BenchPanel& panel, int ticks) {
    return Second(ticks, [&panel] { ph_Tick(panel.Root()); });
}

Workload BareSecond(const std::vector<HWND>& windows, int ticks) {
    return Second(ticks, [&windows] {
        for (const HWND window : windows) {
            SendMessageA(window, WM_TIMER, 0, 0);
        }
    });
}

Workload PaintingSecond(const std::vector<HWND>& windows, int ticks) {
    return Second(ticks, [&windows] {
        for (const HWND window : windows) {
            InvalidateRect(window, nullptr, FALSE);
        }
    });
}

// Drawing without showing: into a device context in memory.
Workload DrawingSecond(const std::vector<HWND>& windows, int ticks) {
    return Second(ticks, [&windows] {
        const HDC memory = CreateCompatibleDC(nullptr);
        const HBITMAP pixels = CreateBitmap(SIDE, SIDE, 1, 32, nullptr);
        const HGDIOBJ before = SelectObject(memory, pixels);
        for (const HWND window : windows) {
            SendMessageA(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(memory), PRF_CLIENT);
        }
        SelectObject(memory, before);
        DeleteObject(pixels);
        DeleteDC(memory);
    });
}

std::vector<HWND> AddMeters(const BenchPanel& panel) {
    DeclareDevices(panel, DEVICES);
    std::vector<HWND> meters = panel.AddMany("METER", CONTROLS);
    for (const HWND meter : meters) {
        LoadLine(meter, "properties=-80,12");
        LoadLine(meter, "function=AMP1*level");
    }
    return meters;
}

void MeasureHiddenMeters(Report& report) {
    const BenchPanel panel(false);
    const std::vector<HWND> bare = panel.AddMany(BARE_CLASS, CONTROLS);
    AddMeters(panel);
    report.Measure("one second of 1,000 polling meters, hidden", PanelSecond(panel, TICKS),
                   "20 WM_TIMER to 1,000 bare windows", BareSecond(bare, TICKS), Unit::Seconds,
                   Below(MOST_OF_A_CORE), 5);
}

// The level moves so fast that every tick changes what each meter shows.
void MeasureShownMeters(Report& report) {
    const BenchPanel panel(true);
    const std::vector<HWND> plain = panel.AddMany(BLIT_CLASS, CONTROLS);
    const std::vector<HWND> meters = AddMeters(panel);
    constexpr const char* YARDSTICK = "20,000 bare windows, one BitBlt each";
    report.Measure("one second of 1,000 polling meters, painted", PanelSecond(panel, SHOWN_TICKS), YARDSTICK,
                   PaintingSecond(plain, SHOWN_TICKS), Unit::Seconds, RatioUpTo(1.2), 9);
    report.Measure("of that, what the meters draw in memory", DrawingSecond(meters, SHOWN_TICKS), YARDSTICK,
                   PaintingSecond(plain, SHOWN_TICKS), Unit::Seconds, NO_AIM, 3);
}

// Whole areas of windows are not painted where little of them changes: what is invalidated at each tick is
// what the bars have invalidated at the same one.
void MeasureMovingBars(Report& report) {
    const BenchPanel panel(true);
    const std::vector<HWND> plain = panel.AddMany(BLIT_CLASS, CONTROLS);
    DeclareDevices(panel, DEVICES);
    const std::vector<HWND> bars = panel.AddMany("FADING", CONTROLS);
    for (const HWND bar : bars) {
        for (const char* line : {"properties=-80,12,-20", "zones=-80=0x0040c040;-12=0x0000c0ff;0=0x000000ff",
                                 "style=segments", "hold=300", "interval=0", "function=AMP1*step"}) {
            LoadLine(bar, line);
        }
    }
    const auto move = [&panel](int step) {
        ph_SetParameter(panel.Root(), "AMP1*step", LEVELS[step % STEPS]);
        ph_Tick(panel.Root());
    };
    std::vector<RECT> changed[STEPS]; // of all bars, one after the other
    for (int step = 0; step < 2 * STEPS; ++step) {
        Settle();
        move(step);
        changed[step % STEPS].clear();
        for (const HWND bar : bars) {
            RECT area{};
            GetUpdateRect(bar, &area, FALSE);
            changed[step % STEPS].push_back(area);
        }
    }
    Settle();
    int ours = 0;
    int theirs = 0;
    report.Measure("one second of 1,000 bars that move at 20 Hz", Second(SHOWN_TICKS, [&] { move(ours++); }),
                   "20 BitBlts of what changed",
                   Second(SHOWN_TICKS,
                          [&] {
                              const std::vector<RECT>& areas = changed[theirs++ % STEPS];
                              for (std::size_t i = 0; i < plain.size(); ++i) {
                                  if (!IsRectEmpty(&areas[i])) {
                                      InvalidateRect(plain[i], &areas[i], FALSE);
                                  }
                              }
                          }),
                   Unit::Seconds, RatioUpTo(1.2), 9);
}

void MeasureManyClocks(Report& report) {
    const BenchPanel panel(false);
    const std::vector<HWND> bare = panel.AddMany(BARE_CLASS, CONTROLS);
    panel.AddMany("CLOCK", CONTROLS);
    report.Measure("20 ticks of 1,000 clocks", PanelSecond(panel, TICKS), "20 WM_TIMER to 1,000 bare windows",
                   BareSecond(bare, TICKS), Unit::Seconds, Below(MOST_OF_A_CORE), 5);
}

void MeasureFitter(Report& report) {
    const Workload fit = [] {
        logic::DecayFitter fitter;
        for (int t = 0; t < fitter.SampleCount(); ++t) {
            fitter.Samples()[t] = -60 + 40 * std::exp(-0.05 * t) + 15 * std::exp(-0.01 * t);
        }
        const double start[] = {-50, 30, 0.1, 10, 0.02};
        for (int i = 0; i < 5; ++i) {
            fitter.SetStart(i, start[i]);
        }
        int finished = 0;
        const double began = Now();
        fitter.Run(&finished);
        return Now() - began;
    };
    const Workload exponentials = [] {
        volatile double sum = 0;
        const double began = Now();
        for (int i = 0; i < EXPONENTIALS; ++i) {
            sum = sum + std::exp(-0.0001 * static_cast<double>(i % 1000));
        }
        return Now() - began;
    };
    report.Measure("fit two decays to 201 samples", fit, "100,000 exponentials", exponentials, Unit::Seconds,
                   NO_AIM);
}

void MeasureClick(Report& report) {
    const BenchPanel panel(false);
    DeclareDevices(panel, DEVICES);
    const HWND button = panel.Add("BBUTTON", 1);
    LoadLine(button, "captureperiod=0");
    LoadLine(button, "onvalue=1");
    LoadLine(button, "offvalue=0");
    LoadLine(button, "function=AMP1*scene");
    const HWND bare = panel.Add(BARE_CLASS, 2);
    const auto click = [](HWND window) {
        return [window] {
            const double start = Now();
            for (int i = 0; i < CLICKS; ++i) {
                SendMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
                SendMessageA(window, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
            }
            return (Now() - start) / CLICKS;
        };
    };
    report.Measure("press and release of a push button, both sent", click(button),
                   "the messages to a bare window", click(bare), Unit::Seconds, NO_AIM);
}

void MeasureDialog(Report& report) {
    const BenchPanel panel(true);
    const HWND knob = panel.Add("KNOB", 1);
    const Workload dialog = [knob] {
        const double start = Now();
        HWND opened = nullptr;
        SendMessageA(knob, CWM_PARAMETERDLG, 0, reinterpret_cast<LPARAM>(&opened));
        Settle();
        DestroyWindow(opened);
        return Now() - start;
    };
    const Workload window = [] {
        const double start = Now();
        const HWND opened = CreateWindowExA(0, BARE_CLASS, "", WS_POPUP | WS_CAPTION | WS_VISIBLE, 100, 100,
                                            500, 500, nullptr, nullptr, nullptr, nullptr);
        Settle();
        DestroyWindow(opened);
        return Now() - start;
    };
    report.Measure("open and close a parameter dialog", dialog, "a bare popup window", window, Unit::Seconds,
                   NO_AIM);
}

} // namespace

void MeasureWork(Report& report) {
    MeasureHiddenMeters(report);
    MeasureShownMeters(report);
    MeasureMovingBars(report);
    MeasureManyClocks(report);
    MeasureFitter(report);
    MeasureClick(report);
    MeasureDialog(report);
}
