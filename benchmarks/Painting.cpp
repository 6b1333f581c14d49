// Painting one control on a visible panel.

#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <commctrl.h>

namespace {

constexpr int REPETITIONS = 20;

// Seconds for one painting.
Workload Paint(HWND window) {
    return [window] {
        Settle();
        const double start = Now();
        for (int i = 0; i < REPETITIONS; ++i) {
            InvalidateRect(window, nullptr, FALSE);
            UpdateWindow(window);
        }
        return (Now() - start) / REPETITIONS;
    };
}

} // namespace

void MeasurePainting(Report& report) {
    const BenchPanel panel(true);
    const HWND blit = panel.Add(BLIT_CLASS, 0);
    const HWND trackbar = panel.Add(TRACKBAR_CLASSA, 4);
    for (const auto& [className, name, bindings, windows, systemClass, isStrip] : Subjects()) {
        const HWND control = panel.Add(className, 8);
        if (control == nullptr) {
            report.Fail(name, "it cannot be created");
            continue;
        }
        const HWND plain = systemClass != nullptr ? panel.Add(systemClass, 12) : blit;
        RECT client;
        GetClientRect(control, &client); // some give themselves their size
        for (const HWND yardstick : {plain, trackbar}) {
            SetWindowPos(yardstick, nullptr, 0, 0, client.right, client.bottom, SWP_NOMOVE | SWP_NOZORDER);
        }
        Paint(control)(); // what is made at the first painting
        const std::vector<Samples> samples =
            TakeTurns(report.Rounds(40), {Paint(control), Paint(plain), Paint(trackbar)});
        const std::string figure = "paint one " + name;
        report.Add(figure, samples[0], systemClass != nullptr ? "the system's" : "bare window, one BitBlt",
                   samples[1], Unit::Seconds, RatioUpTo(1.5));
        report.Add(figure, samples[0], "trackbar", samples[2], Unit::Seconds, NO_AIM);
        DestroyWindow(control);
        if (plain != blit) {
            DestroyWindow(plain);
        }
    }
}
