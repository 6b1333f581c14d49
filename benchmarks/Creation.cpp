// Creating and destroying windows under a hidden panel.

#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <commctrl.h>

namespace {

constexpr int COUNT = 500;

// Seconds for one window.
Workload CreateAndDestroy(const BenchPanel& panel, const char* className, int count, int windowsOfEach = 1) {
    return [&panel, className, count = count / windowsOfEach, windowsOfEach] {
        const double start = Now();
        const std::vector<HWND> windows = panel.AddMany(className, count);
        for (const HWND window : windows) {
            DestroyWindow(window);
        }
        const double seconds = Now() - start;
        Settle();
        return seconds / (count * windowsOfEach);
    };
}

} // namespace

void MeasureCreation(Report& report) {
    const BenchPanel panel(false);
    const int count = report.Repetitions(COUNT);
    for (const auto& [className, name, bindings, windows, systemClass] : SUBJECTS) {
        const HWND probe = panel.Add(className, 0);
        if (probe == nullptr) {
            report.Fail(name, "it cannot be created");
            continue;
        }
        DestroyWindow(probe);
        const char* plainClass = systemClass != nullptr ? systemClass : BARE_CLASS;
        const std::vector<Samples> samples =
            TakeTurns(report.Rounds(5), {CreateAndDestroy(panel, className, count, windows),
                                         CreateAndDestroy(panel, plainClass, count),
                                         CreateAndDestroy(panel, TRACKBAR_CLASSA, count)});
        const std::string figure = windows == 1
                                       ? "create and destroy one " + std::string(name)
                                       : "create and destroy one of the windows of an " + std::string(name);
        report.Add(figure, samples[0], systemClass != nullptr ? "the system's" : "bare window", samples[1],
                   Unit::Seconds, windows == 1 ? RatioUpTo(1.5) : NO_AIM);
        report.Add(figure, samples[0], "trackbar", samples[2], Unit::Seconds, NO_AIM);
    }
}
