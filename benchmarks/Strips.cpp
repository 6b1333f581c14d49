// Consoles of strips, each a control with controls inside.

#include "benchmarks/FilledControls.h"
#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <string>
#include <vector>

namespace {

struct Strip {
    const char* className;
    const char* name;    // of many
    double mostCreating; // ratio
    double mostPainting;
};
constexpr Strip KINDS[] = {
    {"AUTOMIXER", "automatic mixer strips", 2.5, 2.5},
    {"CROSSOVER", "crossover strips", 2.5, 2.5},
    {"MIXER", "mixer strips", 3, 2.5},
    {"SPEAKERCONTROL", "speaker selectors", 2.5, 2.5},
};

constexpr int STRIPS = 32;
constexpr int STRIPS_IN_A_ROW = 16;

void Place(HWND window, int number, int width, int height) {
    SetWindowPos(window, nullptr, number % STRIPS_IN_A_ROW * (width + 1),
                 number / STRIPS_IN_A_ROW * (height + 1), 0, 0, SWP_NOSIZE | SWP_NOZORDER);
}

std::vector<HWND> AddStrips(const BenchPanel& panel, const Strip& kind) {
    std::vector<HWND> strips = panel.AddMany(kind.className, STRIPS);
    for (int i = 0; i < STRIPS; ++i) {
        RECT client;
        GetClientRect(strips[static_cast<std::size_t>(i)], &client);
        Place(strips[static_cast<std::size_t>(i)], i, client.right, client.bottom);
    }
    return strips;
}

// As many plain windows in the same places.
std::vector<HWND> AddPlain(const BenchPanel& panel, const std::vector<HWND>& strips, const char* className) {
    std::vector<HWND> plain;
    for (const HWND strip : strips) {
        plain.push_back(panel.AddCopy(strip, className, className));
    }
    return plain;
}

void Destroy(const std::vector<HWND>& windows) {
    for (const HWND window : windows) {
        DestroyWindow(window);
    }
}

// Seconds for painting everything on the panel once.
Workload PaintAll(const BenchPanel& panel) {
    return [&panel] {
        Settle();
        const double start = Now();
        RedrawWindow(panel.Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
        return Now() - start;
    };
}

BOOL CALLBACK CountWindow(HWND, LPARAM count) {
    ++*reinterpret_cast<int*>(count);
    return TRUE;
}

std::string BareWindows(const std::vector<HWND>& strips) {
    auto count = static_cast<int>(strips.size());
    for (const HWND strip : strips) {
        EnumChildWindows(strip, CountWindow, reinterpret_cast<LPARAM>(&count));
    }
    return std::to_string(count) + " bare windows";
}
std::string Strips(const char* doing, const Strip& kind) {
    return std::string(doing) + " " + std::to_string(STRIPS) + " " + kind.name;
}

void MeasureCreating(Report& report, const Strip& kind) {
    const BenchPanel panel(false);
    const BenchPanel model(false);
    const std::vector<HWND> strips = AddStrips(model, kind);
    const Workload ours = [&] {
        const double start = Now();
        Destroy(AddStrips(panel, kind));
        return Now() - start;
    };
    const Workload plain = [&] {
        const double start = Now();
        Destroy(AddPlain(panel, strips, BARE_CLASS));
        return Now() - start;
    };
    report.Measure(Strips("create and destroy", kind), ours, BareWindows(strips), plain, Unit::Seconds,
                   RatioUpTo(kind.mostCreating), 5);
}

void MeasurePainting(Report& report, const Strip& kind, const char* style, const char* look) {
    const BenchPanel panel(true);
    LoadLines(panel.Window(), style);
    const std::vector<HWND> strips = AddStrips(panel, kind);
    const BenchPanel other(true);
    AddPlain(other, strips, BLIT_CLASS);
    PaintAll(panel)(); // what is made at the first painting
    report.Measure(Strips("paint", kind) + look, PaintAll(panel), BareWindows(strips) + ", one BitBlt each",
                   PaintAll(other), Unit::Seconds, RatioUpTo(kind.mostPainting), 9);
}

} // namespace

void MeasureStrips(Report& report) {
    for (const Strip& kind : KINDS) {
        MeasureCreating(report, kind);
        MeasurePainting(report, kind, "style=classic", "");
        MeasurePainting(report, kind, "style=dark", ", dark");
    }
}
