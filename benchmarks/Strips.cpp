// A console of mixer strips, each a control with ten controls inside.

#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <vector>

namespace {

constexpr int STRIPS = 32;
constexpr int STRIPS_IN_A_ROW = 16;
constexpr int CHILDREN = 10;

void Place(HWND window, int number, int width, int height) {
    SetWindowPos(window, nullptr, number % STRIPS_IN_A_ROW * (width + 1),
                 number / STRIPS_IN_A_ROW * (height + 1), 0, 0, SWP_NOSIZE | SWP_NOZORDER);
}

std::vector<HWND> AddStrips(const BenchPanel& panel) {
    std::vector<HWND> strips = panel.AddMany("MIXER", STRIPS);
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

void MeasureCreatingStrips(Report& report) {
    const BenchPanel panel(false);
    const BenchPanel model(false);
    const std::vector<HWND> strips = AddStrips(model);
    const Workload ours = [&] {
        const double start = Now();
        Destroy(AddStrips(panel));
        return Now() - start;
    };
    const Workload plain = [&] {
        const double start = Now();
        Destroy(AddPlain(panel, strips, BARE_CLASS));
        return Now() - start;
    };
    static_assert(STRIPS * (CHILDREN + 1) == 352);
    report.Measure("create and destroy 32 mixer strips", ours, "352 bare windows", plain, Unit::Seconds,
                   RatioUpTo(3), 5);
}

void MeasurePaintingStrips(Report& report) {
    const BenchPanel panel(true);
    const std::vector<HWND> strips = AddStrips(panel);
    const BenchPanel other(true);
    AddPlain(other, strips, BLIT_CLASS);
    PaintAll(panel)(); // what is made at the first painting
    report.Measure("paint 32 mixer strips", PaintAll(panel), "352 bare windows, one BitBlt each",
                   PaintAll(other), Unit::Seconds, RatioUpTo(2.5), 9);
}

} // namespace

void MeasureStrips(Report& report) {
    MeasureCreatingStrips(report);
    MeasurePaintingStrips(report);
}
