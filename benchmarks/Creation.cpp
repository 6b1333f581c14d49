// Creating and destroying windows under a hidden panel.

#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <functional>

namespace {

constexpr int COUNT = 80;

// Seconds for one window. The function makes the window with that number.
Workload CreateAndDestroy(int windowsOfEach, const std::function<HWND(int)>& create) {
    return [count = COUNT / windowsOfEach, windowsOfEach, create] {
        const double start = Now();
        std::vector<HWND> windows;
        for (int number = 0; number < count; ++number) {
            windows.push_back(create(number));
        }
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
    for (const auto& [className, name, bindings, windows, systemClass, isStrip] : Subjects()) {
        const HWND probe = panel.Add(className, 0);
        if (probe == nullptr) {
            report.Fail(name, "it cannot be created");
            continue;
        }
        const auto add = [&panel](const char* ofClass) {
            return [&panel, ofClass](int number) { return panel.Add(ofClass, number); };
        };
        const char* plainClass = systemClass != nullptr ? systemClass : BARE_CLASS;
        const std::vector<Samples> samples =
            TakeTurns(report.Rounds(15), {CreateAndDestroy(windows, add(className)),
                                          windows == 1 ? CreateAndDestroy(1, add(plainClass))
                                                       : CreateAndDestroy(windows, [&](int) {
                                                             return panel.AddCopy(probe, BARE_CLASS, nullptr);
                                                         })});
        DestroyWindow(probe);
        const std::string figure = windows == 1 ? "create and destroy one " + name
                                                : "create and destroy one of the windows of an " + name;
        report.Add(figure, samples[0],
                   windows > 1              ? "bare ones of their classes"
                   : systemClass != nullptr ? "the system's"
                                            : "bare window",
                   samples[1], Unit::Seconds, RatioUpTo(windows == 1 ? 1.5 : 2));
    }
}
