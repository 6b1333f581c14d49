// Creating and destroying windows under a hidden panel.

#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <commctrl.h>

namespace {

constexpr int COUNT = 1000;

// Seconds for one window.
Workload CreateAndDestroy(const BenchPanel& panel, const char* className, int windowsOfEach = 1) {
    return [&panel, className, windowsOfEach] {
        const double start = Now();
        const std::vector<HWND> windows = panel.AddMany(className, COUNT / windowsOfEach);
        for (const HWND window : windows) {
            DestroyWindow(window);
        }
        const double seconds = Now() - start;
        Settle();
        return seconds / (COUNT / windowsOfEach * windowsOfEach);
    };
}

} // namespace

void MeasureCreation(Report& report) {
    const BenchPanel panel(false);
    for (const auto& [className, name, bindings, windows, systemClass] : SUBJECTS) {
        const HWND probe = panel.Add(className, 0);
        if (probe == nullptr) {
            report.Fail(name, "it cannot be created");
            continue;
        }
        DestroyWindow(probe);
        const char* plainClass = systemClass != nullptr ? systemClass : BARE_CLASS;
        const std::vector<Samples> samples =
            TakeTurns(report.Rounds(7),
                      {CreateAndDestroy(panel, className, windows), CreateAndDestroy(panel, plainClass),
                       CreateAndDestroy(panel, TRACKBAR_CLASSA)});
        const std::string figure = windows == 1
                                       ? "create and destroy one " + std::string(name) + " of 1,000"
                                       : "create and destroy one of the windows of an " + std::string(name);
        report.Add(figure, samples[0], systemClass != nullptr ? "the system's" : "bare window", samples[1],
                   Unit::Seconds, windows == 1 ? RatioUpTo(1.5) : NO_AIM);
        report.Add(figure, samples[0], "trackbar", samples[2], Unit::Seconds, NO_AIM);
    }
}
