// Creating and destroying windows under a hidden panel.

#include "benchmarks/FilledControls.h"
#include "benchmarks/Suites.h"
#include "benchmarks/Windows.h"

#include <functional>

namespace {

constexpr int COUNT = 80;

// The windows of the control with that number.
using Maker = std::function<std::vector<HWND>(int)>;

// Seconds for one control, or for one of its windows.
Workload CreateAndDestroy(int windowsOfEach, const Maker& create) {
    return [count = COUNT / windowsOfEach, windowsOfEach, create] {
        const double start = Now();
        std::vector<HWND> windows;
        for (int number = 0; number < count; ++number) {
            const std::vector<HWND> made = create(number);
            windows.insert(windows.end(), made.begin(), made.end());
        }
        for (const HWND window : windows) {
            DestroyWindow(window);
        }
        const double seconds = Now() - start;
        Settle();
        return seconds / (count * windowsOfEach);
    };
}

struct Yardstick {
    const char* name;
    Maker create;
};

// Of one that is made of parts of the system, those; of one with windows of its own, bare ones with the same
// inside.
Yardstick YardstickOf(const BenchPanel& panel, const Subject& subject, HWND probe) {
    const Content& content = ContentOf(subject.className);
    if (content.parts[0] != nullptr) {
        return {content.parts[1] != nullptr ? "the system's parts" : "the system's",
                [&panel, &subject, probe](int number) { return AddParts(panel, subject, probe, number); }};
    }
    if (subject.windows > 1) {
        const char* innerClass = *content.className != '\0' ? BARE_CLASS : nullptr;
        return {innerClass != nullptr ? "bare ones" : "bare ones of their classes",
                [&panel, probe, innerClass](int) {
                    return std::vector{panel.AddCopy(probe, BARE_CLASS, innerClass)};
                }};
    }
    const bool isSystem = subject.systemClass != nullptr;
    return {isSystem ? "the system's" : "bare window", [&panel, &subject, isSystem](int number) {
                return std::vector{panel.Add(isSystem ? subject.systemClass : BARE_CLASS, number)};
            }};
}

} // namespace

void MeasureCreation(Report& report) {
    const BenchPanel panel(false);
    for (const Subject& subject : Subjects()) {
        if (!report.WantsSubject(subject.name)) {
            continue;
        }
        const HWND probe = AddFilled(panel, subject, 0);
        if (probe == nullptr) {
            report.Fail(subject.name, "it cannot be created");
            continue;
        }
        const Content& content = ContentOf(subject.className);
        const Yardstick yardstick = YardstickOf(panel, subject, probe);
        // Of parts of the system there may be more or fewer than windows.
        const int windows = content.parts[0] != nullptr ? 1 : subject.windows;
        const Maker ours = [&](int number) { return std::vector{AddFilled(panel, subject, number)}; };
        const std::vector<Samples> samples =
            TakeTurns(report.Rounds(15),
                      {CreateAndDestroy(windows, ours), CreateAndDestroy(windows, yardstick.create)});
        DestroyWindow(probe);
        report.Add(
            (windows == 1 ? "create and destroy one " : "create and destroy one of the windows of an ") +
                subject.name,
            samples[0], yardstick.name, samples[1], Unit::Seconds,
            RatioUpTo(windows == 1 || *content.className != '\0' ? content.creation : 2));
    }
}
