// Creating and destroying windows under a hidden panel.

#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <commctrl.h>

namespace {

constexpr int COUNT = 1000;

// Seconds for one window.
Workload CreateAndDestroy(const BenchPanel& panel, const char* className) {
    return [&panel, className] {
        const double start = Now();
        const std::vector<HWND> windows = panel.AddMany(className, COUNT);
        for (const HWND window : windows) {
            DestroyWindow(window);
        }
        const double seconds = Now() - start;
        Settle();
        return seconds / COUNT;
    };
}

} // namespace

void MeasureCreation(Report& report) {
    const BenchPanel panel(false);
    for (const auto& [className, name, bindings, systemClass] : SUBJECTS) {
        const HWND probe = panel.Add(className, 0);
        if (probe == nullptr) {
            report.Fail(name, "it cannot be created");
            continue;
        }
        DestroyWindow(probe);
        const char* plainClass = systemClass != nullptr ? systemClass : BARE_CLASS;
        const std::vector<Samples> samples = TakeTurns(
            report.Rounds(7), {CreateAndDestroy(panel, className), CreateAndDestroy(panel, plainClass),
                               CreateAndDestroy(panel, TRACKBAR_CLASSA)});
        const std::string figure = "create and destroy one " + std::string(name) + " of 1,000";
        report.Add(figure, samples[0], systemClass != nullptr ? "the system's" : "bare window", samples[1],
                   Unit::Seconds, RatioUpTo(1.5));
        report.Add(figure, samples[0], "trackbar", samples[2], Unit::Seconds, NO_AIM);
    }
}
